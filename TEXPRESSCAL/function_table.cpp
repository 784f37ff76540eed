#include "TEXPRESSCAL/function_table.h"

#include <array>
#include <cstdint>

#include "TEXPRESSCAL/function_data.h"
#include "framework/char_class.h"

namespace lorv {
namespace {

FunctionTable Filled() {
  FunctionTable table;
  table.reserve(kFunctionData.size());
  for (const CDtaFunction& function : kFunctionData) table.AddSorted(function);
  return table;
}

// Function names have at most this many letters, so one fits a 64-bit word.
constexpr std::size_t kLongestName = 5;

std::uint64_t Packed(TextView name) {
  std::uint64_t word = 0;
  for (const TCHAR c : name) word = word << 8 | static_cast<std::uint64_t>(ToUpper(c) & 0xFF);
  return word;
}

// An open hash of the packed names; the multiplier keeps the 28 names from meeting too often.
class NameHash {
 public:
  NameHash() {
    for (const CDtaFunction& function : kFunctionData) Put(Packed(function.pszName), function.nCode);
  }

  unsigned short Find(std::uint64_t word) const {
    for (std::size_t at = Slot(word);; at = (at + 1) % kSlots) {
      if (words_[at] == word) return kinds_[at];
      if (words_[at] == 0) return 0;
    }
  }

 private:
  static constexpr std::size_t kSlots = 128;

  static std::size_t Slot(std::uint64_t word) { return word * 0x9E3779B97F4A7C15U >> 57; }

  void Put(std::uint64_t word, unsigned short kind) {
    std::size_t at = Slot(word);
    while (words_[at] != 0) at = (at + 1) % kSlots;
    words_[at] = word;
    kinds_[at] = kind;
  }

  std::array<std::uint64_t, kSlots> words_{};
  std::array<unsigned short, kSlots> kinds_{};
};

}  // namespace

__int64 FunctionTable::Compare(const CDtaFunction& a, const CDtaFunction& b) const {
  return CompareWithoutCase(a.pszName, b.pszName);
}

__int64 FunctionTable::CompareKey(const LPCTSTR* key, const CDtaFunction& element) const {
  return CompareWithoutCase(*key, element.pszName);
}

const FunctionTable& Functions() {
  static const FunctionTable table = Filled();
  return table;
}

unsigned short FunctionKind(TextView name) {
  static const NameHash hash;
  return name.empty() || name.size() > kLongestName ? 0 : hash.Find(Packed(name));
}

}  // namespace lorv
