#include <gtest/gtest.h>

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QMenu>
#include <QStyleHints>
#include <QTimer>
#include <deque>
#include <limits>

#include "platform/qt/desktop/qt_desktop.h"
#include "tests/conformance/behaviour_scene.h"
#include "tests/conformance/kept_trace.h"
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
class QtDriver : public lorv_test::ConductDriver {
 public:
  QtDriver(lorv::Desktop& desktop, lorv_test::QtUser& user) : desktop_(desktop), user_(user) {
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, &here_,
                     [this] { Waiting(); });
    // Two clicks of the script are two, however fast they come.
    QGuiApplication::styleHints()->setMouseDoubleClickInterval(0);
  }

  lorv::Desktop& Desktop() override { return desktop_; }
  void Press(int key) override {
    user_.Key(key, true), Settle();
    user_.Key(key, false), Settle();
  }
  void PressWith(int modifier, int key) override {
    user_.Key(modifier, true), Settle();
    Press(key);
    user_.Key(modifier, false), Settle();
  }
  void Type(lorv::TextView text) override {
    for (const TCHAR unit : text) {
      const bool capital = unit >= _T('A') && unit <= _T('Z');
      const int key = capital ? unit : unit - _T('a') + 'A';
      if (capital) {
        PressWith(VK_SHIFT, key);
      } else {
        Press(key);
      }
    }
  }
  void MoveMouse(POINT screen) override { user_.MoveMouse(screen), Settle(); }
  void MouseDown() override { user_.Button(true), Settle(); }
  void MouseUp() override { user_.Button(false), Settle(); }
  void DoubleClick(POINT screen) override {
    Click(screen);
    QGuiApplication::styleHints()->setMouseDoubleClickInterval(std::numeric_limits<int>::max());
    MouseDown(), MouseUp();
    QGuiApplication::styleHints()->setMouseDoubleClickInterval(0);
  }
  void AnswerMenu(UINT command) override { answers_.push_back(command); }
  void WhenModal(std::function<void()> step) override { steps_.push_back(std::move(step)); }
  void Advance(DWORD milliseconds) override {
    bool over = false;
    QTimer::singleShot(static_cast<int>(milliseconds), Qt::PreciseTimer, &here_, [&over] { over = true; });
    Busily([&] {
      while (!over) desktop_.Pump(true);
    });
    Settle();
  }
  void LeaveProgram() override {
    user_.BringOtherProgram();
    const auto left = [this] {
      return desktop_.Focus() != nullptr && desktop_.Find(desktop_.Focus()) == nullptr;
    };
    Busily([&] {
      while (!left()) desktop_.Pump(true);
    });
  }
  void Settle() override {
    Busily([this] {
      do {
        while (desktop_.Pump(false)) {
        }
      } while (user_.Arrive());
    });
  }

 private:
  // While we wait for what we did ourselves, the next step is not due.
  void Busily(const std::function<void()>& work) {
    ++busy_;
    work();
    --busy_;
  }

  void Waiting() {
    if (busy_ > 0 || (!desktop_.MenuUp() && steps_.empty())) return;
    ++busy_;
    QTimer::singleShot(0, &here_, [this] {
      --busy_;
      Settle();
      Step();
    });
  }

  void Step() {
    if (desktop_.MenuUp()) return Answer();
    if (steps_.empty()) return;
    const auto step = std::move(steps_.front());
    steps_.pop_front();
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
  int busy_ = 0;
  std::deque<UINT> answers_;
  std::deque<std::function<void()>> steps_;
};

const std::vector<lorv_test::Difference> kDifferences = {
    {"77 bars take room from the client area", {"  sheet size 76,80", "  narrower"}},
};

}  // namespace

TEST(QtConduct, TraceIsTheKeptOneButForTheListedDifferences) {
  const auto desktop = lorv::MakeQtDesktop();
  const lorv::ScopedDesktop scope(*desktop);
  const auto user = lorv_test::MakeQtUser();
  QtDriver driver(*desktop, *user);
  lorv_test::ExpectKeptTrace(lorv_test::PlayConduct(driver), kDifferences);
}
