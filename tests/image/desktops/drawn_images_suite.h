#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "framework/drawing/context_handles.h"
#include "framework/drawing/device_context.h"
#include "image/decode/image_reader.h"
#include "image/image.h"
#include "platform/ports/device_images.h"
#include "tests/image/decode/made_images.h"
#include "tests/image/decode/real_images.h"
#include "tests/support/data.h"

// What every desktop owes to images: one file gives the same pixels on all of them. A desktop joins by a type
// with Make() and INSTANTIATE_TYPED_TEST_SUITE_P.
namespace lorv::test {

using DrawnPixels = std::vector<DWORD>;

inline CString PathText(const std::filesystem::path& path) {
  const auto text = path.u8string();
  return CString::FromUtf8(std::string(text.begin(), text.end()));
}

// A pixel laid over another one: both shares are rounded by themselves.
inline DWORD LaidOver(DWORD pixel, DWORD ground) {
  const DWORD alpha = pixel >> 24;
  const auto share = [](DWORD part, DWORD of_255) { return (part * of_255 + 127) / 255; };
  DWORD mixed = 0xFF000000;
  for (const unsigned shift : {0U, 8U, 16U})
    mixed |= (share(pixel >> shift & 255, alpha) + share(ground >> shift & 255, 255 - alpha)) << shift;
  return mixed;
}

template <class Source>
class DrawnImages : public testing::Test {
 protected:
  DrawnImages() : desktop_(Source::Make()), scope_(*desktop_) {}

  TImage Put(const std::string& name, const std::string& bytes) const {
    WriteBytes(folder_.Path() / name, bytes);
    return TImage(PathText(folder_.Path() / name));
  }
  // A frame over nothing but a ground, 0xFFRRGGBB, so many times its size.
  DrawnPixels Drawn(const TImage& image, int frame, DWORD ground = kGround, int times = 1) const {
    CSize size;
    if (image.GetDim(size) != 1) return {};
    const CRect rect(0, 0, size.cx * times, size.cy * times);
    const std::shared_ptr<Canvas> canvas = desktop_->MakeCanvas(rect.Size());
    CDC dc(canvas);
    dc.FillSolidRect(rect, RGB(ground >> 16 & 255, ground >> 8 & 255, ground & 255));
    EXPECT_EQ(image.DrawImage(ContextHandle(dc).Get(), rect, frame), 1);
    return canvas->Pixels(rect);
  }

  std::unique_ptr<Desktop> desktop_;
  ScopedDesktop scope_;
  ScratchFolder folder_;
};

TYPED_TEST_SUITE_P(DrawnImages);

TYPED_TEST_P(DrawnImages, RealOnesHaveThePixelsOfTheirList) {
  const auto folder = FindData("images");
  if (!folder) return;
  for (const RealImage& each : kRealImages) {
    const TImage image(PathText(*folder / each.file));
    ASSERT_EQ(image.IsValidImage(), each.width > 0) << each.file;
    if (each.width == 0) continue;
    std::uint64_t digest = 1;
    for (int frame = 0; frame < image.GetFrameCount(); ++frame)
      digest = AddToDigest(digest, this->Drawn(image, frame));
    EXPECT_EQ(digest, each.drawn) << each.file << std::hex << " 0x" << digest;
  }
}

// Every alpha with light and dark colours, over light and dark grounds.
TYPED_TEST_P(DrawnImages, AlphaMixesAlike) {
  constexpr int kSide = 16;
  const std::string masks = Low32(0xFF0000) + Low32(0xFF00) + Low32(0xFF) + Low32(0xFF000000);
  std::string rows;
  DrawnPixels pixels;
  for (DWORD alpha = 0; alpha < kSide * kSide; ++alpha) {
    pixels.push_back(alpha << 24 | (alpha * 7 & 255) << 16 | (255 - alpha) << 8 | (alpha * 151 & 255));
    rows += Low32(pixels.back());
  }
  const TImage image = this->Put("alpha.bmp", MadeBmp(kSide, -kSide, 32, 6, masks, rows));
  for (const DWORD ground : {0xFF000000U, 0xFFFFFFFFU, kGround, 0xFF7F8081U}) {
    DrawnPixels mixed;
    for (const DWORD pixel : pixels) mixed.push_back(LaidOver(pixel, ground));
    EXPECT_EQ(this->Drawn(image, 0, ground), mixed) << std::hex << ground;
  }
}

TYPED_TEST_P(DrawnImages, FramesStandOnWhatWasLeftInAnyOrder) {
  constexpr DWORD kRed = 0xFFFF0000, kGreen = 0xFF00FF00, kBlue = 0xFF0000FF;
  const TImage image = this->Put(
      "three.gif",
      MadeGif(3, 1, {{0, 0, 3, 1, {1, 1, 1}, 10, 1}, {1, 0, 1, 1, {2}, 20, 3}, {2, 0, 1, 1, {3}, 30, 2}}));
  const DrawnPixels frames[] = {{kRed, kRed, kRed}, {kRed, kGreen, kRed}, {kRed, kRed, kBlue}};
  for (const int frame : {2, 0, 1, 2, 1})
    EXPECT_EQ(this->Drawn(image, frame), frames[static_cast<std::size_t>(frame)]) << frame;
  EXPECT_EQ(this->Drawn(image, 99), frames[0]);
}

TYPED_TEST_P(DrawnImages, StretchingRepeatsPixels) {
  constexpr DWORD kRed = 0xFFFF0000, kGreen = 0xFF00FF00;
  const TImage image = this->Put("two.gif", MadeGif(2, 1, {{0, 0, 2, 1, {1, 2}}}));
  EXPECT_EQ(this->Drawn(image, 0, kGround, 2),
            (DrawnPixels{kRed, kRed, kGreen, kGreen, kRed, kRed, kGreen, kGreen}));
}

TYPED_TEST_P(DrawnImages, BitmapsAreTheFrameOverBlack) {
  const TImage image = this->Put("clear.gif", MadeGif(2, 1, {{0, 0, 2, 1, {1, 2}, 1, 0, 2}}));
  HBITMAP bitmap = nullptr;
  ASSERT_EQ(image.GetBitmap(bitmap, 0), 1);
  SIZE size = {};
  DrawnPixels pixels;
  ASSERT_TRUE(NativeDeviceImages().ReadBitmap(bitmap, size, pixels));
  EXPECT_EQ(CSize(size), CSize(2, 1));
  EXPECT_EQ(pixels, (DrawnPixels{0xFFFF0000, 0xFF000000}));
  EXPECT_TRUE(EndBitmap(bitmap));
}

REGISTER_TYPED_TEST_SUITE_P(DrawnImages, RealOnesHaveThePixelsOfTheirList, AlphaMixesAlike,
                            FramesStandOnWhatWasLeftInAnyOrder, StretchingRepeatsPixels,
                            BitmapsAreTheFrameOverBlack);

}  // namespace lorv::test
