#include "image/decode/byte_view.h"
#include "image/decode/image_decoders.h"

// ICO: a list of pictures, each a bitmap without file header or a whole PNG. The largest counts, of equal
// ones that with the most bits a pixel.
namespace lorv {
namespace {

struct Entry {
  unsigned width = 0;
  unsigned height = 0;
  unsigned bits = 0;
  std::uint32_t size = 0;
  std::uint32_t at = 0;

  std::uint64_t Rank() const { return std::uint64_t{width} * height * 1024 + bits; }
};

Entry ReadEntry(ByteView& view) {
  Entry entry;
  entry.width = view.Byte();
  entry.height = view.Byte();
  // One byte has no 256; 0 stands for it.
  if (entry.width == 0) entry.width = 256;
  if (entry.height == 0) entry.height = 256;
  // A count of colours, a filler and a count of planes, which writers fill in as they like.
  view.Skip(4);
  entry.bits = view.Low16() & 0x3F;
  entry.size = view.Low32();
  entry.at = view.Low32();
  return entry;
}

}  // namespace

bool DecodeIcon(std::string_view bytes, Raster& out) {
  ByteView view(bytes);
  view.Seek(4);
  Entry best;
  for (unsigned left = view.Low16(); left > 0 && !view.Overran(); --left) {
    const Entry entry = ReadEntry(view);
    if (!view.Overran() && entry.Rank() > best.Rank()) best = entry;
  }
  if (best.at >= bytes.size() || best.size == 0) return false;
  const std::string_view picture = bytes.substr(best.at, best.size);
  // Recognised by its own first bytes, as the list has no word for it.
  if (picture.starts_with("\x89PNG")) return DecodePng(picture, out);
  return DecodeDib(picture, 0, true, out);
}

}  // namespace lorv
