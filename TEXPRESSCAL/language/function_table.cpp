#include "TEXPRESSCAL/function_table.h"

#include <array>
#include <cstdint>

#include "TEXPRESSCAL/language/function_data.h"

// The functions by name: a sorted table for callers, a hash over packed names for the parser. Both are made
// from the same rows, so a function is known to both or to neither.

namespace lorv {
namespace {

// By name, as users see it; the parser asks the hash below.
FunctionTable Filled() {
  FunctionTable table;
  table.reserve(kFunctionData.size());
  for (const CDtaFunction& function : kFunctionData) table.AddSorted(function);
  return table;
}

std::uint64_t Packed(LPCTSTR name) {
  std::uint64_t word = 0;
  for (; *name != 0; ++name) word = AppendToWord(word, *name);
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
  // Four times as many as names, so a search that finds nothing mostly ends at once.
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

// Letter case does not count: names come from callers, too.
__int64 FunctionTable::Compare(const CDtaFunction& a, const CDtaFunction& b) const {
  return CompareWithoutCase(a.pszName, b.pszName);
}

__int64 FunctionTable::CompareKey(const LPCTSTR* key, const CDtaFunction& element) const {
  return CompareWithoutCase(*key, element.pszName);
}

// Made by the first call, on any thread: a static local variable is initialised safely.
const FunctionTable& Functions() {
  static const FunctionTable table = Filled();
  return table;
}

// A longer name could have the word of its last units.
unsigned short FunctionKind(std::uint64_t word, std::size_t length) {
  static const NameHash hash;
  return length > kLongestFunctionName ? 0 : hash.Find(word);
}

}  // namespace lorv
