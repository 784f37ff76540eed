#pragma once

#include <string>
#include <vector>

#include "framework/native/window_types.h"

namespace lorv::tool {

enum class PngColours { kOpaque, kWithAlpha };

// A picture in the portable network graphics format, 8 bits a sample. `pixels` are 0xAARRGGBB row by row,
// not multiplied by their alpha, size.cx * size.cy of them; without alpha the first byte is passed over.
// Throws nothing but std::bad_alloc.
//
//   PngOf({1, 1}, {0x80FF0000}, PngColours::kWithAlpha)  holds one red pixel that lets half through
std::string PngOf(SIZE size, const std::vector<DWORD>& pixels, PngColours colours = PngColours::kOpaque);

}  // namespace lorv::tool
