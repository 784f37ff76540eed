#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "framework/native/window_types.h"

namespace lorv::tool {

// A picture in the portable network graphics format: 8 bits a colour, no transparency. `pixels` are
// 0xAARRGGBB row by row, size.cx * size.cy of them; the first byte is passed over.
std::string PngOf(SIZE size, const std::vector<DWORD>& pixels);

// Writes it; throws BadInput with the reason if that cannot be done.
void WritePng(const std::filesystem::path& path, SIZE size, const std::vector<DWORD>& pixels);

}  // namespace lorv::tool
