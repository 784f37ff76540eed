#include <atomic>
#include <thread>

#include "tests/platform/win32/real_input.h"

using lorv::WindowKind;

class NativePainting : public RealWindows {
 protected:
  Probe sheet;
  CRect dirty_;
  int paints_ = 0;

  void MakeSheet(COLORREF colour) {
    sheet.on = [this, colour](const Probe::Message& m, LRESULT&) {
      if (m.number != WM_PAINT) return false;
      ++paints_;
      RECT dirty;
      const auto canvas = sheet.Peer()->PaintCanvas(dirty);
      canvas->Fill({0, 0, 100, 80}, colour);
      dirty_ = dirty;
      return true;
    };
    MakeChild(sheet, WindowKind::Custom, 0, {10, 10, 110, 90}, 1);
    Settle();
  }
  DWORD Dot(int x, int y) { return sheet.Peer()->ClientCanvas()->Pixels({x, y, x + 1, y + 1}).at(0); }
};

TEST_F(NativePainting, PaintsWhatIsOutOfDateAndNothingElse) {
  MakeSheet(RGB(0, 0, 255));
  EXPECT_GE(paints_, 1);
  EXPECT_EQ(Dot(0, 0), 0xFF0000FFu);
  EXPECT_EQ(Dot(99, 79), 0xFF0000FFu);
  sheet.Peer()->ClientCanvas()->Fill({0, 0, 100, 80}, RGB(255, 0, 0));
  const RECT part = {20, 30, 40, 50};
  sheet.Peer()->Invalidate(&part);
  sheet.Peer()->Update();
  EXPECT_EQ(dirty_, CRect(part));
  EXPECT_EQ(Dot(20, 30), 0xFF0000FFu);
  EXPECT_EQ(Dot(39, 49), 0xFF0000FFu);
  EXPECT_EQ(Dot(19, 30), 0xFFFF0000u);
  EXPECT_EQ(Dot(40, 30), 0xFFFF0000u);
  EXPECT_EQ(Dot(39, 50), 0xFFFF0000u);
}

TEST_F(NativePainting, WhatThePainterLeavesOutStays) {
  MakeSheet(RGB(0, 0, 255));
  sheet.on = [this](const Probe::Message& m, LRESULT&) {
    if (m.number != WM_PAINT) return false;
    RECT dirty;
    sheet.Peer()->PaintCanvas(dirty)->Fill({0, 0, 10, 10}, RGB(0, 255, 0));
    return true;
  };
  sheet.Peer()->Invalidate(nullptr);
  sheet.Peer()->Update();
  EXPECT_EQ(Dot(5, 5), 0xFF00FF00u);
  EXPECT_EQ(Dot(50, 50), 0xFF0000FFu);
}

TEST_F(NativePainting, APaintedWindowIsNotAskedAgain) {
  MakeSheet(RGB(0, 0, 255));
  const int before = paints_;
  Settle();
  EXPECT_EQ(paints_, before);
  sheet.Peer()->Invalidate(nullptr);
  sheet.Peer()->Invalidate(nullptr);
  Settle();
  EXPECT_EQ(paints_, before + 1);
  sheet.Peer()->Update();
  EXPECT_EQ(paints_, before + 1);
}

TEST_F(NativePainting, DefaultConductMakesItValidToo) {
  MakeSheet(RGB(0, 0, 255));
  sheet.on = nullptr;
  sheet.seen.clear();
  sheet.Peer()->Invalidate(nullptr);
  Settle();
  EXPECT_EQ(sheet.Count(WM_PAINT), 1);
}

TEST_F(NativePainting, ClipCannotReachBeyondWhatIsOutOfDate) {
  MakeSheet(RGB(0, 0, 255));
  sheet.on = [this](const Probe::Message& m, LRESULT&) {
    if (m.number != WM_PAINT) return false;
    RECT dirty;
    const auto canvas = sheet.Peer()->PaintCanvas(dirty);
    const RECT clip = {0, 0, 50, 50};
    canvas->SetClip(&clip);
    canvas->Fill({0, 0, 100, 80}, RGB(255, 0, 0));
    return true;
  };
  const RECT part = {40, 40, 60, 60};
  sheet.Peer()->Invalidate(&part);
  sheet.Peer()->Update();
  EXPECT_EQ(Dot(45, 45), 0xFFFF0000u);
  EXPECT_EQ(Dot(55, 55), 0xFF0000FFu);
  EXPECT_EQ(Dot(30, 30), 0xFF0000FFu);
}

TEST_F(NativePainting, TheClientCanvasSparesChildren) {
  MakeSheet(RGB(0, 0, 255));
  top.Peer()->ClientCanvas()->Fill({0, 0, 400, 300}, RGB(255, 255, 0));
  EXPECT_EQ(Dot(50, 40), 0xFF0000FFu);
  EXPECT_EQ(top.Peer()->ClientCanvas()->Pixels({2, 2, 3, 3}).at(0), 0xFFFFFF00u);
}

TEST_F(NativePainting, ACanvasOutlivesItsWindowAndStillMeasures) {
  MakeSheet(RGB(0, 0, 255));
  RECT dirty;
  const auto client = sheet.Peer()->ClientCanvas();
  const auto paint = sheet.Peer()->PaintCanvas(dirty);
  const int width = client->Extent(_T("KL12")).cx;
  sheet.Peer()->Destroy();
  for (const auto& canvas : {client.get(), paint.get()}) {
    canvas->Fill({0, 0, 10, 10}, 0);
    canvas->Text({0, 0}, _T("KL12"), 0);
    canvas->SetFont(Desk().DialogFont());
    EXPECT_EQ(canvas->Extent(_T("KL12")).cx, width);
    EXPECT_EQ(canvas->Size().cx, 0);
  }
}

TEST_F(NativePainting, PicturesMadeInMemoryGoToTheWindow) {
  MakeSheet(RGB(0, 0, 255));
  const auto memory = Desk().MakeCanvas({30, 30});
  EXPECT_EQ(memory->Pixels({0, 0, 1, 1}).at(0), 0xFFFFFFFFu);
  memory->Fill({0, 0, 30, 30}, RGB(255, 0, 0));
  sheet.Peer()->ClientCanvas()->Copy({5, 5, 35, 35}, *memory, {0, 0});
  EXPECT_EQ(Dot(5, 5), 0xFFFF0000u);
  EXPECT_EQ(Dot(34, 34), 0xFFFF0000u);
  EXPECT_EQ(Dot(35, 35), 0xFF0000FFu);
  // And back, as scrolling does.
  const auto client = sheet.Peer()->ClientCanvas();
  client->Copy({50, 50, 60, 60}, *client, {5, 5});
  EXPECT_EQ(Dot(55, 55), 0xFFFF0000u);
}

TEST_F(NativePainting, ASecondThreadPaintsWhileTheFirstWorks) {
  MakeSheet(RGB(0, 0, 255));
  const auto peer = sheet.Peer();
  std::atomic<int> drawn{0};
  std::thread painter([&] {
    for (int i = 0; i < 200; ++i) {
      const auto canvas = peer->ClientCanvas();
      if (canvas->Size().cx == 100) ++drawn;
      canvas->Fill({0, 0, 100, 80}, RGB(255, 0, 0));
      canvas->Text({2, 2}, _T("墙"), 0);
    }
    peer->ClientCanvas()->Fill({0, 0, 100, 80}, RGB(0, 255, 0));
  });
  for (int i = 0; i < 50; ++i) {
    peer->Invalidate(nullptr);
    Settle(1);
  }
  painter.join();
  EXPECT_EQ(drawn, 200);
  peer->ClientCanvas()->Fill({0, 0, 1, 1}, RGB(0, 255, 0));
  EXPECT_EQ(Dot(0, 0), 0xFF00FF00u);
  const DWORD other = Dot(99, 79);
  EXPECT_TRUE(other == 0xFF00FF00u || other == 0xFF0000FFu) << std::hex << other;
}

TEST_F(NativePainting, AWindowMayGoWhileASecondThreadPaints) {
  for (int round = 0; round < 10; ++round) {
    Probe probe;
    MakeChild(probe, WindowKind::Custom, 0, {10, 10, 110, 90}, 2);
    const auto peer = probe.Peer();
    std::atomic<bool> started{false};
    std::thread painter([&] {
      while (peer->Exists()) {
        peer->ClientCanvas()->Fill({0, 0, 100, 80}, RGB(255, 0, 0));
        started = true;
      }
      EXPECT_TRUE(CRect(peer->ClientRect()).IsRectNull());
      EXPECT_EQ(peer->ClientCanvas()->Size().cx, 0);
    });
    Until([&] { return started.load(); });
    peer->Destroy();
    painter.join();
  }
}

TEST_F(NativePainting, GivesEveryHandleBack) {
  MakeSheet(RGB(0, 0, 255));
  for (int i = 0; i < 20000; ++i) {
    const RECT part = {0, 0, 2, 2};
    sheet.Peer()->Invalidate(&part);
    sheet.Peer()->Update();
  }
  EXPECT_GE(paints_, 20000);
  sheet.Peer()->ClientCanvas()->Fill({0, 0, 100, 80}, RGB(255, 0, 0));
  EXPECT_EQ(Dot(99, 79), 0xFFFF0000u);
  sheet.Peer()->Invalidate(nullptr);
  sheet.Peer()->Update();
  EXPECT_EQ(Dot(99, 79), 0xFF0000FFu);
}
