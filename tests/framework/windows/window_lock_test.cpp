#include "framework/windows/window_lock.h"

#include "framework/drawing/device_context.h"
#include "tests/support/headless_desk.h"

namespace {

// Counts its paintings.
class Canvas : public CWnd {
 public:
  int paintings = 0;

 protected:
  void OnPaint() {
    const CPaintDC dc(this);
    ++paintings;
  }
  DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Canvas, CWnd)
ON_WM_PAINT()
END_MESSAGE_MAP()

class WindowLock : public lorv_test::Desk {
 protected:
  WindowLock() {
    canvas.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(0, 0, 100, 50), &top, 7);
    Paint();
    canvas.paintings = 0;
  }

  void Paint() {
    canvas.Invalidate();
    Run();
  }

  Canvas canvas;
};

TEST_F(WindowLock, NothingIsPaintedWithinAndAllOfItOnceBehind) {
  {
    const OxWindowLock lock(&canvas);
    Paint();
    Paint();
    EXPECT_EQ(canvas.paintings, 0);
  }
  Run();
  EXPECT_EQ(canvas.paintings, 1);
}

TEST_F(WindowLock, InnerLockDoesNotEndTheOuterOne) {
  {
    const OxWindowLock outer(&canvas);
    { const OxWindowLock inner(&canvas); }
    Paint();
    EXPECT_EQ(canvas.paintings, 0);
  }
  Run();
  EXPECT_EQ(canvas.paintings, 1);
}

TEST_F(WindowLock, HiddenWindowStaysHidden) {
  canvas.ShowWindow(SW_HIDE);
  { const OxWindowLock lock(&canvas); }
  EXPECT_EQ(canvas.GetStyle() & WS_VISIBLE, 0U);
}

TEST_F(WindowLock, WindowMayGoWithin) {
  {
    const OxWindowLock lock(&canvas);
    canvas.DestroyWindow();
  }
  CWnd none;
  const OxWindowLock of_none(&none);
  const OxWindowLock of_null(nullptr);
  Run();
  EXPECT_EQ(canvas.paintings, 0);
}

}  // namespace
