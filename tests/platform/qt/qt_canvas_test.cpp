#include <QPixmap>
#include <thread>

#include "framework/drawing/geometry.h"
#include "tests/platform/qt/qt_fixture.h"

namespace lorv::test {
namespace {

using QtCanvasTest = QtTest;
using Row = std::vector<DWORD>;
constexpr DWORD kWhite = 0xFFFFFFFF;
constexpr DWORD kRed = 0xFFFF0000;
constexpr COLORREF kRedColour = RGB(255, 0, 0);

TEST_F(QtCanvasTest, BeginsWhiteAndFillsInsideOnly) {
  const auto canvas = desktop_->MakeCanvas({4, 2});
  EXPECT_EQ(canvas->Pixels({0, 0, 4, 1}), Row(4, kWhite));
  canvas->Fill({1, 0, 9, 1}, kRedColour);
  EXPECT_EQ(canvas->Pixels({0, 0, 4, 1}), (Row{kWhite, kRed, kRed, kRed}));
  EXPECT_EQ(canvas->Pixels({0, 1, 4, 2}), Row(4, kWhite));
  EXPECT_EQ(canvas->Pixels({-1, 0, 1, 1}), (Row{0, kWhite}));
  canvas->Fill({3, 3, 1, 1}, 0);
  EXPECT_EQ(canvas->Pixels({1, 1, 2, 2}), Row{kWhite});
}

TEST_F(QtCanvasTest, LinesLackTheirLastPointAndFramesStayInside) {
  const auto canvas = desktop_->MakeCanvas({5, 5});
  canvas->Line({1, 0}, {4, 0}, {kRedColour, 1, PS_SOLID});
  EXPECT_EQ(canvas->Pixels({0, 0, 5, 1}), (Row{kWhite, kRed, kRed, kRed, kWhite}));
  canvas->Line({0, 1}, {5, 1}, {kRedColour, 1, PS_DOT});
  EXPECT_EQ(canvas->Pixels({0, 1, 5, 2}), (Row{kRed, kWhite, kRed, kWhite, kRed}));
  canvas->Line({0, 2}, {5, 2}, {kRedColour, 1, PS_NULL});
  EXPECT_EQ(canvas->Pixels({0, 2, 5, 3}), Row(5, kWhite));
  canvas->Frame({0, 2, 3, 5}, kRedColour, 1);
  EXPECT_EQ(canvas->Pixels({0, 3, 4, 4}), (Row{kRed, kWhite, kRed, kWhite}));
}

TEST_F(QtCanvasTest, GradientGoesFromColourToColour) {
  const auto canvas = desktop_->MakeCanvas({3, 1});
  canvas->Gradient({0, 0, 3, 1}, RGB(0, 0, 0), RGB(200, 100, 50), false);
  EXPECT_EQ(canvas->Pixels({0, 0, 3, 1}), (Row{0xFF000000, 0xFF643219, 0xFFC86432}));
}

TEST_F(QtCanvasTest, InvertedTwiceIsAsBefore) {
  const auto canvas = desktop_->MakeCanvas({2, 1});
  canvas->Fill({0, 0, 1, 1}, kRedColour);
  canvas->Invert({0, 0, 2, 1});
  EXPECT_EQ(canvas->Pixels({0, 0, 2, 1}), (Row{0xFF00FFFF, 0xFF000000}));
  canvas->Invert({0, 0, 2, 1});
  EXPECT_EQ(canvas->Pixels({0, 0, 2, 1}), (Row{kRed, kWhite}));
}

TEST_F(QtCanvasTest, ClipHoldsAndIsLifted) {
  const auto canvas = desktop_->MakeCanvas({3, 1});
  const RECT clip = {1, 0, 2, 1};
  canvas->SetClip(&clip);
  canvas->Fill({0, 0, 3, 1}, kRedColour);
  EXPECT_EQ(canvas->Pixels({0, 0, 3, 1}), (Row{kWhite, kRed, kWhite}));
  canvas->SetClip(nullptr);
  canvas->Fill({0, 0, 3, 1}, kRedColour);
  EXPECT_EQ(canvas->Pixels({0, 0, 3, 1}), Row(3, kRed));
}

TEST_F(QtCanvasTest, CopiesOverlapAndImagesAreLaidOver) {
  const auto canvas = desktop_->MakeCanvas({4, 1});
  canvas->Fill({0, 0, 2, 1}, kRedColour);
  canvas->Copy({1, 0, 3, 1}, *canvas, {0, 0});
  EXPECT_EQ(canvas->Pixels({0, 0, 4, 1}), (Row{kRed, kRed, kRed, kWhite}));
  const DWORD pixels[] = {0x00000000, 0xFF0000FF};
  canvas->Image({2, 1, pixels}, {2, 0, 4, 1});
  EXPECT_EQ(canvas->Pixels({2, 0, 4, 1}), (Row{kRed, 0xFF0000FF}));
  canvas->Image({0, 1, pixels}, {0, 0, 4, 1});
  canvas->Image({1, 1, nullptr}, {0, 0, 4, 1});
  EXPECT_EQ(canvas->Pixels({0, 0, 1, 1}), Row{kRed});
}

TEST_F(QtCanvasTest, PolygonsFillTheirInside) {
  const auto canvas = desktop_->MakeCanvas({6, 6});
  const COLORREF inside = kRedColour;
  canvas->Polygon({{1, 1}, {5, 1}, {5, 5}, {1, 5}}, nullptr, &inside);
  EXPECT_EQ(canvas->Pixels({3, 3, 4, 4}), Row{kRed});
  EXPECT_EQ(canvas->Pixels({0, 0, 1, 1}), Row{kWhite});
  canvas->Polygon({{0, 0}}, nullptr, &inside);
}

TEST_F(QtCanvasTest, MeasuresAndDrawsChineseText) {
  const auto canvas = desktop_->MakeCanvas({80, 40});
  LOGFONT font = desktop_->DialogFont();
  font.lfHeight = -20;
  const TextView face = _T("宋体");
  std::fill_n(font.lfFaceName, LF_FACESIZE, TCHAR{0});
  std::copy(face.begin(), face.end(), font.lfFaceName);
  canvas->SetFont(font);
  // A full-width letter is as wide as the font is high.
  EXPECT_EQ(canvas->Extent(_T("墙体")).cx, 40);
  EXPECT_EQ(canvas->Extent(_T("")).cx, 0);
  EXPECT_EQ(canvas->Extent(_T("墙")).cy, canvas->Metrics().tmHeight);
  EXPECT_GE(canvas->Metrics().tmHeight, 20);
  canvas->Text({2, 3}, _T("墙体"), kRedColour);
  const Row pixels = canvas->Pixels({0, 0, 80, 40});
  EXPECT_GT(std::count_if(pixels.begin(), pixels.end(), [](DWORD p) { return p != kWhite; }), 40);
}

TEST_F(QtCanvasTest, FontsAreReplacedByOneWithChineseLetters) {
  const auto canvas = desktop_->MakeCanvas({1, 1});
  LOGFONT font = desktop_->DialogFont();
  font.lfHeight = -30;
  const auto with_face = [&](TextView face) {
    std::fill_n(font.lfFaceName, LF_FACESIZE, TCHAR{0});
    std::copy(face.begin(), face.end(), font.lfFaceName);
    canvas->SetFont(font);
    return canvas->Extent(_T("Wall 墙")).cx;
  };
  const int known = with_face({desktop_->DialogFont().lfFaceName});
  EXPECT_EQ(with_face(_T("SimSun")), known);
  EXPECT_EQ(with_face(_T("no such face")), known);
}

TEST_F(QtCanvasTest, PaintIsAskedForOncePerRoundWithWhatIsOutOfDate) {
  Witness child;
  Child(WindowKind::Custom, 0, 1, {0, 0, 50, 40}, &child);
  Settle();
  child.reported.clear();
  CRect dirty;
  const auto peer = desktop_->Find(child.window);
  child.on_message = [&](UINT message, WPARAM, LPARAM, LRESULT&) {
    if (message != WM_PAINT) return false;
    const auto canvas = peer->PaintCanvas(dirty);
    canvas->Fill({0, 0, 50, 40}, kRedColour);
    return true;
  };
  const RECT part = {5, 6, 10, 12};
  peer->Invalidate(&part);
  peer->Invalidate(&part);
  Settle();
  EXPECT_EQ(child.Count(WM_PAINT), 1);
  EXPECT_EQ(dirty, CRect(part));
  EXPECT_EQ(peer->ClientCanvas()->Pixels({4, 6, 6, 7}), (Row{kWhite, kRed}));
  peer->Update();
  EXPECT_EQ(child.Count(WM_PAINT), 1);
  peer->Invalidate(nullptr);
  peer->Update();
  EXPECT_EQ(child.Count(WM_PAINT), 2);
}

TEST_F(QtCanvasTest, WhatIsDrawnOutsideOfPaintIsSeen) {
  const HWND child = Child(WindowKind::Custom, WS_BORDER, 1, {10, 10, 60, 50});
  desktop_->Find(child)->ClientCanvas()->Fill({0, 0, 48, 38}, kRedColour);
  Settle();
  const QImage seen = WidgetOf(child)->grab().toImage();
  EXPECT_EQ(seen.pixel(1, 1), kRed);
  EXPECT_EQ(seen.pixel(48, 38), kRed);
  EXPECT_NE(seen.pixel(0, 0), kRed);
}

TEST_F(QtCanvasTest, CanvasOutlivesItsWindow) {
  const HWND child = Child(WindowKind::Custom, 0, 1, {10, 10, 60, 50});
  const auto canvas = desktop_->Find(child)->ClientCanvas();
  desktop_->Find(child)->Destroy();
  canvas->Fill({0, 0, 9, 9}, 0);
  EXPECT_GT(canvas->Extent(_T("墙")).cx, 0);
  Settle();
}

TEST_F(QtCanvasTest, ControlWithAnOwnPainterShowsWhatThatDrew) {
  Witness label;
  Child(WindowKind::Static, 0, 1, {0, 0, 50, 40}, &label, _T("text"));
  label.on_message = [&](UINT message, WPARAM, LPARAM, LRESULT&) {
    if (message != WM_PAINT) return false;
    RECT dirty = {};
    desktop_->Find(label.window)->PaintCanvas(dirty)->Fill(dirty, kRedColour);
    return true;
  };
  // The widget has been shown already: it is asked again.
  desktop_->Find(label.window)->Invalidate(nullptr);
  Settle();
  const auto seen = [&] { return WidgetOf(label.window)->grab().toImage().pixel(20, 20); };
  EXPECT_EQ(seen(), kRed);
  const int before = label.Count(WM_PAINT);
  EXPECT_GE(before, 1);
  EXPECT_EQ(seen(), kRed);
  Settle();
  EXPECT_GT(label.Count(WM_PAINT), before);
  label.on_message = nullptr;
  desktop_->Find(label.window)->Invalidate(nullptr);
  Settle();
  EXPECT_NE(seen(), kRed);
}

TEST_F(QtCanvasTest, BothThreadsDrawOnOneWindow) {
  const HWND child = Child(WindowKind::Custom, 0, 1, {0, 0, 100, 50});
  std::thread painter([&] {
    const auto canvas = desktop_->Find(child)->ClientCanvas();
    for (int i = 0; i < 50; ++i) {
      canvas->Fill({0, 0, 50, 50}, kRedColour);
      canvas->Text({2, 2}, _T("提示"), 0);
    }
    canvas->Fill({0, 0, 50, 50}, kRedColour);
  });
  const auto canvas = desktop_->Find(child)->ClientCanvas();
  for (int i = 0; i < 50; ++i) {
    canvas->Fill({50, 0, 100, 50}, RGB(0, 0, 255));
    Settle();
  }
  painter.join();
  Settle();
  const QImage seen = WidgetOf(child)->grab().toImage();
  EXPECT_EQ(seen.pixel(49, 25), kRed);
  EXPECT_EQ(seen.pixel(50, 25), 0xFF0000FF);
}

}  // namespace
}  // namespace lorv::test
