#pragma once

#include <QPointer>
#include <QWidget>
#include <map>
#include <memory>
#include <vector>

#include "framework/ports/drop_port.h"
#include "platform/models/carried_fault.h"
#include "platform/models/window/window_model.h"
#include "platform/qt/drawing/qt_canvas.h"

class QInputMethodEvent;
class QMouseEvent;
class QPaintEvent;
class QWheelEvent;

namespace lorv {

class QtDesk;
class QtWatcher;

// A window over a widget: what all kinds have in common. The kinds that draw themselves are QtBoard, those
// that the system draws are QtControl.
//
// Calls out of the window (DeliverMessage) may end it. Its widget then lives until the events under way are
// over, but is not ours any more: `widget_` is null and the watcher has no window.
class QtWindow : public WindowModel {
 public:
  QtWindow(QtDesk& desk, HWND handle, const WindowRequest& request);

  QWidget* Widget() const { return widget_; }

  void Place(const RECT& place) override;
  void Raise() override;
  RECT WindowRect() const override;
  RECT ClientRect() const override;
  POINT ClientOrigin() const override;
  SIZE FrameSize(SIZE client) const override;
  std::unique_ptr<Canvas> PaintCanvas(RECT& dirty) override;
  std::unique_ptr<Canvas> ClientCanvas() override;
  void SetTimer(UINT_PTR id, UINT milliseconds) override;
  bool KillTimer(UINT_PTR id) override;
  std::vector<DWORD> Picture(SIZE& size) override;
  bool AcceptDrops(bool on) override;

  void Begin();
  // From the watcher of the widget: true if the event goes no further.
  bool Take(QObject* receiver, QEvent& event);
  void TakeTimer(int timer);
  // It may stand on another screen, or its screen is another than before.
  void ScreenChanged();
  // What was drawn is brought to the screen.
  void ShowChanges();
  // Notifications that waited until the widget had finished its own work.
  void SendNotes();

 protected:
  friend class QtDesk;
  friend class WidgetWork;
  struct Edges {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
  };

  // Takes the widget over; called once, in the constructors of the kinds. Its events come from Begin on.
  void Start(QWidget* widget, QWidget* pane = nullptr);
  // An inner part of the widget, whose events are watched as well.
  void Watch(QWidget* part);
  // Between the widget's edges and its client area.
  virtual Edges Margins() const { return {}; }
  virtual bool PaintsSelf() const { return true; }
  // Whether the user cannot size it.
  virtual bool IsFixed() const { return false; }
  void HoldSize();
  virtual void EraseGround(Canvas& /*canvas*/, const CRect& /*part*/) {}
  // The widget is to show what the model has changed. What the widget reports of that is kept back.
  virtual void ShowStyle(DWORD /*before*/) {}
  virtual void ShowText() {}
  virtual void ShowFocus();
  virtual void ShowFont(const QFont& /*font*/) {}
  virtual bool TakePaint(QObject* receiver, QPaintEvent& event) = 0;
  // The window that the keys of this widget are for.
  virtual HWND KeyTarget() const { return Handle(); }

  void StyleChanged(DWORD before) override;
  void VisibleChanged(int how) override;
  void EnabledChanged() override;
  void TextChanged() override;
  void FontChanged() override;
  void CompositionCaretChanged() override;
  void PlaceChanged() override;
  void PaintDefault() override;
  void PaintWanted() override;
  void Invalidated() override;
  void RedrawChanged(bool on) override;
  void PictureChanged() override { ShowChanges(); }
  void DpiChanged() override { surface_->SetDpi(Dpi()); }
  bool ShiftPicture(const CRect& target, SIZE by) override { return surface_->Shift(target, by); }
  void Ended() override;

  // The part of the widget that is the client area, and gets the mouse.
  QWidget* Pane() const { return pane_; }
  QtDesk& Home() const { return desk_; }
  QtSurface& Surface() const { return *surface_; }
  // The parts of the client area that the event wants, its corner standing at `at`.
  void ShowSurface(QPainter& painter, QPoint at, const QPaintEvent& event);
  // WM_COMMAND to the parent when the event under way is over.
  void Note(UINT code);
  // What its widget reports to the window: nothing any more once the window is gone, which its widget
  // outlives. What a handler throws does not pass through the widget set.
  template <class Report>
  auto WhileItLives(Report report) {
    return [this, &desk = desk_, handle = Handle(), report](auto... reported) {
      CarriedFault::Guarded([&] {
        if (const auto keep = Living(desk, handle, this)) report(reported...);
        return true;
      });
    };
  }

 private:
  // The window itself, or null where another or none has its handle.
  static std::shared_ptr<QtWindow> Living(const QtDesk& desk, HWND handle, const QtWindow* window);

  bool TakeKey(QKeyEvent& event);
  bool TakeMouse(QObject* receiver, QMouseEvent& event);
  bool TakeWheel(QWheelEvent& event);
  bool TakeComposition(QEvent& event);
  bool TakeQuery(QEvent& event);
  void ShowComposition(const QInputMethodEvent& shown);
  bool TakeClose(QEvent& event);
  bool TakeDrag(QEvent& event);
  void TakeFocus(QEvent& event);
  bool TakeInput(QObject* receiver, QEvent& event);
  void PlayMouse(UINT message, CPoint screen);
  void PutAt(const RECT& place);
  void Measure();
  CPoint PlaceOf() const;

  QtDesk& desk_;
  std::map<UINT_PTR, int> timers_;  // our id to the widget set's
  std::shared_ptr<QtSurface> surface_;
  QWidget* widget_ = nullptr;
  QWidget* pane_ = nullptr;
  QtWatcher* watcher_ = nullptr;
  std::uint64_t born_ = 0;                 // the count of events when the widget was made
  int working_ = 0;                        // WidgetWork objects in force
  bool notes_due_ = false;                 // a task that sends them is left at the mailbox
  DROPEFFECT promised_ = DROPEFFECT_NONE;  // by the last answer to a drag
  std::vector<UINT> notes_;                // codes of WM_COMMAND that wait
};

// While the widget works for us, what it reports is kept back: nothing calls out of the middle of the
// widget's code. At the end of the outermost one the notes are sent, after which the window may be gone.
class WidgetWork {
 public:
  explicit WidgetWork(QtWindow& window) : window_(window) { ++window_.working_; }
  WidgetWork(const WidgetWork&) = delete;
  WidgetWork& operator=(const WidgetWork&) = delete;
  ~WidgetWork() { --window_.working_; }

 private:
  QtWindow& window_;
};

// Hands the events of a window's widgets to the window, as long as there is one.
class QtWatcher : public QObject {
 public:
  explicit QtWatcher(QObject* parent) : QObject(parent) {}
  // From when the window is whole until it ends.
  void Serve(QtWindow* window) { window_ = window; }
  bool eventFilter(QObject* receiver, QEvent* event) override {
    return window_ != nullptr && CarriedFault::Guarded([&] { return window_->Take(receiver, *event); });
  }
  void timerEvent(QTimerEvent* event) override;

 private:
  QtWindow* window_ = nullptr;
};

}  // namespace lorv
