#pragma once

#include <span>

namespace lorv::tool {

// A run of characters, both ends included.
struct CodeRange {
  char32_t first;
  char32_t last;
};

// Characters of two columns on a terminal, ascending.
std::span<const CodeRange> WideCharacters();

// Characters that take no column, ascending.
std::span<const CodeRange> CharactersWithoutWidth();

}  // namespace lorv::tool
