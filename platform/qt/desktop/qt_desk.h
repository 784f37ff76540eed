#pragma once

#include <QObject>
#include <QPointer>
#include <array>
#include <atomic>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <unordered_map>
#include <vector>

#include "framework/drawing/geometry.h"
#include "framework/ports/desktop_port.h"
#include "platform/models/window_tree.h"
#include "platform/qt/services/qt_services.h"
#include "platform/qt/window/qt_window.h"

namespace lorv {

// Where errands for the thread of the windows are left, by any thread; closed when the desktop ends.
class QtMailbox {
 public:
  QtMailbox();
  ~QtMailbox();
  QtMailbox(const QtMailbox&) = delete;
  QtMailbox& operator=(const QtMailbox&) = delete;
  // Runs it in that thread when the events that are there are done; `last`: when all others are.
  void Leave(std::function<void()> errand, bool last = false);
  // In that thread: the next errand of the two sorts.
  void RunNext(bool last);
  void Close();

  // As long as one lives, errands wait. In the thread of the windows.
  class Holding {
   public:
    explicit Holding(QtMailbox& mailbox) : mailbox_(mailbox) { mailbox_.Hold(1); }
    Holding(const Holding&) = delete;
    Holding& operator=(const Holding&) = delete;
    ~Holding() { mailbox_.Hold(-1); }

   private:
    QtMailbox& mailbox_;
  };

 private:
  void Hold(int more);
  void Call(bool last);

  std::mutex mutex_;                                          // over all that follows
  std::array<std::deque<std::function<void()>>, 2> errands_;  // what an event carried would not be guarded
  int held_ = 0;
  QObject* receiver_;
};

// The desktop over Qt. Focus, activation and capture are its own record, in the platform's order of messages;
// the widgets follow it, and what the user changes at the widgets changes it.
class QtDesk : public Kinship<QtWindow>, public QtServices {
 public:
  QtDesk();
  ~QtDesk() override;

  HWND Create(const WindowRequest& request) override;
  std::shared_ptr<WindowPeer> Find(HWND window) const override { return At(window); }
  std::vector<HWND> Windows() const override { return tops_; }
  bool Post(HWND window, UINT message, WPARAM w, LPARAM l) override;
  LRESULT Send(HWND window, UINT message, WPARAM w, LPARAM l) override;
  bool Pump(bool wait) override;
  void RunModal(HWND dialog) override;
  void EndModal(HWND dialog) override;
  HWND Focus() const override;
  void ClearFocus() override { MoveFocus(nullptr); }
  HWND Active() const override { return active_; }
  HWND Capture() const override { return capture_; }
  void SetCapture(HWND window) override;
  SHORT KeyState(int key) const override;
  POINT CursorPosition() const override { return mouse_; }
  void SetCursorPosition(POINT at) override;
  void SetCursor(int shape) override;
  int Cursor() const override { return cursor_; }
  HWND WindowAt(POINT screen) const override { return HitTop(screen); }
  RECT WorkArea(POINT near_by) const override;
  RECT Screen() const override;
  COLORREF Colour(int index) const override;
  int Metric(int index) const override;
  LOGFONT DialogFont() const override;
  DWORD Ticks() const override;
  UINT Popup(const MenuModel& menu, POINT screen, UINT flags, HWND owner) override;
  bool MenuUp() const override { return menu_up_; }
  HKL Layout() const override;
  HKL ActivateLayout(HKL layout, UINT flags) override;
  std::vector<HKL> Layouts() const override { return {Layout()}; }
  bool HasClipboardText() const override;
  CString ClipboardText() const override;
  bool SetClipboardText(const CString& text) override;
  std::unique_ptr<Canvas> MakeCanvas(SIZE size) const override;
  UINT RegisterMessage(LPCTSTR name) override;
  std::unique_ptr<ProgressDialog> MakeProgress() override;

  // For windows.
  std::shared_ptr<QtWindow> At(HWND window) const override;
  using Kinship::OwnedBy;
  using Kinship::RaiseTop;
  using Kinship::TopOf;
  using Kinship::Within;
  bool StillThere(HWND window) const { return At(window) != nullptr; }
  void MoveFocus(HWND window);
  void ActivateTop(HWND top);
  void ActivateNext(HWND gone, HWND owner);
  void Forget(HWND window);
  void Deliver(MSG message);
  MSG MessageNow(HWND window, UINT message, WPARAM w, LPARAM l) const;
  const std::shared_ptr<QtMailbox>& Mailbox() const { return mailbox_; }
  void WantPaint();

  // What the user does, as the events tell it.
  void KeepKey(int key, bool down, Qt::KeyboardModifiers modifiers);
  void KeepMouse(CPoint screen, Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers);
  WPARAM HeldKeys() const;
  void Hover(HWND window);
  // The widget set gave a window the focus, or took it away from all.
  void FocusArrived(HWND window);
  void FocusLeft();
  void ClickedIn() { asked_ = nullptr; }

  // An event of ours is being worked. What the widget set does around it may hold every widget that was there
  // when it began: such a widget is kept until the event is over, whatever loops run within it.
  class Event {
   public:
    explicit Event(QtDesk& desk);
    Event(const Event&) = delete;
    Event& operator=(const Event&) = delete;
    ~Event();

   private:
    QtDesk& desk_;
  };
  std::uint64_t EventCount() const { return event_count_; }
  // Ends a widget as soon as that may be; `born`: the count of events when it was made.
  void Bury(QWidget* widget, std::uint64_t born);

 private:
  std::shared_ptr<QtWindow> MakeWindow(const WindowRequest& request, HWND handle);
  void Adopt(const std::shared_ptr<QtWindow>& window);
  bool Admits(const WindowRequest& request) const;
  HWND Announce(const std::shared_ptr<QtWindow>& window, const WindowRequest& request);
  bool PumpPosted();
  void PaintAll();
  HWND FirstDirty(HWND at) const;
  bool MayEnd(std::uint64_t born) const { return live_events_.empty() || live_events_.back() <= born; }
  void WantSweep();
  void Sweep();
  void AskToActivate(HWND top);
  bool IsForeign(const QWidget* widget) const;
  void LeaveProgram();

  mutable std::mutex mutex_;  // over windows_ and posted_, which any thread asks for
  std::unordered_map<HWND, std::shared_ptr<QtWindow>> windows_;
  std::deque<MSG> posted_;
  std::shared_ptr<QtMailbox> mailbox_;

  UINT_PTR last_handle_ = 0x10000;
  std::vector<HWND> modal_;
  std::map<int, bool> keys_;
  HWND focus_ = nullptr;
  HWND active_ = nullptr;
  HWND asked_ = nullptr;  // the top window that the widget set was asked to make the active one
  HWND capture_ = nullptr;
  HWND hovered_ = nullptr;
  CPoint mouse_;
  int cursor_ = kCursorArrow;
  struct Grave {
    QPointer<QWidget> widget;
    std::uint64_t born;
  };
  std::uint64_t event_count_ = 0;
  std::vector<std::uint64_t> live_events_;  // their numbers, the innermost last
  std::vector<Grave> graves_;
  bool sweep_wanted_ = false;
  bool elsewhere_ = false;
  bool menu_up_ = false;
  bool paint_wanted_ = false;
  bool quitting_ = false;
  std::map<CString, UINT> registered_;
};

}  // namespace lorv
