#include <deque>
#include <utility>

#include "platform/models/carried_fault.h"
#include "tests/conformance/behaviour_scene.h"
#include "tests/conformance/grid/bridge_scene.h"
#include "tests/conformance/grid/grid_scene.h"
#include "tests/conformance/kept_trace.h"
#include "tests/conformance/own_loops.h"
#include "tests/conformance/painting_script.h"
#include "tests/platform/win32/real_input.h"

namespace {

constexpr UINT kMenuHandle = 0x01E1;  // asks a menu's window for its menu

// The keys that lead from a menu's first opening to the command; empty: it is not there.
std::vector<int> KeysTo(HMENU menu, UINT command) {
  std::vector<int> keys;
  const int count = GetMenuItemCount(menu);
  for (int i = 0; i < count; ++i) {
    if ((GetMenuState(menu, static_cast<UINT>(i), MF_BYPOSITION) & MF_SEPARATOR) != 0 &&
        GetSubMenu(menu, i) == nullptr)
      continue;
    keys.push_back(VK_DOWN);
    if (GetMenuItemID(menu, i) == command) {
      keys.push_back(VK_RETURN);
      return keys;
    }
    const auto below =
        GetSubMenu(menu, i) == nullptr ? std::vector<int>() : KeysTo(GetSubMenu(menu, i), command);
    if (below.empty()) continue;
    // Opening a submenu stands on its first entry already.
    keys.push_back(VK_RIGHT);
    keys.insert(keys.end(), below.begin() + 1, below.end());
    return keys;
  }
  return {};
}

// What the system's own windows say otherwise.
const std::vector<lorv_test::Difference> kDifferences = {
    {"11 none", {"  edit selects 2 to 2"}},
    {"21 the limit stops letters", {"  edit full", "  edit update", "  edit change", "  edit = abc"}},
    {"25 undo", {"  edit update", "  edit change", "  edit change", "  edit = 梁C30"}},
    {"45 an edit stands inside", {"  choice given up", "  choice leave", "  typed focus", "  inner focus"}},
    {"49 the list follows a press", {"  typed given up", "  typed leave", "  list select", "  0"}},
    {"77 bars take room from the client area", {"  sheet size 73,80", "  narrower"}},
    // A range of the system's spans 31 bits at the most.
    {"106 a range of all numbers", {"  page 0"}},
    // What is to be committed is shown first.
    {"111 an input method in a window that draws itself",
     {"  begins", "  shows qiang", "  shows 墙", "  shows ", "  commits 墙", "  char 22681"}},
};

// F4 closes the list without the choice; the second click of two comes to the editor that the first one has
// opened, and is a first one there.
const std::vector<lorv_test::Difference> kGridDifferences = {
    {"120 Return is Down by its style, there too; F4 chooses", {"  = 2,2 editor [o1] 0-2"}},
    {"121 saving takes the choice over", {"  ends 2,2", "  2,2 [o1] kind 8", "  = 2,2"}},
    {"122 the button opens editor and list", {"  opens 2,2", "  button 2,2", "  = 2,2 editor [o1] 2-2"}},
    {"123 Esc closes the list and keeps the editor", {"  = 2,2 editor [o1] 2-2"}},
    {"124 Esc again closes that", {"  2,2 [o1] kind 8", "  = 2,2"}},
    {"164 a double click opens the editor",
     {"  ends 1,1", "  left 1,1", "  chosen 3,2", "  opens 3,2", "  = 3,2 editor [d2] 2-2"}},
};

// A window that is hidden as it ends keeps the focus of its children: the open editor is not asked.
const std::vector<lorv_test::Difference> kBridgeDifferences = {
    {"48 the grid ended by a release",
     {"  OnBeforeRowColChange", "  OnSelChangeGrid", "  OnRowColChange 0,0", "  OnSelChangeGrid",
      "  OnMouseDownTdbgrid 1,0", "  OnKeyDownTdbgrid 113,0", "  OnMouseUpGrid 0,0", "  = gone"}},
    {"81 the grid ends by a key", {"  OnKeyDownTdbgrid 40,0", "  = gone"}},
};

// The user at real windows. What has to be done while a menu or a dialog is up is done by a timer of the
// thread.
class Win32Behaviour : public RealWindows {
 protected:
  class Driver : public lorv_test::BehaviourDriver {
   public:
    explicit Driver(Win32Behaviour& test) : test_(test) {
      now_ = this;
      // Less than two clicks of the script lie apart, so that they are two.
      SetDoubleClickTime(50);
      timer_ = SetTimer(nullptr, 0, 60, &Tick);
    }
    ~Driver() override {
      SetDoubleClickTime(double_click_time_);
      KillTimer(nullptr, timer_);
      now_ = nullptr;
    }

    lorv::Desktop& Desktop() override { return test_.Desk(); }
    void Press(int key) override {
      SendKey(key, 0), SendKey(key, KEYEVENTF_KEYUP);
      Settle();
    }
    void PressWith(int modifier, int key) override {
      SendKey(modifier, 0);
      Press(key);
      SendKey(modifier, KEYEVENTF_KEYUP);
      Settle();
    }
    void Hold(int key, bool down) override {
      held_ = down ? key : 0;
      SendKey(key, down ? 0 : KEYEVENTF_KEYUP);
      Settle();
    }
    void Type(lorv::TextView text) override {
      for (const TCHAR unit : text) {
        const SHORT key = VkKeyScanW(unit);
        if ((key & 0x100) != 0) SendKey(VK_SHIFT, 0);
        SendKey(key & 0xFF, 0), SendKey(key & 0xFF, KEYEVENTF_KEYUP);
        if ((key & 0x100) != 0) SendKey(VK_SHIFT, KEYEVENTF_KEYUP);
        Settle();
      }
    }
    void MoveMouse(POINT screen) override {
      own_loops_.Wait([&] { test_.MoveMouse(screen); });
    }
    void MouseDown() override {
      // The screen beneath knows of real keys only and takes others back when the mouse comes in.
      if (held_ != 0 && GetAsyncKeyState(held_) >= 0) SendKey(held_, 0);
      own_loops_.Wait([&] { test_.Button(true); });
    }
    void MouseUp() override {
      own_loops_.Wait([&] { test_.Button(false); });
    }
    void RightClick(POINT screen) override {
      MoveMouse(screen);
      INPUT input[2] = {};
      input[0].type = input[1].type = INPUT_MOUSE;
      input[0].mi.dwFlags = MOUSEEVENTF_RIGHTDOWN;
      input[1].mi.dwFlags = MOUSEEVENTF_RIGHTUP;
      EXPECT_EQ(SendInput(2, input, sizeof(INPUT)), 2u);
      Settle();
    }
    void DoubleClick(POINT screen) override {
      MoveMouse(screen);
      INPUT input[4] = {};
      for (int i = 0; i < 4; ++i) {
        input[i].type = INPUT_MOUSE;
        input[i].mi.dwFlags = i % 2 == 0 ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_LEFTUP;
      }
      EXPECT_EQ(SendInput(4, input, sizeof(INPUT)), 4u);
      Settle();
    }
    void AnswerMenu(UINT command) override { answers_.push_back(command); }
    void WhenModal(std::function<void()> step) override { steps_.push_back(std::move(step)); }
    void WhenMenu(std::function<void()> step) override { menu_steps_.push_back(std::move(step)); }
    // All at once: the system's own loop follows the handle until the button is up.
    void DragHandle(HWND window) override {
      const CRect frame(Desktop().Find(window)->WindowRect());
      const int bar = Desktop().Metric(SM_CXVSCROLL);
      const LONG x = frame.right - bar / 2;
      test_.MoveMouse({x, frame.top + bar + 5});
      Queue(MOUSEEVENTF_LEFTDOWN, {0, 0});
      Queue(MOUSEEVENTF_MOVE, {x, frame.top + bar + 20});
      Queue(MOUSEEVENTF_MOVE, {x, frame.CenterPoint().y});
      Queue(MOUSEEVENTF_LEFTUP, {0, 0});
      Settle();
    }
    void Compose(const CString& shown) override {
      const HIMC input = ImmGetContext(GetFocus());
      const auto bytes = static_cast<DWORD>(shown.GetLength()) * sizeof(wchar_t);
      ImmSetCompositionStringW(input, SCS_SETSTR, const_cast<wchar_t*>(shown.GetString()),
                               static_cast<DWORD>(bytes), nullptr, 0);
      ImmReleaseContext(GetFocus(), input);
      Settle();
    }
    void Commit(const CString& text) override {
      Compose(text);
      const HIMC input = ImmGetContext(GetFocus());
      ImmNotifyIME(input, NI_COMPOSITIONSTR, CPS_COMPLETE, 0);
      ImmReleaseContext(GetFocus(), input);
      Settle();
    }
    HWND MakeHostEdit(HWND parent, const RECT& place) override {
      const CRect at(place);
      return CreateWindowExW(0, L"Edit", L"", WS_CHILD | WS_VISIBLE, at.left, at.top, at.Width(), at.Height(),
                             parent, reinterpret_cast<HMENU>(static_cast<UINT_PTR>(lorv_test::kExtra)),
                             nullptr, nullptr);
    }
    void Advance(DWORD milliseconds) override {
      own_loops_.Wait([&] { test_.Until([] { return false; }, milliseconds); });
    }
    void LeaveProgram() override {
      other_ = std::make_unique<OtherProgram>();
      own_loops_.Wait([&] { test_.Until([&] { return other_->IsInFront(); }); });
      Settle();
    }
    RECT CandidatesAt(HWND window) override {
      CANDIDATEFORM list = {};
      const HIMC input = ImmGetContext(window);
      ImmGetCandidateWindow(input, 0, &list);
      ImmReleaseContext(window, input);
      return list.rcArea;
    }
    void Settle() override {
      own_loops_.Wait([&] { test_.Settle(); });
    }

   private:
    // Places count in 65536ths of the screen; a move by pixels would be made longer the faster it is.
    static void Queue(DWORD what, POINT at) {
      const auto place = [](LONG pixel, int size) { return (pixel * 65536 + size - 1) / size; };
      INPUT input = {};
      input.type = INPUT_MOUSE;
      input.mi.dwFlags = what == MOUSEEVENTF_MOVE ? what | MOUSEEVENTF_ABSOLUTE : what;
      input.mi.dx = place(at.x, GetSystemMetrics(SM_CXSCREEN));
      input.mi.dy = place(at.y, GetSystemMetrics(SM_CYSCREEN));
      EXPECT_EQ(SendInput(1, &input, sizeof(input)), 1u);
    }

    static void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD) {
      if (now_ != nullptr) now_->Step();
    }

    void Step() {
      if (lorv::DesktopInForce().MenuUp()) return menu_steps_.empty() ? Answer() : RunNext(menu_steps_);
      if (own_loops_.InAnother() && !steps_.empty()) RunNext(steps_);
    }

    static void RunNext(std::deque<std::function<void()>>& steps) {
      const auto step = std::move(steps.front());
      steps.pop_front();
      step();
    }

    void Answer() {
      std::vector<int> keys;
      if (!answers_.empty()) {
        const auto menu = SendMessageW(FindWindowW(L"#32768", nullptr), kMenuHandle, 0, 0);
        keys = KeysTo(reinterpret_cast<HMENU>(menu), answers_.front());
        answers_.pop_front();
      }
      if (keys.empty()) keys = {VK_ESCAPE};
      for (const int key : keys) SendKey(key, 0), SendKey(key, KEYEVENTF_KEYUP);
    }

    static inline Driver* now_ = nullptr;
    Win32Behaviour& test_;
    UINT_PTR timer_;
    UINT double_click_time_ = GetDoubleClickTime();
    int held_ = 0;
    lorv_test::OwnLoops own_loops_;
    std::deque<UINT> answers_;
    std::deque<std::function<void()>> steps_;
    std::deque<std::function<void()>> menu_steps_;
    std::unique_ptr<OtherProgram> other_;
  };
};

}  // namespace

TEST_F(Win32Behaviour, TraceIsTheKeptOneButForTheListedDifferences) {
  top.Peer()->Destroy();
  Driver driver(*this);
  lorv_test::ExpectKeptTrace(lorv_test::PlayBehaviour(driver), kDifferences);
}

TEST_F(Win32Behaviour, GridTraceIsTheKeptOne) {
  top.Peer()->Destroy();
  Driver driver(*this);
  lorv_test::ExpectTrace(lorv_test::KeptGridTrace(), lorv_test::PlayGrid(driver), kGridDifferences);
}

TEST_F(Win32Behaviour, BridgeTraceIsTheKeptOne) {
  top.Peer()->Destroy();
  Driver driver(*this);
  lorv_test::ExpectTrace(lorv_test::KeptBridgeTrace(), lorv_test::PlayBridge(driver), kBridgeDifferences);
}

TEST_F(Win32Behaviour, PaintingTraceIsTheKeptOne) {
  top.Peer()->Destroy();
  Driver driver(*this);
  lorv_test::ExpectKeptPainting(driver);
}
