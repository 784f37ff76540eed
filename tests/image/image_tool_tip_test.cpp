#include "image/image_tool_tip.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "image/decode/raster.h"
#include "image/memory_context.h"
#include "platform/headless/desktop/headless_waits.h"
#include "platform/headless/services/headless_platform.h"
#include "tests/image/decode/made_images.h"
#include "tests/support/headless_desk.h"

namespace lorv::test {
namespace {

constexpr DWORD kRed = 0xFFFF0000;
constexpr DWORD kGreen = 0xFF00FF00;
constexpr DWORD kBlue = 0xFF0000FF;

std::string Square(int side, int number, int delay) {
  const auto count = static_cast<std::size_t>(side) * static_cast<std::size_t>(side);
  const std::string one(count, static_cast<char>(number));
  const std::string two(count, static_cast<char>(number % 3 + 1));
  const std::string three(count, static_cast<char>((number + 1) % 3 + 1));
  return MadeGif(
      side, side,
      {{0, 0, side, side, one, delay}, {0, 0, side, side, two, delay}, {0, 0, side, side, three, delay}});
}

class ImageToolTip : public lorv_test::Desk {
 protected:
  ImageToolTip() : platform_scope_(machine_.Ports()), waits_(desktop), clock_scope_(waits_) {
    Put(_T("C:\\three.gif"), Square(8, 1, 10));
    Put(_T("C:\\blue.gif"), MadeGif(4, 4, {{0, 0, 4, 4, std::string(16, '\3')}}));
  }
  void Put(LPCTSTR path, const std::string& bytes) {
    const auto file = machine_.files.Open(path, FileUse::kCreate, nullptr);
    ASSERT_NE(file, nullptr);
    ASSERT_TRUE(file->Write(bytes.data(), bytes.size()));
  }
  void Show(TImageToolTipCtrl& tip) {
    if (tip.m_hWnd == nullptr) tip.Create(&top);
    tip.ShowAt(CPoint(300, 300));
    Run();
  }
  // The pixel in the middle of the image.
  static DWORD Seen(const TImageToolTipCtrl& tip) {
    return PeerOf(tip.m_hWnd)->ClientCanvas()->Pixels({11, 9, 12, 10}).front();
  }

  HeadlessPlatform machine_;
  ScopedPlatform platform_scope_;
  HeadlessWaits waits_;
  ScopedWaitClock clock_scope_;
};

TEST_F(ImageToolTip, AnimationOfThreeFramesPlaysInTwoHundredMilliseconds) {
  TImageToolTipCtrl tip(_T("C:\\three.gif"));
  Show(tip);
  ASSERT_TRUE(waits_.AwaitSleepers(1));
  EXPECT_EQ(Seen(tip), kRed);
  waits_.Advance(99);
  EXPECT_EQ(waits_.Sleepers(), 1U);
  EXPECT_EQ(Seen(tip), kRed);
  waits_.Advance(1);
  ASSERT_TRUE(waits_.AwaitSleepers(1));
  EXPECT_EQ(Seen(tip), kGreen);
  waits_.Advance(100);
  ASSERT_TRUE(waits_.AwaitSleepers(1)) << "the last delay is waited for as well";
  EXPECT_EQ(Seen(tip), kBlue);
  waits_.Advance(100);
  EXPECT_EQ(waits_.Sleepers(), 0U);
  EXPECT_EQ(Seen(tip), kBlue) << "it stays at its last frame";
}

TEST_F(ImageToolTip, PaintMessageWhileAPaintingRunsDoesNothing) {
  TImageToolTipCtrl tip(_T("C:\\three.gif"));
  Show(tip);
  ASSERT_TRUE(waits_.AwaitSleepers(1));
  tip.Invalidate();
  Run();
  EXPECT_EQ(waits_.Sleepers(), 1U);
  EXPECT_EQ(Seen(tip), kRed);
}

TEST_F(ImageToolTip, ChangeEndsTheWaitAndIsLostWhileTheThreadHoldsTheLock) {
  TImageToolTipCtrl tip(_T("C:\\three.gif"));
  Show(tip);
  ASSERT_TRUE(waits_.AwaitSleepers(1));
  EXPECT_EQ(tip.SetImage(_T("C:\\blue.gif"), _T("")), 1);
  ASSERT_TRUE(waits_.AwaitSleepers(0)) << "the loop has ended without the clock";
}

TEST_F(ImageToolTip, ChangeBetweenPaintingsTakesImageAndText) {
  TImageToolTipCtrl tip(_T("C:\\three.gif"));
  tip.Create(&top);
  EXPECT_EQ(tip.SetImage(_T("C:\\blue.gif"), _T("梁 KL1")), 1);
  CString text;
  tip.GetWindowText(text);
  EXPECT_EQ(text, CString(_T("梁 KL1")));
  EXPECT_EQ(tip.GetDescription(), CString(_T("梁 KL1")));
  EXPECT_TRUE(tip.IsActive());
  EXPECT_EQ(tip.GetIconSize(), CSize(4, 4));
  tip.SetWindowText(_T("own"));
  EXPECT_EQ(tip.SetImage(_T("C:\\missing.gif"), _T("梁 KL1")), 0);
  tip.GetWindowText(text);
  EXPECT_EQ(text, CString(_T("own"))) << "the same description leaves the window alone";
}

TEST_F(ImageToolTip, SizeOfTheIconIsThatOfTheImageOrTheUsualOne) {
  Put(_T("C:\\wide.bmp"), MadeBmp(64, 48, 24, 0, "", std::string(48 * 192, 'x')));
  EXPECT_EQ(TImageToolTipCtrl(_T("C:\\wide.bmp")).GetIconSize(), CSize(64, 48));
  EXPECT_EQ(TImageToolTipCtrl(_T("C:\\missing.gif")).GetIconSize(), CSize(32, 32));
}

// Texts are 7 wide a unit and 16 high here; around them are the margin of 2 and the inner one of 6 and 4.
TEST_F(ImageToolTip, TipIsAsLargeAsWhatItShows) {
  TImageToolTipCtrl tip(_T("C:\\three.gif"));
  tip.Create(&top);
  tip.SetWindowText(_T("KL1"));
  Show(tip);
  CRect client;
  tip.GetClientRect(client);
  EXPECT_EQ(client.Size(), CSize(3 * 7 + 8 + 6 + 16, 16 + 12));
  TImageToolTipCtrl two(_T("C:\\missing.gif"));
  two.Create(&top);
  ToolTipParameters parameters;
  parameters.draws_icon = false;
  two.SetParameters(parameters);
  two.SetWindowText(_T("KL1"));
  two.SetDescription(_T("250x500"));
  Show(two);
  two.GetClientRect(client);
  EXPECT_EQ(client.Size(), CSize(7 * 7 + 16, 16 + 6 + 16 + 12));
}

TEST_F(ImageToolTip, StatusOfAChangeIsGivenBack) {
  TImageToolTipCtrl tip(_T("C:\\three.gif"));
  EXPECT_TRUE(tip.SetImageChangeStatus(true));
  EXPECT_FALSE(tip.SetImageChangeStatus(false));
}

TEST_F(ImageToolTip, EndsWhileAFrameWaits) {
  {
    TImageToolTipCtrl tip(_T("C:\\three.gif"));
    Show(tip);
    ASSERT_TRUE(waits_.AwaitSleepers(1));
    tip.DestroyWindow();
  }
  EXPECT_EQ(waits_.Sleepers(), 0U);
}

TEST_F(ImageToolTip, InactiveTipsAreNotShown) {
  TImageToolTipCtrl tip(_T("C:\\blue.gif"));
  tip.Create(&top);
  tip.Activate(FALSE);
  Show(tip);
  EXPECT_FALSE(tip.IsWindowVisible());
  tip.Activate(TRUE);
  Show(tip);
  EXPECT_TRUE(tip.IsWindowVisible());
}

std::string At(const CRect& rect) {
  return std::to_string(rect.left) + "," + std::to_string(rect.top) + " ";
}

// Notes what is drawn where. Its thread may be in these steps, so that it ends the painting itself.
class NotedTip : public TImageToolTipCtrl {
 public:
  using TImageToolTipCtrl::OnShow;
  using TImageToolTipCtrl::TImageToolTipCtrl;
  ~NotedTip() override { EndPainting(); }
  void OnFillBackground(CDC* dc, CRect rect, COLORREF& text, COLORREF& line) override {
    steps += "ground ";
    TImageToolTipCtrl::OnFillBackground(dc, rect, text, line);
    line = text = RGB(1, 2, 3);
  }
  void OnDrawBorder(CDC* dc, CRect rect, COLORREF line) override {
    EXPECT_EQ(line, RGB(1, 2, 3));
    steps += "border ";
    TImageToolTipCtrl::OnDrawBorder(dc, rect, line);
  }
  CSize OnDrawLabel(CDC* dc, CRect rect, BOOL only_size) override {
    if (only_size == 0) steps += "label " + At(rect);
    return TImageToolTipCtrl::OnDrawLabel(dc, rect, only_size);
  }
  CSize OnDrawDescription(CDC* dc, CRect rect, BOOL only_size) override {
    if (only_size == 0) steps += "description " + At(rect);
    return TImageToolTipCtrl::OnDrawDescription(dc, rect, only_size);
  }
  void OnDrawSeparator(CDC* dc, int left, int right, int y) override {
    steps += "line " + At(CRect(left, y, right, y));
    TImageToolTipCtrl::OnDrawSeparator(dc, left, right, y);
  }
  int DrawIcon(CDC* dc, CRect rect) override {
    steps += "icon " + At(rect);
    return TImageToolTipCtrl::DrawIcon(dc, rect);
  }

  std::string steps;
};

// The margin is 2, the inner one 6 across and 4 down, a line 16, the image 8.
TEST_F(ImageToolTip, StepsComeInTheirOrderAndTheImageLast) {
  struct Case {
    bool icon, description, separator;
    LPCTSTR text;
    const char* steps;
  };
  // The second ground lies below the frame that is drawn.
  const Case cases[] = {
      {true, true, true, _T("C30"), "ground border label 22,6 line 22,26 description 22,28 icon 8,6 ground "},
      {true, true, false, _T("C30"), "ground border label 22,6 description 22,28 icon 8,6 ground "},
      {true, true, true, _T(""), "ground border label 22,6 icon 8,6 ground "},
      {true, false, true, _T("C30"), "ground border label 22,6 icon 8,6 ground "},
  };
  for (const Case& each : cases) {
    NotedTip tip(_T("C:\\three.gif"));
    ToolTipParameters parameters;
    parameters.draws_icon = each.icon;
    parameters.draws_description = each.description;
    parameters.draws_separator = each.separator;
    tip.SetParameters(parameters);
    tip.Create(&top);
    tip.SetWindowText(_T("KL1"));
    tip.SetDescription(each.text);
    Show(tip);
    ASSERT_TRUE(waits_.AwaitSleepers(1));
    EXPECT_EQ(tip.steps, each.steps);
  }
}

TEST_F(ImageToolTip, FrameWithoutADelayIsTheLast) {
  const auto all = [](char number) { return std::string(16, number); };
  Put(_T("C:\\zero.gif"),
      MadeGif(4, 4, {{0, 0, 4, 4, all(1), 10}, {0, 0, 4, 4, all(2), 0}, {0, 0, 4, 4, all(3), 10}}));
  TImageToolTipCtrl tip(_T("C:\\zero.gif"));
  Show(tip);
  ASSERT_TRUE(waits_.AwaitSleepers(1));
  EXPECT_EQ(Seen(tip), kRed);
  waits_.Advance(100);
  for (int patience = 0; patience < 5000 && Seen(tip) == kRed; ++patience)
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  EXPECT_EQ(Seen(tip), kGreen);
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  EXPECT_EQ(waits_.Sleepers(), 0U);
  EXPECT_EQ(Seen(tip), kGreen);
}

TEST_F(ImageToolTip, ShowingWithoutAWindowOrAHeaderDoesNothing) {
  NotedTip tip(_T("C:\\three.gif"));
  NMHDR header = {};
  LRESULT result = 7;
  tip.OnShow(&header, &result);
  EXPECT_EQ(result, 7);
  tip.Create(&top);
  tip.SetWindowText(_T("KL1"));
  tip.OnShow(nullptr, &result);
  EXPECT_EQ(result, 7);
  CRect client;
  tip.GetClientRect(client);
  EXPECT_EQ(client.Width(), 0);
  tip.OnShow(&header, &result);
  EXPECT_EQ(result, 0);
  tip.GetClientRect(client);
  EXPECT_GT(client.Width(), 0);
}

// The image keeps its size; what of it lies beyond the tip is not drawn.
TEST_F(ImageToolTip, IsNoLargerThanTheScreen) {
  Put(_T("C:\\long.gif"), MadeGif(5000, 8, {{0, 0, 5000, 8, std::string(40'000, '\2')}}));
  TImageToolTipCtrl tip(_T("C:\\long.gif"));
  Show(tip);
  CRect client;
  tip.GetClientRect(client);
  EXPECT_EQ(client.Width(), CRect(desktop.WorkArea({0, 0})).Width());
  EXPECT_EQ(tip.GetIconSize(), CSize(5000, 8));
  // What is asked for while a painting runs is lost, so it is asked for again.
  for (int patience = 0; patience < 5000 && Seen(tip) != kGreen; ++patience) {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
    if (patience % 100 == 99) {
      tip.Invalidate(FALSE);
      tip.UpdateWindow();
    }
  }
  EXPECT_EQ(Seen(tip), kGreen);
}

TEST_F(ImageToolTip, BufferComesToTheTargetByFlushOnly) {
  const std::shared_ptr<Canvas> canvas = desktop.MakeCanvas({4, 4});
  CDC dc(canvas);
  {
    TMemDC buffer(&dc, CRect(1, 1, 3, 3));
    EXPECT_TRUE(buffer.IsOffScreen());
    buffer.FillSolidRect(CRect(1, 1, 2, 2), RGB(255, 0, 0));
    EXPECT_EQ(canvas->Pixels({1, 1, 2, 2}).front(), 0xFFFFFFFFU);
    buffer.Flush();
  }
  EXPECT_EQ(canvas->Pixels({1, 1, 3, 2}), (std::vector<DWORD>{kRed, 0xFFFFFFFF}));
  CPrintDC page(canvas);
  TMemDC direct(&page, CRect(1, 1, 3, 3));
  EXPECT_TRUE(direct.IsPrinting());
  direct.FillSolidRect(CRect(2, 2, 3, 3), RGB(0, 0, 255));
  EXPECT_EQ(canvas->Pixels({2, 2, 3, 3}).front(), kBlue) << "paper is drawn on directly";
  direct.Flush();
}

}  // namespace
}  // namespace lorv::test
