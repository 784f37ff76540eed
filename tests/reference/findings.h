#pragma once

#include <cstdio>
#include <string>

#include "framework/text/cstring.h"
#include "tests/reference/formula_difference.h"
#include "tests/support/same_bits.h"

namespace lorv::test {

inline std::string ShownNumber(double value) {
  char buffer[64];
  std::snprintf(buffer, sizeof buffer, "%.17g", value);
  return buffer;
}

// Collects the first thing that differs between two ways of evaluating a formula. A text is compared up to
// its terminator, as the library's pointers see it.
class Findings {
 public:
  // What the two sides are called in the report.
  explicit Findings(std::string one = "library", std::string other = "reference")
      : one_(std::move(one)), other_(std::move(other)) {}

  void Number(const char* what, double one, double other) {
    if (first_.empty() && !SameBits(one, other)) Report(what, ShownNumber(one), ShownNumber(other));
  }
  void Whole(const char* what, long long one, long long other) {
    if (first_.empty() && one != other) Report(what, std::to_string(one), std::to_string(other));
  }
  void Texts(const char* what, const CString& one, const Text& other) {
    if (!first_.empty() || TextView(other) == one.View()) return;
    Report(what, '"' + Shown(Text(one.View())) + '"', '"' + Shown(other) + '"');
  }
  const std::string& First() const { return first_; }

 private:
  void Report(const char* what, const std::string& one, const std::string& other) {
    first_ = std::string(what) + ": " + one_ + ' ' + one + ", " + other_ + ' ' + other;
  }

  std::string one_;
  std::string other_;
  std::string first_;
};

}  // namespace lorv::test
