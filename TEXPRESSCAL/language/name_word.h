#pragma once

#include <cstdint>

#include "framework/text/char_class.h"

namespace lorv {

// A short plain name as one number: at most eight ASCII letters, digits and "_", a letter first, letter case
// fallen away. Words are equal where names are, and stand in the order of names. 0: any other name.
using NameWord = std::uint64_t;

constexpr int kNameWordUnits = 8;

// The word of units that were appended one by one, `count` of them.
constexpr NameWord FinishWord(NameWord appended, int count) {
  return count == 0 ? 0 : appended << 8 * (kNameWordUnits - count);
}

// `name` may be null.
inline NameWord WordOfName(LPCTSTR name) {
  if (name == nullptr || !IsAsciiLetter(*name)) return 0;
  NameWord word = 0;
  int count = 0;
  for (; IsNameChar(name[count]); ++count) {
    if (count == kNameWordUnits) return 0;
    word = word << 8 | ToLower(name[count]);
  }
  return name[count] == 0 ? FinishWord(word, count) : 0;
}

}  // namespace lorv
