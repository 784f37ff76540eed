#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <thread>

#include "image/image_tool_tip.h"
#include "platform/headless/desktop/headless_desktop.h"
#include "platform/headless/desktop/headless_waits.h"
#include "tests/image/desktops/drawn_images_suite.h"

// What every desktop owes to image tips: its window, its painting thread and the pixels that are seen. A
// desktop joins as to DrawnImages. The clock of the waits is turned by hand, so that frames come exactly when
// they are due; only the desktop's own queue takes real time.
namespace lorv::test {

template <class Source>
class ShownTip : public testing::Test {
 protected:
  ShownTip() : desktop_(Source::Make()), scope_(*desktop_), waits_(clockwork_), clock_scope_(waits_) {
    Put("three.gif", Square(8, {1, 2, 3}, 10));
    Put("quick.gif", Square(8, {2, 1, 3}, 2));
    Put("blue.gif", Square(4, {3}, -1));
    Put("clear.gif", MadeGif(8, 8, {{0, 0, 8, 8, std::string(64, '\1'), 1, 0, 1}}));
    top_.Create(nullptr, _T("top"), WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(100, 100, 500, 400), nullptr, 0);
    Settle();
  }

  // Frames of one colour each.
  static std::string Square(int side, const std::vector<char>& colours, int delay) {
    std::vector<MadeFrame> frames;
    for (const char colour : colours)
      frames.push_back({0, 0, side, side, std::string(static_cast<std::size_t>(side * side), colour), delay});
    return MadeGif(side, side, frames);
  }
  void Put(const std::string& name, const std::string& bytes) const {
    WriteBytes(folder_.Path() / name, bytes);
  }
  CString Path(const char* name) const { return PathText(folder_.Path() / name); }

  void Settle() const {
    for (int i = 0; i < 200 && desktop_->Pump(false); ++i) {
    }
  }
  // Dispatches messages until it is so; false when it does not become so in a good while.
  bool Until(const std::function<bool()>& is_so) const {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    for (Settle(); !is_so(); Settle()) {
      if (std::chrono::steady_clock::now() > end) return false;
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
  }
  void Show(TImageToolTipCtrl& tip) {
    if (tip.m_hWnd == nullptr) tip.Create(&top_);
    tip.ShowAt(CPoint(200, 200));
    Settle();
  }
  // Until the first frame stands and its delay runs.
  bool ShowUntilItWaits(TImageToolTipCtrl& tip) {
    Show(tip);
    return Until([&] { return waits_.Sleepers() == 1; });
  }
  // The pixel in the middle of the image's place.
  static DWORD Seen(const TImageToolTipCtrl& tip) {
    return PeerOf(tip.m_hWnd)->ClientCanvas()->Pixels({11, 9, 12, 10}).front();
  }

  static constexpr DWORD kRed = 0xFFFF0000;
  static constexpr DWORD kGreen = 0xFF00FF00;
  static constexpr DWORD kBlue = 0xFF0000FF;

  std::unique_ptr<Desktop> desktop_;
  ScopedDesktop scope_;
  HeadlessDesktop clockwork_;
  HeadlessWaits waits_;
  std::optional<ScopedWaitClock> clock_scope_;
  ScratchFolder folder_;
  CWnd top_;
};

TYPED_TEST_SUITE_P(ShownTip);

TYPED_TEST_P(ShownTip, AnimationOfThreeFramesPlaysInTwoHundredMilliseconds) {
  TImageToolTipCtrl tip(this->Path("three.gif"));
  ASSERT_TRUE(this->ShowUntilItWaits(tip));
  EXPECT_EQ(this->Seen(tip), this->kRed);
  this->waits_.Advance(99);
  EXPECT_EQ(this->waits_.Sleepers(), 1U);
  EXPECT_EQ(this->Seen(tip), this->kRed);
  this->waits_.Advance(1);
  ASSERT_TRUE(this->waits_.AwaitSleepers(1));
  EXPECT_EQ(this->Seen(tip), this->kGreen);
  this->waits_.Advance(100);
  ASSERT_TRUE(this->waits_.AwaitSleepers(1)) << "the last delay is waited for as well";
  EXPECT_EQ(this->Seen(tip), this->kBlue);
  this->waits_.Advance(100);
  this->Settle();
  EXPECT_EQ(this->waits_.Sleepers(), 0U);
  EXPECT_EQ(this->Seen(tip), this->kBlue) << "it stays at its last frame";
}

TYPED_TEST_P(ShownTip, StillImageStandsWithoutAnyWait) {
  TImageToolTipCtrl tip(this->Path("blue.gif"));
  this->Show(tip);
  EXPECT_TRUE(this->Until([&] { return this->Seen(tip) == this->kBlue; }));
  EXPECT_EQ(this->waits_.Sleepers(), 0U);
}

TYPED_TEST_P(ShownTip, TransparentPixelsShowTheTip) {
  TImageToolTipCtrl tip(this->Path("clear.gif"));
  ToolTipParameters parameters;
  parameters.fill = RGB(0x12, 0x34, 0x56);
  tip.SetParameters(parameters);
  this->Show(tip);
  EXPECT_TRUE(this->Until([&] { return this->Seen(tip) == 0xFF123456; }));
}

TYPED_TEST_P(ShownTip, PaintMessageWhileAPaintingRunsDoesNothing) {
  TImageToolTipCtrl tip(this->Path("three.gif"));
  ASSERT_TRUE(this->ShowUntilItWaits(tip));
  this->waits_.Advance(100);
  ASSERT_TRUE(this->waits_.AwaitSleepers(1));
  tip.Invalidate();
  this->Settle();
  EXPECT_EQ(this->waits_.Sleepers(), 1U);
  EXPECT_EQ(this->Seen(tip), this->kGreen) << "it goes on, and does not begin anew";
}

TYPED_TEST_P(ShownTip, PaintMessageBehindThePaintingPlaysAnew) {
  TImageToolTipCtrl tip(this->Path("three.gif"));
  ASSERT_TRUE(this->ShowUntilItWaits(tip));
  for (int frame = 0; frame < 3; ++frame) {
    ASSERT_TRUE(this->waits_.AwaitSleepers(1));
    this->waits_.Advance(100);
  }
  // The thread lets go of the lock behind its last wait: a paint message before that is none.
  EXPECT_TRUE(this->Until([&] {
    tip.Invalidate();
    this->Settle();
    return this->waits_.Sleepers() == 1;
  }));
  EXPECT_EQ(this->Seen(tip), this->kRed);
}

TYPED_TEST_P(ShownTip, ChangeEndsTheWaitAtOnceAndIsLost) {
  TImageToolTipCtrl tip(this->Path("three.gif"));
  ASSERT_TRUE(this->ShowUntilItWaits(tip));
  EXPECT_EQ(tip.SetImage(this->Path("blue.gif"), _T("")), 1);
  ASSERT_TRUE(this->waits_.AwaitSleepers(0)) << "the loop has ended without the clock";
  EXPECT_EQ(this->Seen(tip), this->kRed);
  // Once the thread is over, a change is taken, and shown by the next painting.
  EXPECT_TRUE(this->Until([&] {
    tip.SetImage(this->Path("blue.gif"), _T(""));
    tip.Invalidate();
    this->Settle();
    return this->Seen(tip) == this->kBlue;
  }));
  EXPECT_EQ(tip.GetIconSize(), CSize(4, 4));
}

TYPED_TEST_P(ShownTip, EndsWhileAFrameWaits) {
  {
    TImageToolTipCtrl tip(this->Path("three.gif"));
    ASSERT_TRUE(this->ShowUntilItWaits(tip));
    tip.DestroyWindow();
    this->Settle();
  }
  EXPECT_EQ(this->waits_.Sleepers(), 0U);
  {
    TImageToolTipCtrl tip(this->Path("three.gif"));
    ASSERT_TRUE(this->ShowUntilItWaits(tip));
  }
  EXPECT_EQ(this->waits_.Sleepers(), 0U) << "the object ends before its window";
}

TYPED_TEST_P(ShownTip, HiddenWhileAFrameWaitsItPlaysToItsEnd) {
  TImageToolTipCtrl tip(this->Path("three.gif"));
  ASSERT_TRUE(this->ShowUntilItWaits(tip));
  tip.Hide();
  this->Settle();
  for (int frame = 0; frame < 3; ++frame) {
    ASSERT_TRUE(this->waits_.AwaitSleepers(1));
    this->waits_.Advance(100);
  }
  EXPECT_TRUE(this->waits_.AwaitSleepers(0));
  EXPECT_FALSE(tip.IsWindowVisible());
}

TYPED_TEST_P(ShownTip, PlaysByTheClockOfTheSystem) {
  this->clock_scope_.reset();
  TImageToolTipCtrl tip(this->Path("quick.gif"));
  const auto start = std::chrono::steady_clock::now();
  this->Show(tip);
  EXPECT_TRUE(this->Until([&] { return this->Seen(tip) == this->kBlue; }));
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(2 * 20 - 1));
}

REGISTER_TYPED_TEST_SUITE_P(ShownTip, AnimationOfThreeFramesPlaysInTwoHundredMilliseconds,
                            StillImageStandsWithoutAnyWait, TransparentPixelsShowTheTip,
                            PaintMessageWhileAPaintingRunsDoesNothing, PaintMessageBehindThePaintingPlaysAnew,
                            ChangeEndsTheWaitAtOnceAndIsLost, EndsWhileAFrameWaits,
                            HiddenWhileAFrameWaitsItPlaysToItsEnd, PlaysByTheClockOfTheSystem);

}  // namespace lorv::test
