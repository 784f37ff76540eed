#include "framework/ports/window_map.h"

#include <gtest/gtest.h>

#include "framework/objects/exceptions.h"
#include "framework/ports/desktop_port.h"

namespace {

class Recorder : public lorv::MessageTarget {
 public:
  UINT last = 0;

  LRESULT HandleMessage(HWND /*window*/, UINT message, WPARAM w, LPARAM l) override {
    last = message;
    return static_cast<LRESULT>(w) + l;
  }
  bool TakeMessage(MSG& /*message*/) override { return false; }
};

const HWND kWindow = reinterpret_cast<HWND>(static_cast<UINT_PTR>(0x10044));

}  // namespace

TEST(WindowMap, HeaderExample) {
  Recorder target;
  lorv::MapWindow(kWindow, &target);
  EXPECT_EQ(lorv::DeliverMessage(kWindow, WM_CLOSE, 2, 3), 5);
  EXPECT_EQ(target.last, WM_CLOSE);
  lorv::UnmapWindow(kWindow);
}

TEST(WindowMap, FindsOnlyWhatIsThere) {
  Recorder target;
  EXPECT_EQ(lorv::MappedWindow(kWindow), nullptr);
  lorv::MapWindow(kWindow, &target);
  EXPECT_EQ(lorv::MappedWindow(kWindow), &target);
  lorv::UnmapWindow(kWindow);
  EXPECT_EQ(lorv::MappedWindow(kWindow), nullptr);
  lorv::UnmapWindow(kWindow);
}

TEST(WindowMap, TheNullHandleIsNeverThere) {
  Recorder target;
  lorv::MapWindow(nullptr, &target);
  EXPECT_EQ(lorv::MappedWindow(nullptr), nullptr);
}
