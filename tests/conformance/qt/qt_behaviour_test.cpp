#include <gtest/gtest.h>

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QInputMethodEvent>
#include <QMenu>
#include <QStyleHints>
#include <QTimer>
#include <deque>
#include <limits>
#include <memory>
#include <utility>

#include "framework/drawing/geometry.h"
#include "platform/models/carried_fault.h"
#include "platform/qt/desktop/qt_desktop.h"
#include "tests/conformance/behaviour_scene.h"
#include "tests/conformance/grid/bridge_scene.h"
#include "tests/conformance/grid/grid_scene.h"
#include "tests/conformance/kept_trace.h"
#include "tests/conformance/own_loops.h"
#include "tests/conformance/painting_script.h"
#include "tests/conformance/qt/qt_user.h"

namespace {

// The keys that lead from a menu's opening to the command; empty: it is not there.
std::vector<int> KeysTo(const QMenu& menu, UINT command) {
  std::vector<int> keys;
  for (const QAction* const action : menu.actions()) {
    if (action->isSeparator()) continue;
    keys.push_back(VK_DOWN);
    if (action->menu() == nullptr && action->data().toUInt() == command) {
      keys.push_back(VK_RETURN);
      return keys;
    }
    const auto below = action->menu() == nullptr ? std::vector<int>() : KeysTo(*action->menu(), command);
    if (below.empty()) continue;
    // Opening a submenu stands on its first entry already.
    keys.push_back(VK_RIGHT);
    keys.insert(keys.end(), below.begin() + 1, below.end());
    return keys;
  }
  return {};
}

// A popup is one menu, or holds one for each of its columns.
QList<const QMenu*> ColumnsOf(const QWidget& popup) {
  if (const auto* const menu = qobject_cast<const QMenu*>(&popup)) return {menu};
  return popup.findChildren<const QMenu*>(QString(), Qt::FindDirectChildrenOnly);
}

// A column is entered at the entry beside the first one.
std::vector<int> KeysTo(const QList<const QMenu*>& columns, UINT command) {
  std::vector<int> to_column;
  for (const QMenu* const column : columns) {
    const std::vector<int> within = KeysTo(*column, command);
    if (within.empty()) {
      if (to_column.empty()) to_column.push_back(VK_DOWN);
      to_column.push_back(VK_RIGHT);
      continue;
    }
    std::vector<int> keys = to_column;
    keys.insert(keys.end(), within.begin() + (to_column.empty() ? 0 : 1), within.end());
    return keys;
  }
  return {};
}

// What has to be done while a menu or a dialog is up is done when Qt would wait for the user.
class QtDriver : public lorv_test::BehaviourDriver {
 public:
  QtDriver(lorv::Desktop& desktop, lorv_test::QtUser& user) : desktop_(desktop), user_(user) {
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, &here_,
                     [this] { Waiting(); });
    // Two clicks of the script are two, however fast they come.
    QGuiApplication::styleHints()->setMouseDoubleClickInterval(0);
  }

  lorv::Desktop& Desktop() override { return desktop_; }
  void Press(int key) override {
    // It comes up whatever it brings about.
    try {
      Key(key, true);
    } catch (...) {
      Key(key, false);
      throw;
    }
    Key(key, false);
  }
  void PressWith(int modifier, int key) override {
    Key(modifier, true);
    Press(key);
    Key(modifier, false);
  }
  void Hold(int key, bool down) override { Key(key, down); }
  void Type(lorv::TextView text) override {
    for (const TCHAR unit : text) {
      const bool capital = unit >= _T('A') && unit <= _T('Z');
      const bool digit = unit >= _T('0') && unit <= _T('9');
      const int key = capital || digit ? unit : unit - _T('a') + 'A';
      if (capital) {
        PressWith(VK_SHIFT, key);
      } else {
        Press(key);
      }
    }
  }
  void MoveMouse(POINT screen) override {
    Hand([&] { user_.MoveMouse(screen); });
  }
  void MouseDown() override {
    Hand([this] { user_.Button(true); });
  }
  void MouseUp() override {
    Hand([this] { user_.Button(false); });
  }
  void DoubleClick(POINT screen) override {
    Click(screen);
    QGuiApplication::styleHints()->setMouseDoubleClickInterval(std::numeric_limits<int>::max());
    MouseDown(), MouseUp();
    QGuiApplication::styleHints()->setMouseDoubleClickInterval(0);
  }
  void RightClick(POINT screen) override {
    MoveMouse(screen);
    Hand([this] { user_.RightButton(true); });
    Hand([this] { user_.RightButton(false); });
  }
  void AnswerMenu(UINT command) override { answers_.push_back(command); }
  void WhenModal(std::function<void()> step) override { steps_.push_back(std::move(step)); }
  void WhenMenu(std::function<void()> step) override { menu_steps_.push_back(std::move(step)); }
  // The bar at the right edge: the handle stands below the arrow.
  void DragHandle(HWND window) override {
    const CRect frame(desktop_.Find(window)->WindowRect());
    const int bar = desktop_.Metric(SM_CXVSCROLL);
    const LONG x = frame.right - bar / 2;
    MoveMouse({x, frame.top + bar + 5});
    MouseDown();
    MoveMouse({x, frame.top + bar + 20});
    MoveMouse({x, frame.CenterPoint().y});
    MouseUp();
  }
  void Compose(const CString& shown) override {
    QInputMethodEvent event(QString::fromUtf16(shown.GetString()), {});
    SendToFocus(event);
  }
  void Commit(const CString& text) override {
    QInputMethodEvent event;
    event.setCommitString(QString::fromUtf16(text.GetString()));
    SendToFocus(event);
  }
  HWND MakeHostEdit(HWND parent, const RECT& place) override {
    return lorv_test::MakeBareEdit(desktop_, parent, place);
  }
  void Advance(DWORD milliseconds) override {
    // A handler may throw meanwhile: the timer then ends after this call.
    const auto over = std::make_shared<bool>(false);
    QTimer::singleShot(static_cast<int>(milliseconds), Qt::PreciseTimer, &here_, [over] { *over = true; });
    own_loops_.Wait([&] {
      while (!*over) desktop_.Pump(true);
    });
    Settle();
  }
  void LeaveProgram() override {
    user_.BringOtherProgram();
    const auto left = [this] {
      return desktop_.Focus() != nullptr && desktop_.Find(desktop_.Focus()) == nullptr;
    };
    own_loops_.Wait([&] {
      while (!left()) desktop_.Pump(true);
    });
  }
  RECT CandidatesAt(HWND window) override {
    QInputMethodQueryEvent query(Qt::ImCursorRectangle);
    QCoreApplication::sendEvent(lorv::QtWidgetOf(window), &query);
    const QRect at = query.value(Qt::ImCursorRectangle).toRect();
    return CRect(at.left(), at.top(), at.left() + at.width(), at.top() + at.height());
  }
  void Settle() override {
    own_loops_.Wait([this] {
      do {
        while (desktop_.Pump(false)) {
        }
      } while (lorv::CarriedFault::CallOut([this] { return user_.Arrive(); }));
    });
  }

 private:
  // What the user does may come at once, as from a loop of ours.
  void Hand(const std::function<void()>& moves) {
    lorv::CarriedFault::CallOut([&] { return moves(), true; });
    Settle();
  }
  void Key(int key, bool down) {
    Hand([&] { user_.Key(key, down); });
  }

  void SendToFocus(QEvent& event) {
    QCoreApplication::sendEvent(QApplication::focusWidget(), &event);
    Settle();
  }

  void Waiting() {
    if (step_is_due_ || !own_loops_.InAnother()) return;
    if (!desktop_.MenuUp() && steps_.empty()) return;
    step_is_due_ = true;
    QTimer::singleShot(0, &here_, [this] {
      step_is_due_ = false;
      Settle();
      Step();
    });
  }

  void Step() {
    if (desktop_.MenuUp() && !menu_steps_.empty()) return RunNext(menu_steps_);
    if (desktop_.MenuUp()) return Answer();
    if (!steps_.empty()) RunNext(steps_);
  }

  static void RunNext(std::deque<std::function<void()>>& steps) {
    const auto step = std::move(steps.front());
    steps.pop_front();
    step();
  }

  void Answer() {
    const QWidget* const popup = QApplication::activePopupWidget();
    std::vector<int> keys;
    if (popup != nullptr && !answers_.empty()) {
      keys = KeysTo(ColumnsOf(*popup), answers_.front());
      answers_.pop_front();
    }
    if (keys.empty()) keys = {VK_ESCAPE};
    for (const int key : keys) Press(key);
  }

  lorv::Desktop& desktop_;
  lorv_test::QtUser& user_;
  QObject here_;
  lorv_test::OwnLoops own_loops_;
  bool step_is_due_ = false;
  std::deque<UINT> answers_;
  std::deque<std::function<void()>> steps_;
  std::deque<std::function<void()>> menu_steps_;
};

// Bars are as wide as the style has them on that screen.
std::vector<lorv_test::Difference> Differences(const lorv::Desktop& desktop) {
  const std::string width = std::to_string(90 - desktop.Metric(SM_CXVSCROLL));
  return {{"77 bars take room from the client area", {"  sheet size " + width + ",80", "  narrower"}}};
}

// An edit whose focus goes to its list stands at its end; and where a double click takes no time, the release
// of the press that opened a list chooses in it.
const std::vector<lorv_test::Difference> kGridDifferences = {
    {"119 F4 shows the list", {"  shown", "  = 2,2 editor [o1] 2-2"}},
    {"122 the button opens editor and list",
     {"  opens 2,2", "  button 2,2", "  update", "  combo", "  = 2,2 editor [o2] 0-2"}},
    {"123 Esc closes the list and keeps the editor", {"  = 2,2"}},
    {"126 options by a list of texts", {"  1", "  = 2,2 editor [own] 3-3"}},
};

}  // namespace

TEST(QtBehaviour, TraceIsTheKeptOneButForTheListedDifferences) {
  const auto desktop = lorv::MakeQtDesktop();
  const lorv::ScopedDesktop scope(*desktop);
  const auto user = lorv_test::MakeQtUser();
  QtDriver driver(*desktop, *user);
  lorv_test::ExpectKeptTrace(lorv_test::PlayBehaviour(driver), Differences(*desktop));
}

TEST(QtGridBehaviour, TraceIsTheKeptOne) {
  const auto desktop = lorv::MakeQtDesktop();
  const lorv::ScopedDesktop scope(*desktop);
  const auto user = lorv_test::MakeQtUser();
  QtDriver driver(*desktop, *user);
  lorv_test::ExpectTrace(lorv_test::KeptGridTrace(), lorv_test::PlayGrid(driver), kGridDifferences);
}

TEST(QtGridBehaviour, BridgeTraceIsTheKeptOne) {
  const auto desktop = lorv::MakeQtDesktop();
  const lorv::ScopedDesktop scope(*desktop);
  const auto user = lorv_test::MakeQtUser();
  QtDriver driver(*desktop, *user);
  lorv_test::ExpectTrace(lorv_test::KeptBridgeTrace(), lorv_test::PlayBridge(driver), {});
}

// A host that has its own application object keeps the widget set's way of counting pixels.
void MakeHostApplication() {
  static int count = 1;
  static char name[] = "host";
  static char* arguments[] = {name, nullptr};
  if (qEnvironmentVariableIsSet("LORV_TEST_HOST_APPLICATION") && QApplication::instance() == nullptr)
    static_cast<void>(new QApplication(count, arguments));
}

TEST(QtPainting, TraceIsTheKeptOne) {
  MakeHostApplication();
  const auto desktop = lorv::MakeQtDesktop();
  const lorv::ScopedDesktop scope(*desktop);
  const auto user = lorv_test::MakeQtUser();
  QtDriver driver(*desktop, *user);
  lorv_test::ExpectKeptPainting(driver);
}
