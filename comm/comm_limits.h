#pragma once

#include <cstddef>

// The fixed limits of the text utilities.
namespace lorv {

// Bytes of a line of a text file, its end not counted. A file with a longer line is refused.
constexpr std::size_t kLongestTextFileLine = 1022;

// Units of a title, the terminator included, in which CloseWindow looks for the one that stops it.
constexpr int kClosedTitleRoom = 260;

}  // namespace lorv
