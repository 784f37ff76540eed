#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "image/decode/image_reader.h"

// A decoder for each kind. Those of one frame leave `out` undefined when they give false.
namespace lorv {

std::unique_ptr<ImageReader> OpenGif(std::string bytes);
std::unique_ptr<ImageReader> OpenTiff(std::string bytes);
bool DecodePng(std::string_view bytes, Raster& out);
bool DecodeJpeg(std::string_view bytes, Raster& out);
bool DecodeBmp(std::string_view bytes, Raster& out);
bool DecodeIcon(std::string_view bytes, Raster& out);

// A bitmap without its file header. In an icon it has twice its height, the second half the mask of what is
// transparent; `data_at` is where its rows begin, 0: behind header and colours.
bool DecodeDib(std::string_view bytes, std::size_t data_at, bool in_icon, Raster& out);

}  // namespace lorv
