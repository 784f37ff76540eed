#pragma once

#include <array>

#include "TEXPRESSCAL/language/name_word.h"

namespace lorv {

// Remembers of some names that they are among the keywords, so that a value set again and again searches them
// once. To be emptied whenever a keyword may have gone.
class KeywordMemory {
 public:
  bool Holds(NameWord word) const { return word != 0 && words_[Slot(word)] == word; }
  void Remember(NameWord word) { words_[Slot(word)] = word; }
  void Forget() { words_ = {}; }

 private:
  // Spreads the words of the shortest names, which differ in their highest units alone.
  static constexpr std::size_t Slot(NameWord word) { return word * 0x9E3779B97F4A7C15U >> 58; }

  std::array<NameWord, 64> words_ = {};
};

}  // namespace lorv
