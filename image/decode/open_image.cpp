#include "image/decode/image_decoders.h"
#include "image/decode/image_reader.h"
#include "image/decode/still_image.h"

// The decoder for an image, chosen by its first bytes, as the names of files are often wrong. Kinds with
// several frames keep the bytes and decode a frame when asked for it; the others are decoded here as a whole.

namespace lorv {
namespace {

struct StillKind {
  std::string_view mark;
  ImageKind kind;
  bool (*decode)(std::string_view, Raster&);
};

// Two letters may begin a text as well as a bitmap: there the header decides.
constexpr StillKind kStillKinds[] = {
    {{"\x89PNG\r\n\x1A\n", 8}, ImageKind::kPng, DecodePng},
    {{"\xFF\xD8\xFF", 3}, ImageKind::kJpeg, DecodeJpeg},
    {{"BM", 2}, ImageKind::kBmp, DecodeBmp},
    {{"\0\0\1\0", 4}, ImageKind::kIcon, DecodeIcon},
};

}  // namespace

std::unique_ptr<ImageReader> OpenImage(std::string bytes) {
  if (bytes.starts_with("GIF87a") || bytes.starts_with("GIF89a")) return OpenGif(std::move(bytes));
  if (bytes.starts_with(std::string_view("II*\0", 4)) || bytes.starts_with(std::string_view("MM\0*", 4)))
    return OpenTiff(std::move(bytes));
  for (const StillKind& each : kStillKinds) {
    if (!std::string_view(bytes).starts_with(each.mark)) continue;
    Raster raster;
    // A damaged head may pass as a picture of no size.
    if (!each.decode(bytes, raster) || !IsFairSize(raster.width, raster.height)) return nullptr;
    return std::make_unique<StillImage>(each.kind, std::move(raster));
  }
  return nullptr;
}

}  // namespace lorv
