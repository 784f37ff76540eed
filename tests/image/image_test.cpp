#include "image/image.h"

#include <gtest/gtest.h>

#include "framework/drawing/context_handles.h"
#include "framework/drawing/device_context.h"
#include "framework/objects/exceptions.h"
#include "image/decode/raster.h"
#include "image/picture/picture.h"
#include "platform/headless/desktop/headless_desktop.h"
#include "platform/headless/services/headless_platform.h"
#include "platform/ports/device_images.h"
#include "tests/image/decode/made_images.h"
#include "tests/image/decode/tiff/made_tiff.h"

namespace lorv::test {
namespace {

constexpr DWORD kWhite = 0xFFFFFFFF;
constexpr DWORD kRed = 0xFFFF0000;
constexpr DWORD kGreen = 0xFF00FF00;
constexpr DWORD kBlue = 0xFF0000FF;
constexpr DWORD kBlack = 0xFF000000;

using Pixels = std::vector<DWORD>;

class Image : public testing::Test {
 protected:
  Image() : platform_scope_(machine_.Ports()), desktop_scope_(desktop_) {
    Put(_T("C:\\three.gif"),
        MadeGif(2, 1, {{0, 0, 2, 1, {1, 1}, 7, 1}, {0, 0, 1, 1, {2}, 0, 1}, {1, 0, 1, 1, {3}, 10, 1}}));
    Put(_T("C:\\tall.bmp"), MadeBmp(10, 20, 24, 0, "", std::string(20 * 32, '\xFF')));
    Put(_T("C:\\clear.gif"), MadeGif(2, 1, {{0, 0, 2, 1, {1, 2}, 1, 0, 2}}));
    Put(_T("C:\\broken.png"), "\x89PNG\r\n\x1A\nnothing");
    canvas_ = desktop_.MakeCanvas({8, 8});
    dc_ = std::make_unique<CDC>(canvas_);
  }

  void Put(LPCTSTR path, const std::string& bytes) {
    const auto file = machine_.files.Open(path, FileUse::kCreate, nullptr);
    ASSERT_NE(file, nullptr);
    ASSERT_TRUE(file->Write(bytes.data(), bytes.size()));
  }
  Pixels Drawn(const TImage& image, int frame, const CRect& rect = CRect(0, 0, 2, 1)) {
    dc_->FillSolidRect(CRect(0, 0, 8, 8), RGB(255, 255, 255));
    EXPECT_EQ(image.DrawImage(ContextHandle(*dc_).Get(), rect, frame), 1);
    return canvas_->Pixels(rect);
  }

  HeadlessPlatform machine_;
  ScopedPlatform platform_scope_;
  HeadlessDesktop desktop_;
  ScopedDesktop desktop_scope_;
  std::shared_ptr<Canvas> canvas_;
  std::unique_ptr<CDC> dc_;
};

TEST_F(Image, MissingFileIsInvalidOnceAndHoldsNothing) {
  const TImage image(CString(_T("C:\\missing.gif")));
  EXPECT_FALSE(image.IsValidImage());
  EXPECT_TRUE(image.IsValidImage());
  EXPECT_EQ(image.GetFrameCount(), 0);
  EXPECT_FALSE(image.IsValidImage()) << "the question failed, too";
  EXPECT_TRUE(image.IsValidImage());
}

TEST_F(Image, EveryOperationBeginsWithTheTest) {
  const CString missing(_T("C:\\missing.gif"));
  CSize size(5, 6);
  HBITMAP bitmap = nullptr;
  EXPECT_EQ(TImage(missing).GetDim(size), 0);
  EXPECT_EQ(size, CSize(5, 6));
  EXPECT_EQ(TImage(missing).GetFrameCount(), 0);
  EXPECT_EQ(TImage(missing).GetFrameDelay(0), 0);
  EXPECT_EQ(TImage(missing).GetBitmap(bitmap, 0), 0);
  EXPECT_EQ(TImage(missing).DrawImage(ContextHandle(*dc_).Get(), CRect(0, 0, 2, 1), 0), 0);
  TImage image(missing);
  EXPECT_EQ(image.SetImage(_T("C:\\three.gif")), 0) << "the first one is refused";
  EXPECT_EQ(image.SetImage(_T("C:\\three.gif")), 1);
  EXPECT_EQ(image.GetFrameCount(), 3);
}

TEST_F(Image, DamagedFilesFoldersAndTheEmptyNameAreInvalid) {
  for (LPCTSTR path : {_T("C:\\broken.png"), _T("C:\\"), _T("")}) {
    const TImage image{CString(path)};
    EXPECT_FALSE(image.IsValidImage());
    EXPECT_TRUE(image.IsValidImage());
    CSize size;
    EXPECT_EQ(image.GetDim(size), 0);
    HBITMAP bitmap = reinterpret_cast<HBITMAP>(&size);
    EXPECT_EQ(image.GetBitmap(bitmap, 0), 0) << "the failed question is remembered";
    EXPECT_EQ(image.GetBitmap(bitmap, 0), 1) << "even where the last step fails";
    EXPECT_EQ(bitmap, nullptr);
  }
}

TEST_F(Image, SizesAndFramesAreReported) {
  CSize size;
  const TImage tall(CString(_T("C:\\tall.bmp")));
  EXPECT_TRUE(tall.IsValidImage());
  EXPECT_EQ(tall.GetDim(size), 1);
  EXPECT_EQ(size, CSize(10, 20));
  EXPECT_EQ(tall.GetFrameCount(), 1);
  EXPECT_EQ(TImage(CString(_T("C:\\three.gif"))).GetFrameCount(), 3);
}

TEST_F(Image, DelaysAreThoseOfGifFilesOfSeveralFrames) {
  const TImage gif(CString(_T("C:\\three.gif")));
  EXPECT_EQ(gif.GetFrameDelay(0), 70);
  EXPECT_EQ(gif.GetFrameDelay(1), 0);
  EXPECT_EQ(gif.GetFrameDelay(2), 100);
  for (const int none : {-1, 3, 1'000'000'000, -2'000'000'000}) EXPECT_EQ(gif.GetFrameDelay(none), 0) << none;
  EXPECT_EQ(TImage(CString(_T("C:\\tall.bmp"))).GetFrameDelay(0), 0);
  EXPECT_EQ(TImage(CString(_T("C:\\clear.gif"))).GetFrameDelay(0), 0) << "one frame has no such property";
  EXPECT_TRUE(gif.IsValidImage()) << "a question without an answer is no failure";
}

TEST_F(Image, FramesAreDrawnByNumberAndStaySelected) {
  const TImage gif(CString(_T("C:\\three.gif")));
  EXPECT_EQ(Drawn(gif, 2), (Pixels{kGreen, kBlue}));
  EXPECT_EQ(Drawn(gif, -2), (Pixels{kGreen, kBlue})) << "other negatives draw what is selected";
  EXPECT_TRUE(gif.IsValidImage());
  EXPECT_EQ(Drawn(gif, 0), (Pixels{kRed, kRed}));
  EXPECT_EQ(Drawn(gif, 1), (Pixels{kGreen, kRed}));
  for (const int beyond : {99, 3, -1}) EXPECT_EQ(Drawn(gif, beyond), (Pixels{kRed, kRed})) << beyond;
}

TEST_F(Image, DrawingStretchesAndLetsTransparentPixelsThrough) {
  const TImage gif(CString(_T("C:\\three.gif")));
  EXPECT_EQ(Drawn(gif, 1, CRect(1, 2, 5, 4)),
            (Pixels{kGreen, kGreen, kRed, kRed, kGreen, kGreen, kRed, kRed}));
  EXPECT_EQ(Drawn(TImage(CString(_T("C:\\clear.gif"))), 0), (Pixels{kRed, kWhite}));
  EXPECT_EQ(gif.DrawImage(ContextHandle(*dc_).Get(), CRect(3, 3, 3, 9), 0), 1) << "an empty rectangle";
}

TEST_F(Image, DrawingNeedsAContextThatLives) {
  const TImage gif(CString(_T("C:\\three.gif")));
  EXPECT_EQ(gif.DrawImage(nullptr, CRect(0, 0, 2, 1), 0), 0);
  HDC gone = nullptr;
  {
    const ContextHandle handle(*dc_);
    gone = handle.Get();
    EXPECT_EQ(ContextOf(gone), dc_.get());
    EXPECT_NE(ContextHandle(*dc_).Get(), gone) << "numbers are used once";
  }
  EXPECT_EQ(ContextOf(gone), nullptr);
  EXPECT_EQ(gif.DrawImage(gone, CRect(0, 0, 2, 1), 0), 0);
  EXPECT_TRUE(gif.IsValidImage());
}

TEST_F(Image, ContextsOriginCounts) {
  dc_->FillSolidRect(CRect(0, 0, 8, 8), RGB(255, 255, 255));
  dc_->SetWindowOrg(100, 100);
  const TImage gif(CString(_T("C:\\three.gif")));
  EXPECT_EQ(gif.DrawImage(ContextHandle(*dc_).Get(), CRect(101, 100, 103, 101), 1), 1);
  EXPECT_EQ(canvas_->Pixels({0, 0, 4, 1}), (Pixels{kWhite, kGreen, kRed, kWhite}));
}

TEST_F(Image, CopiesAreIndependentAndKeepTheFrame) {
  const TImage gif(CString(_T("C:\\three.gif")));
  Drawn(gif, 2);
  TImage copy(gif);
  EXPECT_TRUE(copy.IsValidImage());
  EXPECT_EQ(Drawn(copy, -5), (Pixels{kGreen, kBlue}));
  EXPECT_EQ(copy.SetImage(_T("C:\\tall.bmp")), 1);
  EXPECT_EQ(copy.GetFrameCount(), 1);
  EXPECT_EQ(gif.GetFrameCount(), 3);
  EXPECT_EQ(Drawn(gif, 1), (Pixels{kGreen, kRed}));
  const TImage nothing(CString(_T("C:\\missing.gif")));
  EXPECT_FALSE(TImage(nothing).IsValidImage());
}

TEST_F(Image, AssignmentSharesTheImage) {
  TImage gif(CString(_T("C:\\three.gif")));
  {
    TImage other(CString(_T("C:\\tall.bmp")));
    other = gif;
    EXPECT_EQ(other.GetFrameCount(), 3);
    EXPECT_EQ(other.SetImage(_T("C:\\tall.bmp")), 1);
  }
  CSize size;
  EXPECT_EQ(gif.GetDim(size), 1) << "the image lives as long as one of both";
  EXPECT_EQ(size, CSize(10, 20));
  const TImage& self = gif;
  gif = self;
  EXPECT_EQ(gif.GetFrameCount(), 1);
}

TEST_F(Image, FailedReplacementLeavesNothingAndAGoodStatus) {
  TImage gif(CString(_T("C:\\three.gif")));
  EXPECT_EQ(gif.SetImage(_T("C:\\missing.gif")), 0);
  EXPECT_TRUE(gif.IsValidImage());
  EXPECT_EQ(gif.GetFrameCount(), 0);
}

TEST_F(Image, BitmapIsTheSelectedFrameOverBlack) {
  const TImage gif(CString(_T("C:\\three.gif")));
  HBITMAP bitmap = nullptr;
  Drawn(gif, 1);
  ASSERT_EQ(gif.GetBitmap(bitmap, 0), 1);
  SIZE size = {0, 0};
  Pixels pixels;
  ASSERT_TRUE(NativeDeviceImages().ReadBitmap(bitmap, size, pixels));
  EXPECT_EQ(CSize(size), CSize(2, 1));
  EXPECT_EQ(pixels, (Pixels{kGreen, kRed}));
  EXPECT_TRUE(EndBitmap(bitmap));
  EXPECT_FALSE(EndBitmap(bitmap));
  EXPECT_FALSE(NativeDeviceImages().ReadBitmap(bitmap, size, pixels));
  ASSERT_EQ(TImage(CString(_T("C:\\clear.gif"))).GetBitmap(bitmap, 0), 1);
  ASSERT_TRUE(NativeDeviceImages().ReadBitmap(bitmap, size, pixels));
  EXPECT_EQ(pixels, (Pixels{kRed, kBlack}));
  EndBitmap(bitmap);
}

TEST_F(Image, PagesOfATiffHaveTheirOwnSizes) {
  TiffMaker maker;
  maker.Add({PageFields(1, 1, 8, 1, 1), {"\x11"}});
  maker.Add({PageFields(2, 3, 8, 1, 1), {"\x22\x33\x44\x55\x66\x77"}});
  Put(_T("C:\\pages.tif"), maker.Bytes());
  const TImage pages(CString(_T("C:\\pages.tif")));
  EXPECT_EQ(pages.GetFrameCount(), 2);
  EXPECT_EQ(Drawn(pages, 1, CRect(0, 0, 2, 3)).back(), 0xFF777777U);
  CSize size;
  EXPECT_EQ(pages.GetDim(size), 1);
  EXPECT_EQ(size, CSize(2, 3));
  EXPECT_EQ(pages.GetFrameDelay(1), 0);
}

// What another imaging library might answer.
class OddPicture : public Picture {
 public:
  std::unique_ptr<Picture> Clone() override { return std::make_unique<OddPicture>(); }
  bool TakeStatus() override { return true; }
  std::pair<int, int> Size() override { return {1, 1}; }
  bool IsGif() override { return true; }
  int DimensionCount() override { return 1; }
  int FrameCount() override { return 2; }
  void SelectFrame(int frame) override {
    if (frame == 1) AfxThrowInvalidArgException();
  }
  const Raster* Pixels() override {
    raster_.Resize(1, 1, kBlue);
    return &raster_;
  }
  bool ReadDelays(DelayProperty& delays) override {
    delays = {type, {7, 0xFFFFFFFF}};
    return true;
  }
  static inline unsigned type = 3;

 private:
  Raster raster_;
};

class OddPictures : public PictureLoader {
 public:
  std::unique_ptr<Picture> LoadFile(const CString& /*path*/) override {
    return std::make_unique<OddPicture>();
  }
  std::unique_ptr<Picture> LoadResource(HINSTANCE /*module*/, unsigned /*number*/) override {
    return std::make_unique<OddPicture>();
  }
};

TEST_F(Image, DelaysOfAnotherTypeAreAHundredAndHugeOnesStayInRange) {
  OddPictures odd;
  const ScopedPictures scope(odd);
  const TImage image(CString(_T("any")));
  OddPicture::type = 3;
  EXPECT_EQ(image.GetFrameDelay(0), 100);
  OddPicture::type = kLongEntries;
  EXPECT_EQ(image.GetFrameDelay(0), 70);
  EXPECT_EQ(image.GetFrameDelay(1), 0x7FFFFFFF);
}

TEST_F(Image, WhatTheFrameworkThrowsIsShownAndTheDrawingGoesOn) {
  OddPictures odd;
  const ScopedPictures scope(odd);
  const TImage image(CString(_T("any")));
  EXPECT_EQ(Drawn(image, 1, CRect(0, 0, 1, 1)), (Pixels{kBlue}));
  ASSERT_EQ(machine_.dialogs.messages.size(), 1U);
  EXPECT_FALSE(machine_.dialogs.messages[0].text.IsEmpty());
}

class FailingPictures : public PictureLoader {
 public:
  std::unique_ptr<Picture> LoadFile(const CString& path) override {
    if (path.IsEmpty()) throw std::bad_alloc();
    return std::make_unique<OddPicture>();
  }
  std::unique_ptr<Picture> LoadResource(HINSTANCE /*module*/, unsigned /*number*/) override {
    return nullptr;
  }
};

TEST_F(Image, LoaderThatThrowsLeavesAnObjectWithoutAnImage) {
  FailingPictures failing;
  const ScopedPictures scope(failing);
  TImage image(CString(_T("any")));
  EXPECT_THROW(image.SetImage(CString()), std::bad_alloc);
  EXPECT_FALSE(image.IsValidImage());
  EXPECT_FALSE(image.IsValidImage());
  EXPECT_EQ(image.GetFrameCount(), 0);
  EXPECT_FALSE(TImage(image).IsValidImage()) << "and so has its copy";
}

TEST_F(Image, HeaderExample) {
  Put(_T("C:\\梁.gif"), MadeGif(2, 1, {{0, 0, 2, 1, {1, 2}}}));
  const TImage image(CString(_T("C:\\梁.gif")));
  CSize size;
  EXPECT_EQ(image.GetDim(size), 1);
  EXPECT_EQ(size, CSize(2, 1));
  EXPECT_EQ(Drawn(image, 0), (Pixels{kRed, kGreen}));
}

}  // namespace
}  // namespace lorv::test
