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
#include "platform/models/desktop/desktop_model.h"
#include "platform/models/transfer/drag_model.h"

namespace lorv {

// A deterministic desktop in memory: windows, controls, queue, clock, menus and clipboard.
//
// The user's part is played by the calls of the second half: what they do waits in the queue as a key or
//   click would, until messages are dispatched (RunUntilIdle, or a modal dialog). Time passes by Advance
//   only.
// A wait with an empty queue runs the next step of WhenIdle; a modal dialog that no step answers is
//   cancelled, a menu that has no answer is left without a choice.
// Threads: as Desktop says.
//
//   HeadlessDesktop desktop;  ScopedDesktop scope(desktop);  ...  desktop.Type(_T("C30"));
//   desktop.RunUntilIdle();
class COMM_LORV_API HeadlessDesktop : public DesktopModel {
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
  // A move of a window's bar: SB_LINEDOWN, SB_THUMBTRACK with a position of 32 bits, ...
  void ScrollBar(HWND window, int bar, int code, int position = 0);
  // An input method in the window that has the focus: what it shows, and what it commits at once.
  void ComposeText(const CString& text, int caret);
  void CommitText(const CString& text);
  // Something dragged in from another program: what MoveMouse and MouseUp do with it until the drop, or Esc.
  void DragFromOutside(const TransferData& data, DROPEFFECT allowed);
  // What became of the last drag.
  DROPEFFECT DragResult() const { return drag_result_; }
  // What a drop would do now.
  DROPEFFECT DragEffect() const { return drag_ == nullptr ? DROPEFFECT{DROPEFFECT_NONE} : drag_->Effect(); }
  bool Dragging() const { return drag_ != nullptr; }
  void AnswerMenu(UINT command) { menu_answers_.push_back(command); }
  // Done while the next menu is up; what it posts is dispatched before the menu is answered.
  void WhenMenu(std::function<void()> step) { menu_steps_.push_back(std::move(step)); }
  void WhenIdle(std::function<void()> step) { steps_.push_back(std::move(step)); }
  void RunUntilIdle();
  void Advance(DWORD milliseconds);  // timers come due one by one, messages are dispatched in between
  std::vector<Drawn> Seen(HWND window) const;
  const std::vector<MenuModel>& ShownMenus() const { return shown_menus_; }
  // The focus goes to another program's window.
  void LeaveProgram();
  void SetLayouts(std::vector<HKL> layouts);
  // What screen readers were notified of, the first first; the last kMaxReports of it.
  struct Report {
    HWND window;
    AccessEvent event;
    std::int64_t number;
    bool operator==(const Report&) const = default;
  };
  static constexpr std::size_t kMaxReports = 1024;
  std::vector<Report> TakeReports() { return std::exchange(reported_, {}); }
  // Whether the steps of WhenIdle stand for somebody who sees the windows.
  void SetViewer(bool there) { viewer_ = there; }
  // The screen becomes one of so many dots per inch: all windows are notified.
  void SetDpi(int dpi);

  HWND Focus() const override;
  RECT WorkArea(POINT /*near_by*/) const override { return {0, 0, 1920, 1040}; }
  RECT Screen() const override { return {0, 0, 1920, 1080}; }
  COLORREF Colour(int index) const override;
  LOGFONT DialogFont() const override;
  DWORD Ticks() const override;
  UINT Popup(const MenuModel& menu, POINT screen, UINT flags, HWND owner) override;
  bool MenuUp() const override { return menu_up_; }
  HKL Layout() const override { return layout_; }
  HKL ActivateLayout(HKL layout, UINT flags) override;
  std::vector<HKL> Layouts() const override { return layouts_; }
  bool HasClipboardText() const override { return clip_.HasText(); }
  CString ClipboardText() const override { return clip_.Text(); }
  bool SetClipboardText(const CString& text) override;
  bool SetClipboard(const TransferData& data) override;
  std::vector<BYTE> ClipboardBytes(const CString& format) const override { return clip_.Bytes(format); }
  DROPEFFECT Drag(const TransferData& content, DROPEFFECT allowed) override;
  void ReportAccessible(HWND window, AccessEvent event, std::int64_t number) override;
  std::unique_ptr<Canvas> MakeCanvas(SIZE size) const override;
  bool HasViewer() const override { return viewer_; }
  int Dpi() const override { return dpi_; }

  void Forget(HWND window) override;
  void ControlChanged(HWND window, AccessEvent event) override { ReportAccessible(window, event, 0); }

 protected:
  std::shared_ptr<WindowModel> MakeWindow(const WindowRequest& request, HWND handle) override;
  void Begin(WindowModel& window, const WindowRequest& request) override;
  void FocusChanged(HWND former) override;
  bool PumpOnce(bool wait) override;
  bool DispatchModal(HWND dialog) override;
  void Translate(const MSG& message) override;
  int BarWidth() const override { return 16; }
  int CaptionHeight() const override { return 24; }
  int DragDistance() const override { return 4; }

 private:
  friend class HeadlessWindow;
  // What the user did: a key or the mouse as a message, a bar, a composition.
  struct Input {
    UINT message = 0;
    WPARAM w = 0;
    POINT at = {0, 0};
    std::function<void()> other = nullptr;
  };
  struct Timer {
    HWND window;
    UINT_PTR id;
    DWORD due;
    UINT period;
  };

  void StartTimer(HWND window, UINT_PTR id, UINT period);
  bool StopTimer(HWND window, UINT_PTR id);

  bool PumpInput();
  bool PumpPaint();
  bool PumpTimer();
  void PlayKey(const Input& input);
  void PlayMouse(const Input& input);
  void PlayWheel(const Input& input);
  bool PlayDrag(const Input& input);
  bool ComesToPress(HWND target, UINT message);
  bool Offers(const MenuModel& menu, UINT command) const;
  void RunMenuSteps();

  mutable std::mutex mutex_;  // over ticks_, which any thread asks for
  DWORD ticks_ = 0;

  std::deque<Input> input_;
  std::vector<Timer> timers_;
  std::deque<std::function<void()>> steps_;
  std::deque<UINT> menu_answers_;
  std::deque<std::function<void()>> menu_steps_;
  bool menu_up_ = false;
  std::vector<MenuModel> shown_menus_;
  std::vector<HWND> cancelled_;  // modal dialogs without an answer
  bool elsewhere_ = false;
  bool viewer_ = false;
  static constexpr int kMaxPaintsInARow = 1000;
  int paints_in_a_row_ = 0;
  int dpi_ = kUsualDpi;
  std::vector<HKL> layouts_;
  HKL layout_ = nullptr;
  TransferData clip_;
  std::shared_ptr<DragModel> drag_;
  DROPEFFECT drag_result_ = DROPEFFECT_NONE;
  std::vector<Report> reported_;
};

// The foreign handle that LeaveProgram leaves the focus with.
COMM_LORV_API HWND HeadlessForeignWindow();

}  // namespace lorv
