#include "platform/headless/drawing/headless_canvas.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <string>

#include "tests/support/print.h"

namespace {

using lorv::Drawn;
using lorv::Stroke;
using Kind = lorv::Drawn::Kind;
using Row = std::vector<DWORD>;

constexpr DWORD kWhite = 0xFFFFFFFF;
constexpr DWORD kRed = 0xFFFF0000;
constexpr DWORD kBlue = 0xFF0000FF;
constexpr COLORREF kRedColour = RGB(255, 0, 0);
constexpr COLORREF kBlueColour = RGB(0, 0, 255);
constexpr int kFarAway = INT_MAX - 8;

// A canvas of 8 by 6 pixels, white at first.
class HeadlessCanvas : public testing::Test {
 protected:
  using Canvas = lorv::HeadlessCanvas;
  using Surface = lorv::HeadlessSurface;

  // The pixels of a row that are not white, as their places: "1235".
  std::string Marked(int y) const {
    std::string places;
    const Row row = surface->Pixels(CRect(0, y, 8, y + 1));
    for (std::size_t x = 0; x < row.size(); ++x)
      if (row[x] != kWhite) places += std::to_string(x);
    return places;
  }
  bool White() const { return surface->Pixels(whole) == Row(48, kWhite); }
  DWORD Dot(int x, int y) const { return surface->Pixels(CRect(x, y, x + 1, y + 1)).at(0); }
  // All that is listed, each as its kind's number and its bounds.
  std::vector<std::pair<Kind, CRect>> Listed() const {
    std::vector<std::pair<Kind, CRect>> all;
    for (const Drawn& drawn : surface->List()) all.emplace_back(drawn.kind, drawn.bounds);
    return all;
  }
  using List = std::vector<std::pair<Kind, CRect>>;

  const CRect whole{0, 0, 8, 6};
  std::shared_ptr<Surface> surface = std::make_shared<Surface>(SIZE{8, 6});
  Canvas canvas{surface, whole};
};

LOGFONT Weight(LONG weight) {
  LOGFONT font = {};
  font.lfWeight = weight;
  return font;
}

}  // namespace

TEST_F(HeadlessCanvas, SurfaceBeginsWhiteWithNothingListed) {
  EXPECT_TRUE(White());
  EXPECT_TRUE(surface->List().empty());
  EXPECT_EQ(CSize(canvas.Size()), CSize(8, 6));
}

TEST_F(HeadlessCanvas, SurfaceOfANewSizeIsWhiteAgain) {
  canvas.Fill(whole, kRedColour);
  surface->Resize({2, 1});
  EXPECT_EQ(CSize(canvas.Size()), CSize(2, 1));
  EXPECT_EQ(surface->Pixels(CRect(0, 0, 2, 1)), Row(2, kWhite));
  EXPECT_TRUE(surface->List().empty());
}

TEST_F(HeadlessCanvas, SurfaceOfANegativeSizeHasNoPixels) {
  surface->Resize({-3, 4});
  EXPECT_EQ(CSize(surface->Size()), CSize(0, 4));
  canvas.Fill(whole, kRedColour);
  EXPECT_EQ(Dot(0, 0), 0U);
  EXPECT_TRUE(surface->List().empty());
}

TEST_F(HeadlessCanvas, PixelsOutsideTheSurfaceAreZero) {
  EXPECT_EQ(canvas.Pixels({-1, 0, 2, 1}), (Row{0, kWhite, kWhite}));
  EXPECT_EQ(canvas.Pixels({7, 5, 9, 7}), (Row{kWhite, 0, 0, 0}));
  EXPECT_EQ(canvas.Pixels({0, -1, 1, 0}), Row{0});
}

TEST_F(HeadlessCanvas, PixelsOfAReversedRectangleAreNone) {
  EXPECT_TRUE(canvas.Pixels({4, 4, 2, 2}).empty());
}

TEST_F(HeadlessCanvas, PixelsComeRowByRow) {
  canvas.Fill({1, 0, 2, 1}, kRedColour);
  canvas.Fill({0, 1, 1, 2}, kBlueColour);
  EXPECT_EQ(canvas.Pixels({0, 0, 2, 2}), (Row{kWhite, kRed, kBlue, kWhite}));
}

TEST_F(HeadlessCanvas, PaintLeavesTheListAlone) {
  surface->Paint(CRect(6, 4, 99, 99), kRedColour);
  EXPECT_EQ(Marked(4), "67");
  EXPECT_EQ(Marked(3), "");
  EXPECT_TRUE(surface->List().empty());
}

TEST_F(HeadlessCanvas, ChangeReportsThePlacesInsideTheSurface) {
  List places;
  surface->Change(CRect(-5, 4, 1, 9),
                  [&](DWORD&, int x, int y) { places.emplace_back(Kind::Fill, CRect(x, y, x, y)); });
  EXPECT_EQ(places, (List{{Kind::Fill, CRect(0, 4, 0, 4)}, {Kind::Fill, CRect(0, 5, 0, 5)}}));
}

TEST_F(HeadlessCanvas, FillsWithoutTheRightAndBottomEdge) {
  canvas.Fill({1, 2, 3, 4}, kRedColour);
  EXPECT_EQ(Marked(1), "");
  EXPECT_EQ(Marked(2), "12");
  EXPECT_EQ(Marked(3), "12");
  EXPECT_EQ(Marked(4), "");
  EXPECT_EQ(Dot(1, 2), kRed);
}

TEST_F(HeadlessCanvas, EmptyAndReversedRectanglesDrawNothing) {
  const DWORD pixel = kRed;
  for (const RECT& rect : {RECT{3, 1, 3, 5}, RECT{6, 5, 1, 1}, RECT{1, 5, 6, 1}}) {
    canvas.Fill(rect, kRedColour);
    canvas.Gradient(rect, kRedColour, kBlueColour, true);
    canvas.Frame(rect, kRedColour, 1);
    canvas.Invert(rect);
    canvas.Image({1, 1, &pixel}, rect);
  }
  EXPECT_TRUE(White());
  EXPECT_TRUE(surface->List().empty());
}

TEST_F(HeadlessCanvas, OutsideTheSurfaceNothingIsListed) {
  canvas.Fill({-9, -9, 0, 0}, kRedColour);
  canvas.Fill({8, 0, 20, 6}, kRedColour);
  EXPECT_TRUE(surface->List().empty());
  EXPECT_TRUE(White());
}

TEST_F(HeadlessCanvas, BoundsAreCutToTheSurface) {
  canvas.Fill({-9, 3, 99, 99}, kBlueColour);
  ASSERT_EQ(Listed(), (List{{Kind::Fill, CRect(0, 3, 8, 6)}}));
  EXPECT_EQ(surface->List()[0].colour, kBlueColour);
}

TEST_F(HeadlessCanvas, AFillTakesWhatItCoversFromTheList) {
  canvas.Text({0, 0}, _T("a"), 0);
  canvas.Frame({2, 2, 5, 5}, 0, 1);
  canvas.Fill({2, 2, 5, 5}, kRedColour);
  EXPECT_EQ(Listed(), (List{{Kind::Text, CRect(0, 0, 7, 6)}, {Kind::Fill, CRect(2, 2, 5, 5)}}));
}

TEST_F(HeadlessCanvas, AFillLeavesWhatItCoversInPart) {
  canvas.Frame({2, 2, 5, 5}, 0, 1);
  canvas.Fill({2, 2, 5, 4}, kRedColour);
  EXPECT_EQ(Listed(), (List{{Kind::Frame, CRect(2, 2, 5, 5)}, {Kind::Fill, CRect(2, 2, 5, 4)}}));
}

TEST_F(HeadlessCanvas, AGradientCoversAsAFillDoes) {
  canvas.Text({0, 0}, _T("a"), 0);
  canvas.Gradient(whole, kRedColour, kBlueColour, true);
  EXPECT_EQ(Listed(), (List{{Kind::Gradient, whole}}));
}

TEST_F(HeadlessCanvas, GradientGoesFromColourToColourAcross) {
  canvas.Gradient({0, 0, 3, 1}, RGB(0, 0, 0), RGB(200, 100, 50), false);
  EXPECT_EQ(canvas.Pixels({0, 0, 3, 1}), (Row{0xFF000000, 0xFF643219, 0xFFC86432}));
}

TEST_F(HeadlessCanvas, GradientGoesDownAndFromLightToDark) {
  canvas.Gradient({0, 0, 1, 3}, RGB(200, 100, 50), RGB(0, 0, 0), true);
  EXPECT_EQ(canvas.Pixels({0, 0, 1, 3}), (Row{0xFFC86432, 0xFF643219, 0xFF000000}));
}

TEST_F(HeadlessCanvas, GradientOfOnePixelHasTheFirstColour) {
  canvas.Gradient({0, 0, 1, 1}, kRedColour, kBlueColour, false);
  EXPECT_EQ(Dot(0, 0), kRed);
}

TEST_F(HeadlessCanvas, GradientKeepsItsWayUnderAClip) {
  const RECT clip = {2, 0, 3, 1};
  canvas.SetClip(&clip);
  canvas.Gradient({0, 0, 3, 1}, RGB(0, 0, 0), RGB(200, 100, 50), false);
  EXPECT_EQ(canvas.Pixels({0, 0, 3, 1}), (Row{kWhite, kWhite, 0xFFC86432}));
}

TEST_F(HeadlessCanvas, GradientFarWiderThanTheSurfaceShowsItsEnd) {
  canvas.Gradient({-kFarAway, 0, 8, 1}, kBlueColour, kRedColour, false);
  EXPECT_EQ(Dot(7, 0), kRed);
}

TEST_F(HeadlessCanvas, FramesStayInside) {
  canvas.Frame({1, 1, 6, 5}, kRedColour, 1);
  EXPECT_EQ(Marked(0), "");
  EXPECT_EQ(Marked(1), "12345");
  EXPECT_EQ(Marked(2), "15");
  EXPECT_EQ(Marked(4), "12345");
  EXPECT_EQ(Marked(5), "");
}

TEST_F(HeadlessCanvas, FramesFillWhenTheirSidesMeet) {
  canvas.Frame({1, 0, 6, 5}, kRedColour, 2);
  EXPECT_EQ(Marked(2), "1245");
  canvas.Frame({1, 0, 6, 5}, kRedColour, 3);
  EXPECT_EQ(Marked(2), "12345");
  canvas.Fill(whole, RGB(255, 255, 255));
  canvas.Frame({1, 0, 6, 5}, kRedColour, 99);
  EXPECT_EQ(Marked(2), "12345");
}

TEST_F(HeadlessCanvas, FramesWithoutWidthDrawNothing) {
  canvas.Frame({1, 1, 6, 5}, kRedColour, 0);
  canvas.Frame({1, 1, 6, 5}, kRedColour, -2);
  EXPECT_TRUE(White());
  EXPECT_TRUE(surface->List().empty());
}

TEST_F(HeadlessCanvas, LinesLackTheirLastPoint) {
  canvas.Line({1, 0}, {4, 0}, {kRedColour, 1, PS_SOLID});
  EXPECT_EQ(Marked(0), "123");
  canvas.Line({4, 1}, {1, 1}, {kRedColour, 1, PS_SOLID});
  EXPECT_EQ(Marked(1), "234");
}

TEST_F(HeadlessCanvas, LinesAreListedByThePixelsTheyHave) {
  canvas.Line({4, 5}, {1, 5}, {kRedColour, 1, PS_SOLID});
  canvas.Line({7, 3}, {7, 0}, {kRedColour, 1, PS_SOLID});
  EXPECT_EQ(Listed(), (List{{Kind::Line, CRect(2, 5, 5, 6)}, {Kind::Line, CRect(7, 1, 8, 4)}}));
}

TEST_F(HeadlessCanvas, ALineToItsOwnStartIsNothing) {
  canvas.Line({3, 3}, {3, 3}, {kRedColour, 2, PS_SOLID});
  EXPECT_TRUE(White());
  EXPECT_TRUE(surface->List().empty());
}

TEST_F(HeadlessCanvas, SlantedLinesTakeOnePixelAStepOfTheLongerWay) {
  canvas.Line({0, 0}, {6, 3}, {kRedColour, 1, PS_SOLID});
  EXPECT_EQ(Marked(0), "01");
  EXPECT_EQ(Marked(1), "23");
  EXPECT_EQ(Marked(2), "45");
  EXPECT_EQ(Marked(3), "");
}

TEST_F(HeadlessCanvas, WideLinesGrowRightAndDown) {
  canvas.Line({1, 1}, {1, 4}, {kRedColour, 2, PS_SOLID});
  EXPECT_EQ(Marked(0), "");
  EXPECT_EQ(Marked(1), "12");
  EXPECT_EQ(Marked(4), "12");
  EXPECT_EQ(Marked(5), "");
  EXPECT_EQ(Listed(), (List{{Kind::Line, CRect(1, 1, 3, 5)}}));
}

TEST_F(HeadlessCanvas, DottedLinesLeaveEverySecondPixel) {
  canvas.Line({0, 1}, {5, 1}, {kRedColour, 1, PS_DOT});
  EXPECT_EQ(Marked(1), "024");
}

TEST_F(HeadlessCanvas, LinesOfNoStyleOrWidthAreNotDrawn) {
  canvas.Line({0, 1}, {5, 1}, {kRedColour, 1, PS_NULL});
  canvas.Line({0, 1}, {5, 1}, {kRedColour, 0, PS_SOLID});
  EXPECT_TRUE(White());
  EXPECT_TRUE(surface->List().empty());
}

TEST_F(HeadlessCanvas, LinesFromFarAwayCrossTheSurface) {
  canvas.Line({-kFarAway, 2}, {kFarAway, 2}, {kRedColour, 1, PS_SOLID});
  EXPECT_EQ(Marked(2), "01234567");
  canvas.Line({3, kFarAway}, {3, -kFarAway}, {kRedColour, 1, PS_SOLID});
  EXPECT_EQ(Marked(0), "3");
  EXPECT_EQ(Marked(5), "3");
  canvas.Line({-100000, -100000}, {100000, 100000}, {kBlueColour, 1, PS_SOLID});
  EXPECT_EQ(Dot(1, 1), kBlue);
}

TEST_F(HeadlessCanvas, LinesFromFarAwayKeepTheirDots) {
  canvas.Line({-100001, 2}, {100000, 2}, {kRedColour, 1, PS_DOT});
  EXPECT_EQ(Marked(2), "1357");
}

TEST_F(HeadlessCanvas, WideLinesFromOutsideReachIn) {
  canvas.Line({0, -2}, {8, -2}, {kRedColour, 3, PS_SOLID});
  canvas.Line({-2, 3}, {-2, 5}, {kRedColour, 3, PS_SOLID});
  EXPECT_EQ(Marked(0), "01234567");
  EXPECT_EQ(Marked(1), "");
  EXPECT_EQ(Marked(3), "0");
}

TEST_F(HeadlessCanvas, PolygonsFillTheirInside) {
  const COLORREF inside = kRedColour;
  canvas.Polygon({{1, 1}, {5, 1}, {5, 4}, {1, 4}}, nullptr, &inside);
  EXPECT_EQ(Marked(0), "");
  EXPECT_EQ(Marked(1), "1234");
  EXPECT_EQ(Marked(3), "1234");
  EXPECT_EQ(Marked(4), "");
  EXPECT_EQ(Listed(), (List{{Kind::Polygon, CRect(1, 1, 6, 5)}}));
}

TEST_F(HeadlessCanvas, PolygonsThatCrossThemselvesFillByTheEvenOddRule) {
  const COLORREF inside = kRedColour;
  canvas.Polygon({{0, 0}, {7, 0}, {7, 5}, {2, 5}, {2, 2}, {5, 2}, {5, 5}, {0, 5}}, nullptr, &inside);
  EXPECT_EQ(Marked(1), "0123456");
  EXPECT_EQ(Marked(3), "0156");
}

TEST_F(HeadlessCanvas, PolygonsCloseTheirEdge) {
  const Stroke edge = {kBlueColour, 1, PS_SOLID};
  canvas.Polygon({{1, 1}, {5, 1}, {5, 4}, {1, 4}}, &edge, nullptr);
  EXPECT_EQ(Marked(1), "12345");
  EXPECT_EQ(Marked(2), "15");
  EXPECT_EQ(Marked(4), "12345");
  EXPECT_EQ(Listed().size(), 4U);
}

TEST_F(HeadlessCanvas, PolygonsOfTwoCornersHaveAnEdgeThereAndBack) {
  const Stroke edge = {kBlueColour, 1, PS_SOLID};
  canvas.Polygon({{1, 2}, {4, 2}}, &edge, nullptr);
  EXPECT_EQ(Marked(2), "1234");
}

TEST_F(HeadlessCanvas, PolygonsOfFewerThanTwoCornersAreNothing) {
  const Stroke edge = {kBlueColour, 1, PS_SOLID};
  const COLORREF inside = kRedColour;
  canvas.Polygon({}, &edge, &inside);
  canvas.Polygon({{2, 2}}, &edge, &inside);
  EXPECT_TRUE(White());
  EXPECT_TRUE(surface->List().empty());
}

TEST_F(HeadlessCanvas, PolygonsAroundEverythingFillTheSurface) {
  const COLORREF inside = kRedColour;
  const POINT low = {-kFarAway, -kFarAway};
  const POINT high = {kFarAway, kFarAway};
  canvas.Polygon({low, {high.x, low.y}, high, {low.x, high.y}}, nullptr, &inside);
  EXPECT_EQ(surface->Pixels(whole), Row(48, kRed));
}

TEST_F(HeadlessCanvas, InvertedTwiceIsAsBefore) {
  canvas.Fill({0, 0, 1, 1}, kRedColour);
  canvas.Invert({0, 0, 2, 1});
  EXPECT_EQ(canvas.Pixels({0, 0, 2, 1}), (Row{0xFF00FFFF, 0xFF000000}));
  EXPECT_EQ(Listed().size(), 2U);
  canvas.Invert({0, 0, 2, 1});
  EXPECT_EQ(canvas.Pixels({0, 0, 2, 1}), (Row{kRed, kWhite}));
  EXPECT_EQ(Listed(), (List{{Kind::Fill, CRect(0, 0, 1, 1)}}));
}

TEST_F(HeadlessCanvas, InvertsOfOtherPlacesStayListed) {
  canvas.Invert({0, 0, 2, 1});
  canvas.Invert({0, 0, 3, 1});
  EXPECT_EQ(Listed().size(), 2U);
  EXPECT_EQ(Marked(0), "2");
}

TEST_F(HeadlessCanvas, TextIsListedWithoutPixels) {
  canvas.Text({-3, 2}, _T("梁"), kBlueColour);
  ASSERT_EQ(Listed(), (List{{Kind::Text, CRect(0, 2, 8, 6)}}));
  const Drawn text = surface->List()[0];
  EXPECT_EQ(text.text, CString(_T("梁")));
  EXPECT_EQ(text.colour, kBlueColour);
  EXPECT_FALSE(text.bold);
  EXPECT_TRUE(White());
}

TEST_F(HeadlessCanvas, EmptyTextIsNotListed) {
  canvas.Text({0, 0}, _T(""), 0);
  EXPECT_TRUE(surface->List().empty());
}

TEST_F(HeadlessCanvas, ExtentCountsNarrowAndWideUnits) {
  EXPECT_EQ(CSize(canvas.Extent(_T(""))), CSize(0, 16));
  EXPECT_EQ(canvas.Extent(_T("ab")).cx, 14);
  EXPECT_EQ(canvas.Extent(_T("\u2E7F")).cx, 7);
  EXPECT_EQ(canvas.Extent(_T("\u2E80")).cx, 14);
  EXPECT_EQ(canvas.Extent(_T("\uE000")).cx, 14);
}

TEST_F(HeadlessCanvas, ExtentOfAPairIsThatOfOneWideLetter) {
  const TCHAR pair[] = {0xD840, 0xDC00};
  EXPECT_EQ(canvas.Extent({pair, 2}).cx, 14);
  EXPECT_EQ(canvas.Extent({pair, 1}).cx, 7);
  EXPECT_EQ(canvas.Extent({pair + 1, 1}).cx, 7);
}

TEST_F(HeadlessCanvas, FontsAreBoldFromTheirWeightOn) {
  canvas.SetFont(Weight(FW_BOLD - 1));
  EXPECT_EQ(canvas.Metrics().tmWeight, FW_NORMAL);
  canvas.SetFont(Weight(FW_BOLD));
  EXPECT_EQ(canvas.Metrics().tmWeight, FW_BOLD);
  canvas.SetFont(Weight(FW_BOLD + 1));
  EXPECT_EQ(canvas.Metrics().tmWeight, FW_BOLD);
}

TEST_F(HeadlessCanvas, TextRemembersTheFontOfItsTime) {
  canvas.SetFont(Weight(FW_BOLD));
  canvas.Text({0, 0}, _T("a"), 0);
  canvas.SetFont(Weight(FW_NORMAL));
  canvas.Text({0, 0}, _T("b"), 0);
  ASSERT_EQ(surface->List().size(), 2U);
  EXPECT_TRUE(surface->List()[0].bold);
  EXPECT_FALSE(surface->List()[1].bold);
}

TEST_F(HeadlessCanvas, MetricsAgreeWithTheExtent) {
  const TEXTMETRIC metrics = canvas.Metrics();
  EXPECT_EQ(metrics.tmHeight, canvas.Extent(_T("x")).cy);
  EXPECT_EQ(metrics.tmAscent + metrics.tmDescent, metrics.tmHeight);
  EXPECT_EQ(metrics.tmAveCharWidth, canvas.Extent(_T("x")).cx);
  EXPECT_EQ(metrics.tmMaxCharWidth, canvas.Extent(_T("墙")).cx);
}

TEST_F(HeadlessCanvas, ClipHoldsForEveryCall) {
  const RECT clip = {3, 2, 5, 4};
  const COLORREF inside = kRedColour;
  const DWORD pixel = kRed;
  canvas.SetClip(&clip);
  canvas.Fill(whole, kRedColour);
  canvas.Gradient(whole, kRedColour, kBlueColour, true);
  canvas.Frame(whole, kRedColour, 3);
  canvas.Line({0, 0}, {8, 6}, {kRedColour, 3, PS_SOLID});
  canvas.Polygon({{0, 0}, {8, 0}, {8, 6}, {0, 6}}, nullptr, &inside);
  canvas.Image({1, 1, &pixel}, whole);
  canvas.Invert(whole);
  canvas.Text({0, 0}, _T("a"), 0);
  for (const int row : {0, 1, 4, 5}) EXPECT_EQ(Marked(row), "");
  for (const int row : {2, 3}) EXPECT_EQ(Marked(row), "34");
  for (const auto& [kind, bounds] : Listed()) EXPECT_EQ(bounds & CRect(clip), bounds);
  EXPECT_EQ(Listed().back(), (List::value_type{Kind::Text, CRect(3, 2, 5, 4)}));
}

TEST_F(HeadlessCanvas, AClipReplacesTheFormerOne) {
  const RECT left = {0, 0, 2, 6};
  const RECT right = {6, 0, 8, 6};
  canvas.SetClip(&left);
  canvas.SetClip(&right);
  canvas.Fill(whole, kRedColour);
  EXPECT_EQ(Marked(0), "67");
}

TEST_F(HeadlessCanvas, AnEmptyOrReversedClipLetsNothingThrough) {
  for (const RECT& clip : {RECT{2, 2, 2, 2}, RECT{6, 5, 1, 1}, RECT{20, 20, 30, 30}}) {
    canvas.SetClip(&clip);
    canvas.Fill(whole, kRedColour);
    canvas.Text({0, 0}, _T("a"), 0);
  }
  EXPECT_TRUE(White());
  EXPECT_TRUE(surface->List().empty());
}

TEST_F(HeadlessCanvas, AClipCannotReachOverTheLimit) {
  Canvas part(surface, CRect(2, 0, 5, 6));
  part.SetClip(&static_cast<const RECT&>(whole));
  part.Fill(whole, kRedColour);
  EXPECT_EQ(Marked(0), "234");
}

TEST_F(HeadlessCanvas, ALiftedClipLeavesTheLimit) {
  Canvas part(surface, CRect(2, 0, 5, 6));
  const RECT clip = {0, 0, 3, 6};
  part.SetClip(&clip);
  part.Fill({0, 0, 8, 1}, kRedColour);
  part.SetClip(nullptr);
  part.Fill({0, 1, 8, 2}, kRedColour);
  EXPECT_EQ(Marked(0), "2");
  EXPECT_EQ(Marked(1), "234");
}

TEST_F(HeadlessCanvas, CopiesPixelsAndTheList) {
  const auto other = std::make_shared<Surface>(SIZE{4, 4});
  Canvas source(other, CRect(0, 0, 4, 4));
  source.Fill({0, 0, 2, 2}, kRedColour);
  source.Text({3, 0}, _T("x"), kBlueColour);
  canvas.Copy({5, 1, 7, 3}, source, {1, 1});
  EXPECT_EQ(Marked(1), "5");
  EXPECT_EQ(Marked(2), "");
  EXPECT_EQ(Listed(), (List{{Kind::Fill, CRect(5, 1, 6, 2)}}));
}

TEST_F(HeadlessCanvas, CopiesTakeWhatTheyCoverFromTheList) {
  const auto other = std::make_shared<Surface>(SIZE{4, 4});
  Canvas source(other, CRect(0, 0, 4, 4));
  canvas.Frame({1, 1, 3, 3}, kRedColour, 1);
  canvas.Frame({3, 1, 6, 3}, kRedColour, 1);
  canvas.Copy({0, 0, 4, 4}, source, {0, 0});
  EXPECT_EQ(Listed(), (List{{Kind::Frame, CRect(3, 1, 6, 3)}}));
  EXPECT_EQ(Marked(1), "45");
}

TEST_F(HeadlessCanvas, CopiesOfItselfMayOverlap) {
  canvas.Fill({0, 0, 2, 1}, kRedColour);
  canvas.Copy({1, 0, 3, 1}, canvas, {0, 0});
  EXPECT_EQ(Marked(0), "012");
  EXPECT_EQ(Listed(), (List{{Kind::Fill, CRect(0, 0, 2, 1)}, {Kind::Fill, CRect(1, 0, 3, 1)}}));
}

TEST_F(HeadlessCanvas, CopiesUnderAClipKeepTheirPlace) {
  canvas.Fill({0, 0, 1, 1}, kRedColour);
  canvas.Fill({1, 0, 2, 1}, kBlueColour);
  const RECT clip = {5, 0, 8, 6};
  canvas.SetClip(&clip);
  canvas.Copy({4, 0, 6, 1}, canvas, {0, 0});
  EXPECT_EQ(canvas.Pixels({4, 0, 6, 1}), (Row{kWhite, kBlue}));
}

TEST_F(HeadlessCanvas, CopiesLeaveWhatLiesOutsideTheSource) {
  const auto other = std::make_shared<Surface>(SIZE{2, 1});
  Canvas source(other, CRect(0, 0, 2, 1));
  source.Fill({0, 0, 2, 1}, kBlueColour);
  canvas.Fill(whole, kRedColour);
  canvas.Copy({0, 0, 8, 2}, source, {-1, 0});
  EXPECT_EQ(canvas.Pixels({0, 0, 5, 1}), (Row{kRed, kBlue, kBlue, kRed, kRed}));
  EXPECT_EQ(canvas.Pixels({0, 1, 8, 2}), Row(8, kRed));
}

TEST_F(HeadlessCanvas, CopiesToOrFromOutsideAreNothing) {
  canvas.Fill({0, 0, 2, 1}, kRedColour);
  canvas.Copy({20, 0, 22, 1}, canvas, {0, 0});
  canvas.Copy({4, 0, 6, 1}, canvas, {40, 0});
  canvas.Copy({6, 1, 4, 0}, canvas, {0, 0});
  EXPECT_EQ(Marked(0), "01");
  EXPECT_EQ(Listed().size(), 1U);
}

TEST_F(HeadlessCanvas, ImagesAreLaidOverByTheirAlpha) {
  canvas.Fill({0, 0, 3, 1}, kRedColour);
  const DWORD pixels[] = {0x000000FF, 0x800000FF, 0xFF0000FF};
  canvas.Image({3, 1, pixels}, {0, 0, 3, 1});
  EXPECT_EQ(canvas.Pixels({0, 0, 3, 1}), (Row{kRed, 0xFF7F0080, kBlue}));
  EXPECT_EQ(Listed().back(), (List::value_type{Kind::Image, CRect(0, 0, 3, 1)}));
}

TEST_F(HeadlessCanvas, ImagesAreScaledByRepeatingAndLeavingOut) {
  const DWORD pixels[] = {kRed, kBlue};
  canvas.Image({2, 1, pixels}, {0, 0, 4, 2});
  EXPECT_EQ(canvas.Pixels({0, 0, 4, 2}), (Row{kRed, kRed, kBlue, kBlue, kRed, kRed, kBlue, kBlue}));
  canvas.Image({1, 2, pixels}, {7, 0, 8, 1});
  EXPECT_EQ(Dot(7, 0), kRed);
}

TEST_F(HeadlessCanvas, ImagesOfNoPixelsAreNothing) {
  const DWORD pixel = kRed;
  canvas.Image({0, 1, &pixel}, whole);
  canvas.Image({1, 0, &pixel}, whole);
  canvas.Image({-1, -1, &pixel}, whole);
  canvas.Image({1, 1, nullptr}, whole);
  EXPECT_TRUE(White());
  EXPECT_TRUE(surface->List().empty());
}

TEST_F(HeadlessCanvas, ImagesFarLargerThanTheSurfaceAreReadInside) {
  const Row pixels = {kRed, kRed, kBlue, kBlue};
  canvas.Image({4, 1, pixels.data()}, {-kFarAway, 0, kFarAway, 1});
  EXPECT_EQ(canvas.Pixels({0, 0, 2, 1}), (Row{kBlue, kBlue}));
  canvas.Image({1, 4, pixels.data()}, {0, -kFarAway, 1, 6});
  EXPECT_EQ(Dot(0, 5), kBlue);
}

TEST_F(HeadlessCanvas, DrawsOnAfterTheSurfaceShrank) {
  surface->Resize({3, 2});
  canvas.Fill(whole, kRedColour);
  canvas.Line({0, 0}, {8, 0}, {kBlueColour, 1, PS_SOLID});
  EXPECT_EQ(surface->Pixels(CRect(0, 0, 3, 2)), (Row{kBlue, kBlue, kBlue, kRed, kRed, kRed}));
}
