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
#include "platform/models/desktop/desktop_model.h"
#include "platform/qt/services/qt_services.h"
#include "platform/qt/window/qt_window.h"

class QScreen;

namespace lorv {

// Tasks that any thread leaves for the thread of the windows; closed when the desktop ends.
class QtMailbox {
 public:
  QtMailbox();
  ~QtMailbox();
  QtMailbox(const QtMailbox&) = delete;
  QtMailbox& operator=(const QtMailbox&) = delete;
  // Runs it in that thread when the events that are there are done; `last`: when all others are.
  void Leave(std::function<void()> errand, bool last = false);
  // In that thread: runs the next task of the two sorts.
  void RunNext(bool last);
  void Close();

  // As long as one lives, tasks wait. In the thread of the windows.
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

  std::mutex mutex_;  // over all that follows
  // The tasks that wait, those of Leave(..., true) second. Events only call for them: what an event carried
  // would lie outside the lock.
  std::array<std::deque<std::function<void()>>, 2> errands_;
  int held_ = 0;
  QObject* receiver_;
};

// The desktop over Qt. Focus, activation and capture are its own record, in the platform's order of messages;
// the widgets follow it, and what the user changes at the widgets changes it.
class QtDesk : public DesktopModel, public QtServices {
 public:
  QtDesk();
  ~QtDesk() override;

  void EndModal(HWND dialog) override;
  HWND Focus() const override;
  void SetCursorPosition(POINT at) override;
  void SetCursor(int shape) override;
  RECT WorkArea(POINT near_by) const override;
  RECT Screen() const override;
  COLORREF Colour(int index) const override;
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
  bool SetClipboard(const TransferData& data) override;
  std::vector<BYTE> ClipboardBytes(const CString& format) const override;
  DROPEFFECT Drag(const TransferData& content, DROPEFFECT allowed) override;
  void ReportAccessible(HWND window, AccessEvent event, std::int64_t number) override;
  std::unique_ptr<Canvas> MakeCanvas(SIZE size) const override;
  int Dpi() const override;
  int DpiFor(const WindowRequest& request) const override;
  std::unique_ptr<ProgressDialog> MakeProgress() override;

  // For windows.
  std::shared_ptr<QtWindow> Window(HWND window) const {
    return std::static_pointer_cast<QtWindow>(At(window));
  }
  using DesktopModel::Deliver;
  using DesktopModel::HeldKeys;
  using DesktopModel::Hover;
  using DesktopModel::MessageNow;
  void Forget(HWND window) override;
  const std::shared_ptr<QtMailbox>& Mailbox() const { return mailbox_; }
  void WantPaint();
  // The label's text is another: the control behind it is read by it.
  void NameAfter(HWND label);

  // What the user does, as the events report it.
  void KeepKey(int key, bool down, Qt::KeyboardModifiers modifiers);
  void KeepMouse(CPoint screen, Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers);
  // The widget set gave a window the focus, or took it away from all.
  void FocusArrived(HWND window);
  void FocusLeft();
  // The user pressed the mouse in one of our windows: an activation that was asked for is not waited for.
  void ClickedIn() { asked_ = nullptr; }

  // An event of ours is being handled. What the widget set does around it may hold every widget that was
  // there when it began: such a widget is kept until the event is over, whatever loops run within it.
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

  // Runs a loop of the widget set within a call of ours: that of a menu, of a message box. `end` closes it as
  // the user would without a choice, when the end of the program is asked for meanwhile. What a handler
  // throws comes out behind the loop.
  template <class Loop>
  auto RunInner(Loop loop, std::function<void()> end) {
    const InnerLoop within(*this, std::move(end));
    return CarriedFault::CallOut(std::move(loop));
  }
  // Deletes a widget as soon as that may be; `born`: the count of events when it was made.
  void DeleteLater(QWidget* widget, std::uint64_t born);

 protected:
  std::shared_ptr<WindowModel> MakeWindow(const WindowRequest& request, HWND handle) override;
  void Begin(WindowModel& window, const WindowRequest& request) override;
  void FocusChanged(HWND former) override;
  void ActiveChanged() override;
  void CaptureChanged(HWND former) override;
  void MessagePosted() override;
  bool EndHostLoop(int code) override;
  bool PumpOnce(bool wait) override;
  int BarWidth() const override;
  int CaptionHeight() const override;
  int DragDistance() const override;

 private:
  class InnerLoop {
   public:
    InnerLoop(QtDesk& desk, std::function<void()> end) : desk_(desk), quit_(desk) {
      desk_.inner_loops_.push_back(std::move(end));
    }
    InnerLoop(const InnerLoop&) = delete;
    InnerLoop& operator=(const InnerLoop&) = delete;
    ~InnerLoop() { desk_.inner_loops_.pop_back(); }

   private:
    QtDesk& desk_;
    const LoopWithin quit_;
  };

  void NameByLabel(HWND control);
  void WatchScreens();
  void WatchScreen(QScreen* screen);
  void MeasureScreen();
  void ReportScreens();
  bool DispatchPosted();
  void PaintAll();
  bool MayEnd(std::uint64_t born) const { return live_events_.empty() || live_events_.back() <= born; }
  void WantSweep();
  void Sweep();
  bool IsForeign(const QWidget* widget) const;
  void LeaveProgram();

  std::shared_ptr<QtMailbox> mailbox_;

  HWND asked_ = nullptr;             // the top-level window that the widget set was asked to activate
  QPointer<QWidget> mouse_grabber_;  // the widget through which the mouse comes to the window that has it
  struct Doomed {
    QPointer<QWidget> widget;
    std::uint64_t born;
  };
  std::uint64_t event_count_ = 0;
  std::vector<std::uint64_t> live_events_;  // their numbers, the innermost last
  std::vector<Doomed> doomed_;
  bool sweep_wanted_ = false;
  bool elsewhere_ = false;  // the focus has left our windows
  bool menu_up_ = false;    // a menu of ours
  bool dragging_ = false;   // out of a window of ours
  bool paint_wanted_ = false;
  std::vector<std::function<void()>> inner_loops_;  // what ends them, the innermost last
  std::atomic<int> dpi_{kUsualDpi};                 // of the first screen
  std::atomic<double> ratio_{1};
  QObject screens_;  // the signals of screens are connected to it, and end with it
  QObject drags_;    // owns the drags: their content may be asked for after the call that ran them
};

}  // namespace lorv
