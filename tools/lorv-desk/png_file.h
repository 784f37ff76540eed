#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "tools/lorv/pictures/png_bytes.h"

namespace lorv::tool {

// Writes a picture without transparency, as PngOf takes it; throws BadInput with the reason if that cannot
// be done.
void WritePng(const std::filesystem::path& path, SIZE size, const std::vector<DWORD>& pixels);

}  // namespace lorv::tool
