#include "tests/conformance/random_behaviour.h"

#include <gtest/gtest.h>

#include "platform/headless/desktop/headless_desktop.h"
#include "tests/conformance/grid/random_grid.h"

namespace {

class HeadlessUser : public lorv_test::RandomUser {
 public:
  lorv::Desktop& Desktop() override { return desktop_; }
  void Press(int key) override { desktop_.Press(key); }
  void Type(lorv::TextView text) override { desktop_.Type(text); }
  void Click(POINT screen) override { desktop_.Click(screen); }
  void MoveMouse(POINT screen) override { desktop_.MoveMouse(screen); }
  void LeftButton(bool down) override { down ? desktop_.MouseDown() : desktop_.MouseUp(); }
  void RightButton(bool down) override {
    down ? desktop_.MouseDown(VK_RBUTTON) : desktop_.MouseUp(VK_RBUTTON);
  }
  void Wheel(int delta) override { desktop_.Wheel(delta); }
  void Advance(DWORD milliseconds) override { desktop_.Advance(milliseconds); }
  void Settle() override { desktop_.RunUntilIdle(); }

 private:
  lorv::HeadlessDesktop desktop_;
};

}  // namespace

TEST(RandomBehaviour, NothingThatIsGoneIsTouched) {
  lorv_test::PlayRandomScripts<HeadlessUser>(lorv_test::kRandomScripts, lorv_test::PlayRandomBehaviour);
}

TEST(RandomGrid, TableIsWhatThePlainOneSays) {
  lorv_test::PlayRandomScripts<HeadlessUser>(lorv_test::RandomGridScripts(1000), lorv_test::PlayRandomGrid);
}

TEST(RandomBridge, HandlersMayDoAnything) {
  lorv_test::PlayRandomScripts<HeadlessUser>(lorv_test::RandomGridScripts(1000), lorv_test::PlayRandomBridge);
}
