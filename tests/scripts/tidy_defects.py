"""Sources with a defect for each family of checks, for the test of scripts/tidy."""

HEADER = """\
#pragma once
#include <cstdlib>
#include <cstring>
#include <string>
#include <utility>

struct Shape {
  virtual ~Shape() = default;
  virtual int Area() const = 0;
};

struct Square : Shape {
  virtual int Area() const { return 1; }
};

void Say();
int Read(const int* at);
"""

NEIGHBOUR = """\
#include "comm/shapes.h"

int Neighbour() {
  const int n = 3;
  return Read(&n);
}
"""

DEFECTIVE = """\
#include "comm/shapes.h"

namespace other {
struct Unseen {};
}  // namespace other

using other::Unseen;

struct Owner {
  Owner(Owner&& from) : text(std::move(from.text)) {}
  std::string text;
};

namespace {
void Unused() {}
const int kUnused = 3;
}  // namespace

int Moved(std::string text) {
  const std::string taken = std::move(text);
  return static_cast<int>(text.size() + taken.size());
}

int ByValue(std::string text) { return static_cast<int>(text.size()); }

int Waiting(int count) {
  int i = 0;
  while (i < 10) ++count;
  if (count == 11);
  return count;
}

bool Alike(const char* one, const char* other) {
  if (strcmp(one, other)) return true;
  return one == 0;
}

int Same(int n) { return n == n ? 1 : 2; }

int Nested(int n) {
  for (; n > 1; --n) {
    for (; n > 2; --n) {
      for (; n > 3; --n) {
        for (; n > 4; --n) {
          if (n == 5) return n;
        }
      }
    }
  }
  return 0;
}

int Misled(int n) {
  if (n > 0)
    ++n;
    ++n;
  return n;
}

int Stored(int n) {
  int kept = n;
  kept = n + 1;
  return n;
}

int Unset(bool set) {
  int n;
  if (set) n = 1;
  return n;
}

int Leaked() {
  auto* const n = new int(3);
  return *n;
}

void Freed() {
  void* const bytes = std::malloc(3);
  std::free(bytes);
  std::free(bytes);
}

int Read(const int* at) {
  if (at == nullptr) Say();
  return *at;
}

int Hidden(int n) {
  for (int k = 0; k < 3; ++k) {
    const int n = k;
    if (n == 2) Say();
  }
  return n;
}
"""

# One or more of each family, with a check of the whole source, of the main file only and of a header among them.
CHECKS = {
    "bugprone-infinite-loop", "bugprone-suspicious-semicolon", "bugprone-suspicious-string-compare",
    "bugprone-use-after-move", "clang-analyzer-core.NullDereference", "clang-analyzer-core.uninitialized.UndefReturn",
    "clang-analyzer-cplusplus.Move", "clang-analyzer-cplusplus.NewDeleteLeaks", "clang-analyzer-deadcode.DeadStores",
    "clang-analyzer-unix.Malloc", "clang-diagnostic-shadow", "clang-diagnostic-unused-const-variable",
    "clang-diagnostic-unused-function", "misc-redundant-expression", "misc-unused-using-decls", "modernize-use-nullptr",
    "modernize-use-override", "performance-noexcept-move-constructor", "performance-unnecessary-value-param",
    "readability-function-size", "readability-misleading-indentation",
}
