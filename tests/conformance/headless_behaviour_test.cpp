#include <gtest/gtest.h>

#include <algorithm>

#include "platform/headless/desktop/headless_desktop.h"
#include "tests/conformance/behaviour_scene.h"
#include "tests/conformance/grid/bridge_scene.h"
#include "tests/conformance/grid/grid_scene.h"
#include "tests/conformance/kept_trace.h"
#include "tests/conformance/painting_script.h"

namespace {

class HeadlessDriver : public lorv_test::BehaviourDriver {
 public:
  explicit HeadlessDriver(lorv::HeadlessDesktop& desktop) : desktop_(desktop) {}

  lorv::Desktop& Desktop() override { return desktop_; }
  void Press(int key) override { desktop_.Press(key), Settle(); }
  void PressWith(int modifier, int key) override { desktop_.PressWith(modifier, key), Settle(); }
  void Hold(int key, bool down) override { down ? desktop_.KeyDown(key) : desktop_.KeyUp(key), Settle(); }
  void Type(lorv::TextView text) override { desktop_.Type(text), Settle(); }
  void MoveMouse(POINT screen) override { desktop_.MoveMouse(screen), Settle(); }
  void MouseDown() override { desktop_.MouseDown(), Settle(); }
  void MouseUp() override { desktop_.MouseUp(), Settle(); }
  void DoubleClick(POINT screen) override { desktop_.DoubleClick(screen), Settle(); }
  void RightClick(POINT screen) override { desktop_.Click(screen, VK_RBUTTON), Settle(); }
  void AnswerMenu(UINT command) override { desktop_.AnswerMenu(command); }
  void WhenModal(std::function<void()> step) override { desktop_.WhenIdle(std::move(step)); }
  void WhenMenu(std::function<void()> step) override { desktop_.WhenMenu(std::move(step)); }
  void DragHandle(HWND window) override {
    desktop_.ScrollBar(window, SB_VERT, SB_THUMBTRACK, 500000);
    desktop_.ScrollBar(window, SB_VERT, SB_THUMBPOSITION, 500000);
    desktop_.ScrollBar(window, SB_VERT, SB_ENDSCROLL);
    Settle();
  }
  void Compose(const CString& shown) override { desktop_.ComposeText(shown, shown.GetLength()), Settle(); }
  void Commit(const CString& text) override { desktop_.CommitText(text), Settle(); }
  HWND MakeHostEdit(HWND parent, const RECT& place) override {
    return lorv_test::MakeBareEdit(desktop_, parent, place);
  }
  void Advance(DWORD milliseconds) override { desktop_.Advance(milliseconds); }
  void LeaveProgram() override { desktop_.LeaveProgram(); }
  RECT CandidatesAt(HWND window) override {
    return std::dynamic_pointer_cast<lorv::WindowModel>(desktop_.Find(window))->CompositionCaret();
  }
  void Settle() override { desktop_.RunUntilIdle(); }

 private:
  lorv::HeadlessDesktop& desktop_;
};

int StepCount(const std::vector<std::string>& trace) {
  return static_cast<int>(
      std::count_if(trace.begin(), trace.end(), [](const std::string& line) { return line[0] != ' '; }));
}

}  // namespace

TEST(Behaviour, HeadlessTraceIsTheKeptOne) {
  lorv::HeadlessDesktop desktop;
  const lorv::ScopedDesktop scope(desktop);
  HeadlessDriver driver(desktop);
  lorv_test::ExpectKeptTrace(lorv_test::PlayBehaviour(driver), {});
}

TEST(Painting, HeadlessTraceIsTheKeptOne) {
  lorv::HeadlessDesktop desktop;
  const lorv::ScopedDesktop scope(desktop);
  HeadlessDriver driver(desktop);
  lorv_test::ExpectKeptPainting(driver);
}

TEST(GridBehaviour, HeadlessTraceIsTheKeptOne) {
  lorv::HeadlessDesktop desktop;
  const lorv::ScopedDesktop scope(desktop);
  HeadlessDriver driver(desktop);
  lorv_test::ExpectTrace(lorv_test::KeptGridTrace(), lorv_test::PlayGrid(driver), {});
}

TEST(BridgeBehaviour, HeadlessTraceIsTheKeptOne) {
  lorv::HeadlessDesktop desktop;
  const lorv::ScopedDesktop scope(desktop);
  HeadlessDriver driver(desktop);
  lorv_test::ExpectTrace(lorv_test::KeptBridgeTrace(), lorv_test::PlayBridge(driver), {});
}

TEST(Behaviour, HasAtLeastEightySteps) {
  EXPECT_GE(StepCount(lorv_test::KeptTrace()), 80);
}

TEST(GridBehaviour, HasAtLeastThreeHundredSteps) {
  EXPECT_GE(StepCount(lorv_test::KeptGridTrace()), 300);
}

TEST(BridgeBehaviour, HasAtLeastAHundredAndThirtySteps) {
  EXPECT_GE(StepCount(lorv_test::KeptBridgeTrace()), 130);
}
