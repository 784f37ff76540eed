#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QThread>
#include <QWidget>
#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "framework/ports/window_map.h"
#include "platform/qt/desktop/qt_desktop.h"
#include "tests/support/print.h"

namespace lorv::test {

// A window's object that writes down its messages and lets a test step in.
class Witness : public MessageTarget {
 public:
  struct Report {
    UINT message;
    WPARAM w;
    LPARAM l;
  };

  ~Witness() override {
    if (MappedWindow(window) == this) UnmapWindow(window);
  }

  LRESULT HandleMessage(HWND at, UINT message, WPARAM w, LPARAM l) override {
    reported.push_back({message, w, l});
    if (message == WM_NCDESTROY && MappedWindow(at) == this) UnmapWindow(at);
    const auto peer = DesktopInForce().Find(at);
    LRESULT answer = 0;
    if (on_message && on_message(message, w, l, answer)) return answer;
    return peer == nullptr ? 0 : peer->Default(message, w, l);
  }
  bool TakeMessage(MSG& message) override {
    offered.push_back({message.message, message.wParam, message.lParam});
    return on_offer && on_offer(message);
  }

  // How often a message came, and the messages out of a choice in their order.
  int Count(UINT message) const {
    return static_cast<int>(std::count_if(reported.begin(), reported.end(),
                                          [=](const Report& t) { return t.message == message; }));
  }
  std::vector<UINT> Order(const std::vector<UINT>& chosen) const {
    std::vector<UINT> order;
    for (const Report& t : reported)
      if (std::find(chosen.begin(), chosen.end(), t.message) != chosen.end()) order.push_back(t.message);
    return order;
  }
  // The notifications of a child, in their order.
  std::vector<UINT> Notes(UINT id) const {
    std::vector<UINT> notes;
    for (const Report& t : reported)
      if (t.message == WM_COMMAND && LOWORD(t.w) == id) notes.push_back(HIWORD(t.w));
    return notes;
  }

  HWND window = nullptr;
  std::vector<Report> reported;
  std::vector<Report> offered;
  std::function<bool(UINT, WPARAM, LPARAM, LRESULT&)> on_message;
  std::function<bool(MSG&)> on_offer;
};

// A desktop of its own for each test, and a top window of 400 by 300 pixels that is shown and active.
class QtTest : public testing::Test {
 protected:
  QtTest() : desktop_(MakeQtDesktop()), scope_(*desktop_) {
    WindowRequest request;
    request.kind = WindowKind::Top;
    request.text = _T("墙体");
    request.style = WS_OVERLAPPEDWINDOW | WS_VISIBLE;
    request.place = {100, 100, 500, 400};
    top.window = Make(request, &top);
    Settle();
    top.reported.clear();
  }
  ~QtTest() override {
    if (const auto peer = desktop_->Find(top.window)) peer->Destroy();
  }

  HWND Make(WindowRequest request, Witness* witness) {
    request.attach = [witness](HWND window) {
      if (witness != nullptr) witness->window = window;
      if (witness != nullptr) MapWindow(window, witness);
    };
    return desktop_->Create(request);
  }
  HWND Child(WindowKind kind, DWORD style, UINT id, const RECT& place, Witness* witness = nullptr,
             LPCTSTR text = nullptr) {
    WindowRequest request;
    request.kind = kind;
    request.style = style | WS_CHILD | WS_VISIBLE;
    request.place = place;
    request.parent = top.window;
    request.id = id;
    request.text = text;
    return Make(request, witness);
  }

  // Dispatches all that waits.
  void Settle() const {
    for (int i = 0; i < 200 && desktop_->Pump(false); ++i) {
    }
  }
  template <class Done>
  bool DispatchUntil(Done done) const {
    for (int i = 0; i < 2000 && !done(); ++i) {
      desktop_->Pump(false);
      QThread::msleep(1);
    }
    return done();
  }

  LRESULT Send(HWND window, UINT message, WPARAM w = 0, LPARAM l = 0) const {
    return desktop_->Send(window, message, w, l);
  }
  LRESULT SendText(HWND window, UINT message, WPARAM w, LPCTSTR text) const {
    return desktop_->Send(window, message, w, reinterpret_cast<LPARAM>(text));
  }
  CString TextOf(HWND window) const { return desktop_->Find(window)->Text(); }
  QWidget* WidgetOf(HWND window) const { return QtWidgetOf(window); }

  // The user: events as the window system would send them.
  void Key(const QPointer<QWidget>& widget, int key, const QString& text = {},
           Qt::KeyboardModifiers held = Qt::NoModifier) const {
    QKeyEvent down(QEvent::KeyPress, key, held, text);
    QCoreApplication::sendEvent(widget, &down);
    Settle();
    if (widget.isNull()) return;  // it ended in its key
    QKeyEvent up(QEvent::KeyRelease, key, held, text);
    QCoreApplication::sendEvent(widget, &up);
    Settle();
  }
  void Key(HWND window, int key, const QString& text = {},
           Qt::KeyboardModifiers held = Qt::NoModifier) const {
    if (QWidget* const widget = WidgetOf(window)) Key(QPointer(widget), key, text, held);
  }
  void Type(HWND window, const QString& text) const {
    for (const QChar unit : text) {
      const int key = unit.isLetterOrNumber() && unit.unicode() < 128 ? unit.toUpper().unicode() : 0;
      if (QWidget* const widget = WidgetOf(window)) Key(QPointer(widget), key, QString(unit));
    }
  }
  void Mouse(QWidget* widget, QEvent::Type type, QPoint at, Qt::MouseButton button,
             Qt::MouseButtons held) const {
    QMouseEvent event(type, at, widget->mapToGlobal(at), button, held, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &event);
    Settle();
  }
  void Click(HWND window, QPoint at) const {
    QWidget* const widget = WidgetOf(window);
    if (widget == nullptr) return;
    Mouse(widget, QEvent::MouseButtonPress, at, Qt::LeftButton, Qt::LeftButton);
    if (WidgetOf(window) == widget)
      Mouse(widget, QEvent::MouseButtonRelease, at, Qt::LeftButton, Qt::NoButton);
  }

  std::unique_ptr<Desktop> desktop_;
  ScopedDesktop scope_;
  Witness top;
};

}  // namespace lorv::test
