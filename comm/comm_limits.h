#pragma once

#include <cstddef>

// The fixed limits of the text utilities.
namespace lorv {

// Bytes of a line of a text file, its end not counted. A file with a longer line is refused.
constexpr std::size_t kLongestTextFileLine = 1022;

}  // namespace lorv
