#pragma once

#include <string>

#include "tests/image/bounds/costly_images.h"
#include "tests/image/decode/tiff/made_tiff.h"

// Files that a decoder without bounds would be slow or large with.
namespace lorv {

inline std::string TenThousandFrames(bool quick) {
  return test::LongGif(quick ? 100 : 10'000);
}

inline std::string LargeFrames(bool quick) {
  return quick ? test::RunGif(100, 3) : test::RunGif(2000, 200);
}

inline std::string PagesInACircle(bool quick) {
  test::TiffMaker maker;
  const std::uint32_t first = maker.Add({test::PageFields(2, 2, 8, 1, 1), {"\x10\x20\x30\x40"}});
  for (int i = 0; i < (quick ? 10 : 3000); ++i)
    maker.Add({test::PageFields(2, 2, 8, 1, 1), {"\x10\x20\x30\x40"}});
  maker.Link(first);
  return maker.Bytes();
}

inline std::string ManyPages(bool quick) {
  test::TiffMaker maker;
  for (int i = 0; i < (quick ? 100 : 65'536); ++i) maker.Add({test::PageFields(1, 1, 8, 1, 1), {"\x10"}});
  return maker.Bytes();
}

inline std::string PackedPicture(bool quick) {
  const std::uint32_t width = quick ? 80 : 8192;
  const std::uint32_t height = width / 2;
  return test::PngWith(width, height, 16, test::PackedZeros((1 + std::size_t{width} * 6) * height),
                       test::kColours);
}

inline std::string ManyScans(bool quick) {
  const int side = quick ? 100 : 5500;
  std::string bytes = test::JpegStart() + test::JpegHead('\xC2', side, side, 3);
  for (int i = 0; i < 63; ++i) bytes += test::LevelScan(false);
  return bytes + test::LevelScan(true) + "\xFF\xD9";
}

inline std::string RawPicture(bool quick) {
  const int width = quick ? 80 : 8192;
  const int height = quick ? 40 : 4095;
  const std::string masks = test::Low32(0xFF0000) + test::Low32(0xFF00) + test::Low32(0xFF);
  return test::MadeBmp(
      width, height, 32, 3, masks,
      std::string(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4, 'x'));
}

struct CostlyFile {
  const char* name;
  std::string (*make)(bool quick);
};

inline constexpr CostlyFile kCostlyFiles[] = {{"GIF, 10,000 frames that bring back", TenThousandFrames},
                                              {"GIF, 200 frames of 2000 x 2000", LargeFrames},
                                              {"TIFF, 3,000 pages in a circle", PagesInACircle},
                                              {"TIFF, 65,536 pages", ManyPages},
                                              {"PNG of 16 bits, 8192 x 4096, packed zeros", PackedPicture},
                                              {"JPEG, 5500 x 5500, 64 scans of a few bytes", ManyScans},
                                              {"BMP with masks, 8192 x 4095", RawPicture}};

}  // namespace lorv
