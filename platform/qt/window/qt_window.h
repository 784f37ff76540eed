#pragma once

#include <QPointer>
#include <QWidget>
#include <array>
#include <atomic>
#include <functional>
#include <map>
#include <memory>
#include <vector>

#include "framework/drawing/geometry.h"
#include "framework/ports/window_port.h"
#include "platform/qt/drawing/qt_canvas.h"

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
class QtWindow : public WindowPeer, public std::enable_shared_from_this<QtWindow> {
 public:
  QtWindow(QtDesk& desk, HWND handle, const WindowRequest& request);

  HWND Handle() const { return handle_; }
  QWidget* Widget() const { return widget_; }
  bool Seen() const;  // it and all around it are visible
  bool Dirty() const { return dirty_.IsRectEmpty() == 0; }
  bool Blocked() const;  // it or one around it is disabled
  bool Ending() const { return ending_; }
  HWND last_focus = nullptr;  // of a top window: who had the focus in it

  bool Exists() const override { return alive_; }
  void Destroy() override;
  WindowKind Kind() const override { return kind_; }
  CString ClassName() const override;
  HWND Parent() const override { return alive_ ? parent_ : nullptr; }
  HWND Owner() const override { return alive_ ? owner_ : nullptr; }
  std::vector<HWND> Children() const override { return children_; }
  UINT Id() const override { return id_; }
  void SetId(UINT id) override { id_ = id; }
  DWORD Style() const override { return style_; }
  void SetStyle(DWORD style) override;
  DWORD ExStyle() const override { return ex_style_; }
  void SetExStyle(DWORD style) override;
  void Place(const RECT& place) override;
  void Raise() override;
  RECT WindowRect() const override;
  RECT ClientRect() const override;
  POINT ClientOrigin() const override;
  SIZE FrameSize(SIZE client) const override;
  void Show(int how) override;
  void Enable(bool on) override;
  void Focus() override;
  void Activate() override;
  void Invalidate(const RECT* rect) override;
  void Update() override;
  std::unique_ptr<Canvas> PaintCanvas(RECT& dirty) override;
  std::unique_ptr<Canvas> ClientCanvas() override;
  CString Text() const override { return text_; }
  void SetText(const CString& text) override;
  void SetFont(const LOGFONT& font) override;
  LOGFONT Font() const override { return font_; }
  void SetScroll(int bar, const SCROLLINFO& info) override;
  SCROLLINFO Scroll(int bar) const override { return scroll_[bar == SB_VERT ? 1 : 0]; }
  void ShowScroll(int bar, bool on) override;
  void SetTimer(UINT_PTR id, UINT milliseconds) override;
  bool KillTimer(UINT_PTR id) override;
  void TrackLeave() override { leave_ = true; }
  LRESULT Default(UINT message, WPARAM w, LPARAM l) override;
  int Dpi() const override;
  std::vector<DWORD> Picture(SIZE& size) override;

  void Begin();
  // From the watcher of the widget: true if the event goes no further.
  bool Take(QObject* receiver, QEvent& event);
  void TakeTimer(int timer);
  void MouseGone();
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
  virtual void EraseGround(Canvas& /*canvas*/, const CRect& /*part*/) {}
  virtual void TextChanged() {}
  virtual void FontChanged(const QFont& /*font*/) {}
  virtual void StyleChanged(DWORD /*before*/) {}
  virtual void ScrollChanged() {}
  virtual bool TakePaint(QObject* receiver, QPaintEvent& event) = 0;
  virtual void AskToPaint();
  // The window that the keys of this widget are for.
  virtual HWND KeyTarget() const { return handle_; }

  // The part of the widget that is the client area, and gets the mouse.
  QWidget* Pane() const { return pane_; }
  QtDesk& Home() const { return desk_; }
  QtSurface& Surface() const { return *surface_; }
  DWORD Look() const { return style_; }
  void KeepText(const CString& text) { text_ = text; }
  void SetLook(DWORD style) { style_ = style; }
  // WM_PAINT is sent when other messages are done.
  void WantPaint(const CRect& part);
  LRESULT TextMessage(UINT message, WPARAM w, LPARAM l);
  // WM_COMMAND to the parent: when the event under way is over, and at once.
  void Note(UINT code);
  void Notify(UINT code);
  // What is told to the window by its widget: nothing any more once the window is gone, which its widget
  // outlives.
  template <class Tell>
  auto WhileItLives(Tell tell) {
    return [this, &desk = desk_, handle = handle_, tell](auto... told) {
      if (const auto keep = Living(desk, handle, this)) tell(told...);
    };
  }
  void ReportPlace();

 private:
  // The window itself, or null where another or none has its handle.
  static std::shared_ptr<QtWindow> Living(const QtDesk& desk, HWND handle, const QtWindow* window);

  bool TakeKey(QKeyEvent& event);
  bool TakeMouse(QObject* receiver, QMouseEvent& event);
  bool TakeWheel(QWheelEvent& event);
  bool TakeComposition(QEvent& event);
  bool TakeClose(QEvent& event);
  void TakeFocus(QEvent& event);
  bool TakeInput(QObject* receiver, QEvent& event);
  void PlayMouse(UINT message, CPoint screen);
  LRESULT ActivateMessage(WPARAM w);
  void SayMoved(CPoint at_before, const CRect& client_before);
  void Measure();
  CPoint PlaceOf() const;
  void LoseFocusWithin();
  void TellOfEnd();
  void End();
  std::vector<HWND> TabOrder() const;

  QtDesk& desk_;
  const HWND handle_;
  const WindowKind kind_;
  const CString class_name_;
  CString text_;
  DWORD style_;
  DWORD ex_style_;
  HWND parent_ = nullptr;
  HWND owner_ = nullptr;
  std::vector<HWND> children_;
  UINT id_;
  LOGFONT font_ = {};
  std::array<SCROLLINFO, 2> scroll_ = {};
  std::map<UINT_PTR, int> timers_;  // our id to the widget set's
  CRect dirty_;
  CPoint told_at_;
  bool leave_ = false;
  bool ending_ = false;
  std::atomic<bool> alive_{true};
  std::shared_ptr<QtSurface> surface_;
  QWidget* widget_ = nullptr;
  QWidget* pane_ = nullptr;
  QtWatcher* watcher_ = nullptr;
  std::uint64_t born_ = 0;  // the count of events when the widget was made
  int working_ = 0;
  bool notes_due_ = false;
  std::vector<UINT> notes_;
};

// While the widget works for us, what it tells is kept back: nothing calls out of the middle of the widget's
// code. At the end of the outermost one the notes are sent, after which the window may be gone.
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
    return window_ != nullptr && window_->Take(receiver, *event);
  }
  void timerEvent(QTimerEvent* event) override;

 private:
  QtWindow* window_ = nullptr;
};

}  // namespace lorv
