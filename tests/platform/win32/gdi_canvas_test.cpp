#include "platform/win32/drawing/gdi_canvas.h"

#include <algorithm>

#include "tests/platform/win32/real_input.h"

namespace {

constexpr DWORD kWhite = 0xFFFFFFFF;
constexpr DWORD kRed = 0xFFFF0000;  // of RGB(255, 0, 0)

std::unique_ptr<lorv::Canvas> Memory(int width, int height) {
  auto canvas = std::make_unique<lorv::GdiCanvas>(std::make_unique<lorv::GdiMemory>(SIZE{width, height}));
  canvas->Fill({0, 0, width, height}, RGB(255, 255, 255));
  return canvas;
}

DWORD Dot(const lorv::Canvas& canvas, int x, int y) {
  return canvas.Pixels({x, y, x + 1, y + 1}).at(0);
}

// How many pixels of the surface differ from white.
long long Marked(const lorv::Canvas& canvas) {
  const SIZE size = canvas.Size();
  const auto pixels = canvas.Pixels({0, 0, size.cx, size.cy});
  return static_cast<long long>(pixels.size()) - std::count(pixels.begin(), pixels.end(), kWhite);
}

LOGFONT Face(const wchar_t* name, int height) {
  LOGFONT face = {};
  face.lfHeight = height;
  face.lfCharSet = DEFAULT_CHARSET;
  std::copy_n(name, std::wcslen(name), face.lfFaceName);
  return face;
}

}  // namespace

TEST(GdiCanvas, FillsWithoutTheRightAndBottomEdge) {
  const auto canvas = Memory(10, 10);
  canvas->Fill({2, 3, 5, 7}, RGB(255, 0, 0));
  EXPECT_EQ(Dot(*canvas, 2, 3), kRed);
  EXPECT_EQ(Dot(*canvas, 4, 6), kRed);
  EXPECT_EQ(Dot(*canvas, 5, 6), kWhite);
  EXPECT_EQ(Dot(*canvas, 4, 7), kWhite);
  EXPECT_EQ(Marked(*canvas), 12);
}

TEST(GdiCanvas, DrawsNothingForEmptyAndReversedRectangles) {
  const auto canvas = Memory(10, 10);
  const COLORREF red = RGB(255, 0, 0);
  for (const RECT& rect : {RECT{3, 3, 3, 8}, RECT{8, 8, 2, 2}}) {
    canvas->Fill(rect, red);
    canvas->Gradient(rect, red, red, true);
    canvas->Frame(rect, red, 1);
    canvas->Invert(rect);
    canvas->Copy(rect, *canvas, {0, 0});
    EXPECT_TRUE(canvas->Pixels(rect).empty());
  }
  EXPECT_EQ(Marked(*canvas), 0);
}

TEST(GdiCanvas, GradientRunsFromFirstToLast) {
  const auto canvas = Memory(64, 64);
  canvas->Gradient({0, 0, 64, 64}, RGB(0, 0, 0), RGB(252, 0, 0), true);
  EXPECT_EQ(Dot(*canvas, 5, 0), 0xFF000000);
  EXPECT_EQ(Dot(*canvas, 60, 0), 0xFF000000);
  const DWORD last = Dot(*canvas, 5, 63);
  EXPECT_GT(last, 0xFFF00000);
  EXPECT_LT(Dot(*canvas, 5, 20), Dot(*canvas, 5, 40));
  canvas->Gradient({0, 0, 64, 64}, RGB(0, 0, 0), RGB(252, 0, 0), false);
  EXPECT_EQ(Dot(*canvas, 63, 5), Dot(*canvas, 63, 60));
  EXPECT_LT(Dot(*canvas, 20, 5), Dot(*canvas, 40, 5));
}

TEST(GdiCanvas, FrameLiesWithinItsRectangle) {
  const auto canvas = Memory(12, 12);
  canvas->Frame({1, 1, 11, 9}, RGB(255, 0, 0), 2);
  EXPECT_EQ(Marked(*canvas), 10 * 8 - 6 * 4);
  EXPECT_EQ(Dot(*canvas, 1, 1), kRed);
  EXPECT_EQ(Dot(*canvas, 10, 8), kRed);
  EXPECT_EQ(Dot(*canvas, 3, 3), kWhite);
  const auto full = Memory(12, 12);
  full->Frame({0, 0, 4, 12}, RGB(255, 0, 0), 2);
  EXPECT_EQ(Marked(*full), 48);
}

TEST(GdiCanvas, LineLeavesItsLastPointOut) {
  const auto canvas = Memory(12, 12);
  lorv::Stroke stroke;
  stroke.colour = RGB(255, 0, 0);
  canvas->Line({2, 4}, {8, 4}, stroke);
  EXPECT_EQ(Marked(*canvas), 6);
  EXPECT_EQ(Dot(*canvas, 2, 4), kRed);
  EXPECT_EQ(Dot(*canvas, 8, 4), kWhite);
}

TEST(GdiCanvas, StrokesHaveWidthStyleAndNothing) {
  lorv::Stroke stroke;
  stroke.colour = RGB(255, 0, 0);
  stroke.width = 4;
  const auto wide = Memory(40, 20);
  wide->Line({5, 10}, {35, 10}, stroke);
  EXPECT_EQ(Marked(*wide), 120);
  stroke.width = 1;
  stroke.style = PS_DASH;
  const auto dashed = Memory(200, 4);
  dashed->Line({0, 2}, {200, 2}, stroke);
  EXPECT_GT(Marked(*dashed), 50);
  EXPECT_LT(Marked(*dashed), 190);
  stroke.style = PS_NULL;
  const auto none = Memory(40, 20);
  none->Line({5, 10}, {35, 10}, stroke);
  EXPECT_EQ(Marked(*none), 0);
}

TEST(GdiCanvas, PolygonHasEdgeOrInsideOrBoth) {
  const std::vector<POINT> square = {{2, 2}, {12, 2}, {12, 12}, {2, 12}};
  const COLORREF blue = RGB(0, 0, 255);
  lorv::Stroke edge;
  edge.colour = RGB(255, 0, 0);
  const auto both = Memory(20, 20);
  both->Polygon(square, &edge, &blue);
  EXPECT_EQ(Dot(*both, 2, 2), kRed);
  EXPECT_EQ(Dot(*both, 7, 7), 0xFF0000FF);
  const auto outline = Memory(20, 20);
  outline->Polygon(square, &edge, nullptr);
  EXPECT_EQ(Dot(*outline, 7, 7), kWhite);
  EXPECT_EQ(Marked(*outline), 40);
  const auto inside = Memory(20, 20);
  inside->Polygon(square, nullptr, &blue);
  EXPECT_EQ(Dot(*inside, 7, 7), 0xFF0000FF);
  const auto nothing = Memory(20, 20);
  nothing->Polygon({{5, 5}}, &edge, &blue);
  EXPECT_EQ(Marked(*nothing), 0);
}

TEST(GdiCanvas, InvertedTwiceIsAsBefore) {
  const auto canvas = Memory(10, 10);
  canvas->Fill({0, 0, 5, 10}, RGB(255, 0, 0));
  canvas->Invert({0, 0, 10, 10});
  EXPECT_EQ(Dot(*canvas, 0, 0), 0xFF00FFFF);
  EXPECT_EQ(Dot(*canvas, 9, 9), 0xFF000000);
  canvas->Invert({0, 0, 10, 10});
  EXPECT_EQ(Dot(*canvas, 0, 0), kRed);
  EXPECT_EQ(Dot(*canvas, 9, 9), kWhite);
}

TEST(GdiCanvas, ClipHoldsUntilItIsTakenAway) {
  const auto canvas = Memory(10, 10);
  const RECT clip = {2, 2, 4, 4};
  canvas->SetClip(&clip);
  canvas->Fill({0, 0, 10, 10}, RGB(255, 0, 0));
  EXPECT_EQ(Marked(*canvas), 4);
  const RECT other = {6, 6, 9, 9};
  canvas->SetClip(&other);
  canvas->Fill({0, 0, 10, 10}, RGB(255, 0, 0));
  EXPECT_EQ(Marked(*canvas), 13);
  canvas->SetClip(nullptr);
  canvas->Fill({0, 0, 10, 10}, RGB(255, 0, 0));
  EXPECT_EQ(Marked(*canvas), 100);
}

TEST(GdiCanvas, MeasuresOneLine) {
  const auto canvas = Memory(10, 10);
  canvas->SetFont(Face(L"DejaVu Sans", -16));
  const SIZE one = canvas->Extent(_T("m"));
  const SIZE two = canvas->Extent(_T("mm"));
  EXPECT_GT(one.cx, 0);
  EXPECT_EQ(two.cx, 2 * one.cx);
  EXPECT_EQ(one.cy, canvas->Metrics().tmHeight);
  EXPECT_EQ(canvas->Extent({}).cx, 0);
  EXPECT_EQ(canvas->Extent({}).cy, one.cy);
  canvas->SetFont(Face(L"DejaVu Sans", -32));
  EXPECT_GT(canvas->Extent(_T("m")).cx, one.cx * 3 / 2);
}

TEST(GdiCanvas, DrawsTextFromItsLeftTopCorner) {
  const auto canvas = Memory(120, 40);
  canvas->SetFont(Face(L"DejaVu Sans", -16));
  const SIZE size = canvas->Extent(_T("KL12"));
  canvas->Text({10, 5}, _T("KL12"), RGB(255, 0, 0));
  EXPECT_GT(Marked(*canvas), 20);
  canvas->Fill({10, 5, 10 + size.cx, 5 + size.cy}, RGB(255, 255, 255));
  EXPECT_EQ(Marked(*canvas), 0);
}

TEST(GdiCanvas, DrawsChineseInFacesThatLackIt) {
  const auto canvas = Memory(200, 60);
  for (const wchar_t* const name : {L"No Such Face At All", L"SimSun", L""}) {
    canvas->SetFont(Face(name, -24));
    canvas->Fill({0, 0, 200, 60}, RGB(255, 255, 255));
    canvas->Text({0, 0}, _T("墙"), 0);
    const auto wall = Marked(*canvas);
    canvas->Fill({0, 0, 200, 60}, RGB(255, 255, 255));
    canvas->Text({0, 0}, _T("一"), 0);
    EXPECT_GT(wall, Marked(*canvas) + 20)
        << CString(name).ToUtf8() << ": both are the box for a missing sign";
  }
}

TEST(GdiCanvas, LongAndBrokenTextsAreOrdinary) {
  const auto canvas = Memory(20, 20);
  const CString endless(_T('x'), 100000);
  canvas->Text({0, 0}, endless.View(), 0);
  EXPECT_GT(Marked(*canvas), 0);
  EXPECT_GT(canvas->Extent(endless.View()).cx, 100000);
  const TCHAR lone[] = {0xD800, 'a', 0xDC00, 0};
  canvas->Text({0, 0}, lone, 0);
  EXPECT_GT(canvas->Extent(lone).cx, 0);
}

TEST(GdiCanvas, CopiesFromOthersAndWithinItself) {
  const auto from = Memory(10, 10);
  from->Fill({0, 0, 5, 5}, RGB(255, 0, 0));
  const auto to = Memory(10, 10);
  to->Copy({4, 4, 10, 10}, *from, {2, 2});
  EXPECT_EQ(Marked(*to), 9);
  EXPECT_EQ(Dot(*to, 4, 4), kRed);
  from->Copy({1, 1, 6, 6}, *from, {0, 0});
  EXPECT_EQ(Dot(*from, 5, 5), kRed);
  EXPECT_EQ(Dot(*from, 0, 0), kRed);
}

TEST(GdiCanvas, ImageIsScaledAndLaidOver) {
  const std::vector<DWORD> pixels = {0xFFFF0000, 0x00000000, 0x800000FF, 0xFFFF0000};
  lorv::PixelImage image;
  image.width = 2;
  image.height = 2;
  image.pixels = pixels.data();
  const auto canvas = Memory(10, 10);
  canvas->Image(image, {0, 0, 8, 8});
  EXPECT_EQ(Dot(*canvas, 1, 1), kRed);
  EXPECT_EQ(Dot(*canvas, 6, 1), kWhite);
  const DWORD half = Dot(*canvas, 1, 6);
  EXPECT_NEAR(static_cast<int>(half >> 16 & 0xFF), 127, 2);
  EXPECT_EQ(half & 0xFF, 0xFFu);
  EXPECT_EQ(Dot(*canvas, 8, 8), kWhite);
  canvas->Image({}, {0, 0, 8, 8});
  image.width = -1;
  canvas->Image(image, {0, 0, 8, 8});
  EXPECT_EQ(Dot(*canvas, 1, 1), kRed);
}

TEST(GdiCanvas, PixelsOutsideAreZero) {
  const auto canvas = Memory(2, 2);
  const auto pixels = canvas->Pixels({-1, 0, 3, 1});
  EXPECT_EQ(pixels, (std::vector<DWORD>{0, kWhite, kWhite, 0}));
}

TEST(GdiCanvas, ASurfaceOfNoOrTooMuchSizeDrawsNothing) {
  for (const SIZE size : {SIZE{0, 0}, SIZE{-5, 7}, SIZE{0x7FFFFFFF, 0x7FFFFFFF}}) {
    lorv::GdiCanvas canvas(std::make_unique<lorv::GdiMemory>(size));
    canvas.Fill({0, 0, 5, 5}, 0);
    canvas.Text({0, 0}, _T("x"), 0);
    EXPECT_LE(canvas.Size().cx, 0);
    EXPECT_GT(canvas.Extent(_T("x")).cx, 0);
  }
}

// More often than the system has handles for drawing: one that is not given back would end the drawing.
TEST(GdiCanvas, GivesEveryHandleBack) {
  constexpr int kMoreThanAllHandles = 70000;
  const auto canvas = Memory(8, 8);
  lorv::Stroke wide;
  wide.width = 2;
  lorv::Stroke dashed;
  dashed.style = PS_DASH;
  const DWORD pixel = 0xFF00FF00;
  lorv::PixelImage image;
  image.width = image.height = 1;
  image.pixels = &pixel;
  for (int i = 0; i < kMoreThanAllHandles; ++i) {
    canvas->Line({0, 0}, {3, 3}, wide);
    canvas->Line({0, 0}, {3, 3}, dashed);
    if (i % 4 == 0) canvas->Image(image, {0, 0, 1, 1});
    if (i % 4 == 1) canvas->Pixels({0, 0, 1, 1});
    if (i % 4 == 2) Memory(2, 2)->SetFont(Face(L"DejaVu Sans", -8 - i % 200));
  }
  canvas->Fill({0, 0, 8, 8}, RGB(255, 255, 255));
  wide.colour = RGB(255, 0, 0);
  canvas->Line({0, 4}, {8, 4}, wide);
  EXPECT_EQ(Marked(*canvas), 16);
}
