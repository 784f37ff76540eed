#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <unordered_map>
#include <vector>

#include "framework/drawing/geometry.h"
#include "framework/ports/desktop_port.h"
#include "platform/headless/window/headless_window.h"
#include "platform/models/window_tree.h"

namespace lorv {

// A desktop in memory, alike at each run: windows, controls, queue, clock, menus and clipboard.
//
// The user's part is played by the calls of the second half: what they do waits in the queue as a key or
// click
//   would, until the queue is worked (RunUntilIdle, or a modal dialog). Time passes by Advance only.
// Who waits with an empty queue gets the next step of WhenIdle; a modal dialog that no step answers is
// cancelled,
//   a menu that has no answer is left without a choice.
// Threads: as Desktop says.
//
//   HeadlessDesktop desktop;  ScopedDesktop scope(desktop);  ...  desktop.Type(_T("C30"));
//   desktop.RunUntilIdle();
class COMM_LORV_API HeadlessDesktop : public Kinship<HeadlessWindow> {
 public:
  HeadlessDesktop();
  ~HeadlessDesktop() override;

  // The user.
  void KeyDown(int key);
  void KeyUp(int key);
  void Press(int key);                    // down and up
  void PressWith(int modifier, int key);  // the modifier held
  void Type(TextView text);               // keys where there are keys, else characters of an input method
  void MoveMouse(POINT screen);
  void MouseDown(int button = VK_LBUTTON);
  void MouseUp(int button = VK_LBUTTON);
  void Click(POINT screen, int button = VK_LBUTTON);
  void DoubleClick(POINT screen);
  void Wheel(int delta);
  // A move of a window's bar: SB_LINEDOWN, SB_THUMBTRACK with a position, ...
  void ScrollBar(HWND window, int bar, int code, int position = 0);
  void AnswerMenu(UINT command) { menu_answers_.push_back(command); }
  void WhenIdle(std::function<void()> step) { steps_.push_back(std::move(step)); }
  void RunUntilIdle();
  void Advance(DWORD milliseconds);  // timers come due one by one, the queue is worked in between
  std::vector<Drawn> Seen(HWND window) const;
  const std::vector<MenuModel>& ShownMenus() const { return shown_menus_; }
  // The focus goes to another program's window.
  void LeaveProgram();
  void SetLayouts(std::vector<HKL> layouts);
  // Whether the steps of WhenIdle stand for somebody who sees the windows.
  void SetViewer(bool there) { viewer_ = there; }

  // For the windows of this desktop.
  void MoveFocus(HWND window);

  HWND Create(const WindowRequest& request) override;
  std::shared_ptr<WindowPeer> Find(HWND window) const override { return At(window); }
  std::vector<HWND> Windows() const override { return tops_; }
  bool Post(HWND window, UINT message, WPARAM w, LPARAM l) override;
  LRESULT Send(HWND window, UINT message, WPARAM w, LPARAM l) override;
  bool Pump(bool wait) override;
  void RunModal(HWND dialog) override;
  void EndModal(HWND dialog) override;
  HWND Focus() const override { return focus_; }
  void ClearFocus() override { MoveFocus(nullptr); }
  HWND Active() const override { return active_; }
  HWND Capture() const override { return capture_; }
  void SetCapture(HWND window) override;
  SHORT KeyState(int key) const override;
  POINT CursorPosition() const override {
    const std::lock_guard<std::mutex> lock(mutex_);
    return mouse_;
  }
  void SetCursorPosition(POINT at) override {
    const std::lock_guard<std::mutex> lock(mutex_);
    mouse_ = at;
  }
  void SetCursor(int shape) override { cursor_ = shape; }
  int Cursor() const override { return cursor_; }
  HWND WindowAt(POINT screen) const override { return HitTop(screen); }
  RECT WorkArea(POINT /*near_by*/) const override { return {0, 0, 1920, 1040}; }
  RECT Screen() const override { return {0, 0, 1920, 1080}; }
  COLORREF Colour(int index) const override;
  int Metric(int index) const override;
  LOGFONT DialogFont() const override;
  DWORD Ticks() const override;
  UINT Popup(const MenuModel& menu, POINT screen, UINT flags, HWND owner) override;
  bool MenuUp() const override { return false; }  // a menu is answered at once
  HKL Layout() const override { return layout_; }
  HKL ActivateLayout(HKL layout, UINT flags) override;
  std::vector<HKL> Layouts() const override { return layouts_; }
  bool HasClipboardText() const override { return has_clip_; }
  CString ClipboardText() const override { return clip_; }
  bool SetClipboardText(const CString& text) override;
  std::unique_ptr<Canvas> MakeCanvas(SIZE size) const override;
  bool HasViewer() const override { return viewer_; }
  UINT RegisterMessage(LPCTSTR name) override;

 private:
  friend class HeadlessWindow;
  struct Input {
    UINT message = 0;
    WPARAM w = 0;
    POINT at = {0, 0};
  };
  struct Timer {
    HWND window;
    UINT_PTR id;
    DWORD due;
    UINT period;
  };

  std::shared_ptr<HeadlessWindow> At(HWND window) const override;
  void ActivateTop(HWND top);
  void ActivateNext(HWND gone, HWND owner);
  void Forget(HWND window);
  void StartTimer(HWND window, UINT_PTR id, UINT period);
  void StopTimer(HWND window, UINT_PTR id);

  std::shared_ptr<HeadlessWindow> MakeWindow(const WindowRequest& request, HWND handle);
  void Adopt(const std::shared_ptr<HeadlessWindow>& window);
  bool StillThere(HWND window) const { return At(window) != nullptr; }
  HWND InnermostAt(HWND window, POINT screen) const;
  void Deliver(MSG message);
  bool PumpPosted();
  bool PumpInput();
  bool PumpPaint();
  bool PumpTimer();
  HWND FirstDirty(HWND window) const;
  void PlayKey(const Input& input);
  void PlayMouse(Input input);
  void LeaveFormer(HWND now);
  bool ComesToPress(HWND target, UINT message);
  void Translate(const MSG& message);
  bool Offers(const MenuModel& menu, UINT command) const;
  WPARAM HeldKeys() const;

  mutable std::mutex mutex_;  // over windows_, posted_, ticks_ and mouse_, which any thread asks for
  std::unordered_map<HWND, std::shared_ptr<HeadlessWindow>> windows_;
  std::deque<MSG> posted_;
  DWORD ticks_ = 0;

  std::deque<Input> input_;
  std::vector<Timer> timers_;
  std::deque<std::function<void()>> steps_;
  std::deque<UINT> menu_answers_;
  std::vector<MenuModel> shown_menus_;
  std::vector<HWND> modal_;
  std::map<int, bool> keys_;
  HWND focus_ = nullptr;
  HWND active_ = nullptr;
  HWND capture_ = nullptr;
  HWND hovered_ = nullptr;
  POINT mouse_ = {0, 0};
  int cursor_ = kCursorArrow;
  bool viewer_ = false;
  std::vector<HKL> layouts_;
  HKL layout_ = nullptr;
  bool has_clip_ = false;
  CString clip_;
  std::map<CString, UINT> registered_;
};

// The foreign handle that LeaveProgram leaves the focus with.
COMM_LORV_API HWND HeadlessForeignWindow();

}  // namespace lorv
