#include "tools/lorv-desk/png_file.h"

#include <zlib.h>

#include <cerrno>
#include <cstdint>
#include <fstream>
#include <system_error>

#include "tools/lorv/verb.h"

namespace lorv::tool {
namespace {

constexpr char kSignature[] = "\x89PNG\r\n\x1A\n";
constexpr char kColours[] = "\x08\x02\x00\x00\x00";  // 8 bits, red green blue, deflate, filters, no interlace
constexpr char kSameAsAbove = 2;  // the filter of each row: its difference to the row above

void PutNumber(std::string& to, std::uint32_t number) {
  for (const int shift : {24, 16, 8, 0}) to.push_back(static_cast<char>(number >> shift));
}

void PutChunk(std::string& to, const std::string& name, const std::string& data) {
  const std::string body = name + data;
  PutNumber(to, static_cast<std::uint32_t>(data.size()));
  to += body;
  const auto* const bytes = reinterpret_cast<const Bytef*>(body.data());
  PutNumber(to, static_cast<std::uint32_t>(crc32(0, bytes, static_cast<uInt>(body.size()))));
}

std::string Filtered(SIZE size, const std::vector<DWORD>& pixels) {
  const auto width = static_cast<std::size_t>(size.cx);
  std::string rows;
  for (std::size_t at = 0; at < pixels.size(); ++at) {
    if (at % width == 0) rows.push_back(kSameAsAbove);
    const DWORD above = at < width ? 0 : pixels[at - width];
    for (const int shift : {16, 8, 0})
      rows.push_back(static_cast<char>((pixels[at] >> shift) - (above >> shift)));
  }
  return rows;
}

std::string Deflated(const std::string& data) {
  uLongf size = compressBound(static_cast<uLong>(data.size()));
  std::string packed(size, '\0');
  compress2(reinterpret_cast<Bytef*>(packed.data()), &size, reinterpret_cast<const Bytef*>(data.data()),
            static_cast<uLong>(data.size()), Z_BEST_COMPRESSION);
  packed.resize(size);
  return packed;
}

}  // namespace

std::string PngOf(SIZE size, const std::vector<DWORD>& pixels) {
  std::string head;
  PutNumber(head, static_cast<std::uint32_t>(size.cx));
  PutNumber(head, static_cast<std::uint32_t>(size.cy));
  head.append(kColours, sizeof(kColours) - 1);
  std::string png(kSignature, sizeof(kSignature) - 1);
  PutChunk(png, "IHDR", head);
  PutChunk(png, "IDAT", Deflated(Filtered(size, pixels)));
  PutChunk(png, "IEND", {});
  return png;
}

void WritePng(const std::filesystem::path& path, SIZE size, const std::vector<DWORD>& pixels) {
  const std::string png = PngOf(size, pixels);
  std::ofstream file(path, std::ios::binary);
  file.write(png.data(), static_cast<std::streamsize>(png.size()));
  file.close();
  if (!file) {
    const auto name = path.u8string();
    throw BadInput(std::string(name.begin(), name.end()) + " cannot be written");
  }
}

}  // namespace lorv::tool
