#include "tools/lorv/pictures/png_bytes.h"

#include <zlib.h>

#include <cstdint>
#include <span>

// One chunk of pixels, each row with the filter that suits drawn pictures: most of their rows are
// like the one above.
namespace lorv::tool {
namespace {

constexpr char kSignature[] = "\x89PNG\r\n\x1A\n";
constexpr char kDepth = 8;
constexpr char kColour = 2;
constexpr char kColourAlpha = 6;
constexpr char kUsualWays[] = "\x00\x00\x00";  // deflate, filters, not interlaced
constexpr char kSameAsAbove = 2;

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

std::string Filtered(SIZE size, const std::vector<DWORD>& pixels, PngColours colours) {
  static constexpr int kShifts[] = {16, 8, 0, 24};
  const std::span<const int> shifts(kShifts, colours == PngColours::kOpaque ? 3 : 4);
  const auto width = static_cast<std::size_t>(size.cx);
  std::string rows;
  rows.reserve((width * shifts.size() + 1) * static_cast<std::size_t>(size.cy));
  for (std::size_t at = 0; at < pixels.size(); ++at) {
    if (at % width == 0) rows.push_back(kSameAsAbove);
    const DWORD above = at < width ? 0 : pixels[at - width];
    // Differences within a byte, as the format has it: they turn round at 256.
    for (const int shift : shifts)
      rows.push_back(static_cast<char>((pixels[at] >> shift) - (above >> shift)));
  }
  return rows;
}

std::string Deflated(const std::string& data) {
  uLongf size = compressBound(static_cast<uLong>(data.size()));
  std::string packed(size, '\0');
  // Pictures of dialogs and frames are small: best takes no time that anybody sees.
  compress2(reinterpret_cast<Bytef*>(packed.data()), &size, reinterpret_cast<const Bytef*>(data.data()),
            static_cast<uLong>(data.size()), Z_BEST_COMPRESSION);
  packed.resize(size);
  return packed;
}

}  // namespace

std::string PngOf(SIZE size, const std::vector<DWORD>& pixels, PngColours colours) {
  std::string head;
  PutNumber(head, static_cast<std::uint32_t>(size.cx));
  PutNumber(head, static_cast<std::uint32_t>(size.cy));
  head += kDepth;
  head += colours == PngColours::kOpaque ? kColour : kColourAlpha;
  head.append(kUsualWays, sizeof(kUsualWays) - 1);
  std::string png(kSignature, sizeof(kSignature) - 1);
  PutChunk(png, "IHDR", head);
  PutChunk(png, "IDAT", Deflated(Filtered(size, pixels, colours)));
  PutChunk(png, "IEND", {});
  return png;
}

}  // namespace lorv::tool
