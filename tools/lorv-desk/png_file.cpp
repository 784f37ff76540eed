#include "tools/lorv-desk/png_file.h"

#include <fstream>

#include "tools/lorv/command/verb.h"

// Writes pictures of windows to files.

namespace lorv::tool {

void WritePng(const std::filesystem::path& path, SIZE size, const std::vector<DWORD>& pixels) {
  const std::string png = PngOf(size, pixels);
  std::ofstream file(path, std::ios::binary);
  file.write(png.data(), static_cast<std::streamsize>(png.size()));
  // Closed before it is asked: the last block is written only then, and a full disk shows.
  file.close();
  if (!file) {
    const auto name = path.u8string();
    throw BadInput(std::string(name.begin(), name.end()) + " cannot be written");
  }
}

}  // namespace lorv::tool
