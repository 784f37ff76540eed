#include "tools/lorv-desk/images/image_window.h"

#include <chrono>
#include <thread>

#include "platform/headless/desktop/headless_waits.h"
#include "platform/headless/services/headless_platform.h"
#include "tests/image/decode/made_images.h"
#include "tests/support/headless_desk.h"
#include "tools/lorv/command/verb.h"

namespace lorv::tool {
namespace {

constexpr DWORD kRed = 0xFFFF0000;
constexpr DWORD kGreen = 0xFF00FF00;
constexpr DWORD kBlue = 0xFF0000FF;

class ImageWindows : public lorv_test::Desk {
 protected:
  ImageWindows() : platform_scope_(machine_.Ports()), waits_(desktop), clock_scope_(waits_) {
    std::vector<test::MadeFrame> frames;
    for (const char colour : {'\1', '\2', '\3'}) frames.push_back({0, 0, 8, 8, std::string(64, colour), 10});
    machine_.files.Put(_T("C:\\three.gif"), test::MadeGif(8, 8, frames));
    machine_.files.Put(_T("C:\\many.gif"),
                       test::MadeGif(8, 8, std::vector<test::MadeFrame>(20, frames.front())));
    machine_.files.Put(_T("C:\\none.gif"), "GIF89a and nothing more");
  }
  void Open(const std::string& path) {
    window = std::make_unique<ImageWindow>(path);
    ASSERT_TRUE(window->Open());
    window->ShowWindow(SW_SHOW);
    window->SetFocus();
    Run();
  }
  void Click(CPoint client) {
    desktop.Click(On(*window, client.x, client.y));
    Run();
  }
  DWORD Seen(CPoint client) const {
    return PeerOf(window->m_hWnd)
        ->ClientCanvas()
        ->Pixels({client.x, client.y, client.x + 1, client.y + 1})
        .front();
  }

  HeadlessPlatform machine_;
  ScopedPlatform platform_scope_;
  HeadlessWaits waits_;
  ScopedWaitClock clock_scope_;
  std::unique_ptr<ImageWindow> window;
};

TEST_F(ImageWindows, ShowTheFramesByTheirNumbers) {
  Open("C:\\three.gif");
  ASSERT_EQ(window->FrameCount(), 3);
  const DWORD colours[] = {kRed, kGreen, kBlue};
  for (int frame = 0; frame < 3; ++frame) {
    EXPECT_EQ(Seen(window->PlaceOf(frame).CenterPoint()), colours[frame]);
    window->ChooseFrame(frame);
    Run();
    EXPECT_EQ(Seen(window->LargePlace().CenterPoint()), colours[frame]);
  }
  EXPECT_TRUE(window->PlaceOf(3).IsRectEmpty());
  EXPECT_TRUE(window->PlaceOf(-1).IsRectEmpty());
}

TEST_F(ImageWindows, AFrameIsChosenByMouseAndKeys) {
  Open("C:\\three.gif");
  Click(window->PlaceOf(2).CenterPoint());
  EXPECT_EQ(window->Frame(), 2);
  desktop.Press(VK_RIGHT);
  Run();
  EXPECT_EQ(window->Frame(), 2);
  desktop.Press(VK_LEFT);
  desktop.Press(VK_LEFT);
  desktop.Press(VK_LEFT);
  Run();
  EXPECT_EQ(window->Frame(), 0);
  Click(CPoint(2, 2));
  EXPECT_EQ(window->Frame(), 0);
}

TEST_F(ImageWindows, SmallFramesEndWhereTheirRoomDoes) {
  Open("C:\\many.gif");
  EXPECT_EQ(window->FrameCount(), 20);
  EXPECT_FALSE(window->PlaceOf(7).IsRectEmpty());
  EXPECT_TRUE(window->PlaceOf(8).IsRectEmpty());
  CRect client;
  window->GetClientRect(&client);
  EXPECT_LT(window->PlaceOf(7).bottom, client.bottom);
  EXPECT_LT(window->PlaceOf(7).right, client.right);
}

TEST_F(ImageWindows, TheTipPlaysOnceAtEachClick) {
  Open("C:\\three.gif");
  for (int round = 1; round <= 2; ++round) {
    Click(window->LargePlace().CenterPoint());
    for (int frame = 0; frame < 3; ++frame) {
      ASSERT_TRUE(waits_.AwaitSleepers(1)) << round << " " << frame;
      EXPECT_EQ(window->Tip().Paintings(), round - 1);
      waits_.Advance(100);
    }
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (window->Tip().Paintings() < round && std::chrono::steady_clock::now() < end)
      std::this_thread::yield();
    EXPECT_EQ(window->Tip().Paintings(), round);
  }
  EXPECT_TRUE(window->Tip().IsWindowVisible());
}

// The thread is in what the tip of this window overrides, and waits by a clock that stands still.
TEST_F(ImageWindows, EndWhileTheTipPlays) {
  for (int round = 0; round < 20; ++round) {
    Open("C:\\three.gif");
    window->ShowTip();
    Run();
    if (round % 2 == 0) {
      ASSERT_TRUE(waits_.AwaitSleepers(1));
    }
    window.reset();
    EXPECT_EQ(waits_.Sleepers(), 0U);
  }
}

TEST_F(ImageWindows, WhatIsNoImageIsReported) {
  EXPECT_THROW(ImageWindow("C:\\none.gif"), BadInput);
  EXPECT_THROW(ImageWindow("C:\\missing.gif"), BadInput);
}

}  // namespace
}  // namespace lorv::tool
