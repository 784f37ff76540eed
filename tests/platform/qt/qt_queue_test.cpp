#include <QMenu>
#include <QTimer>
#include <thread>

#include "framework/drawing/geometry.h"
#include "framework/ports/menu_model.h"
#include "tests/platform/qt/qt_fixture.h"

namespace lorv::test {
namespace {

using QtQueueTest = QtTest;

TEST_F(QtQueueTest, PostedMessagesComeInOrderAndAreOffered) {
  for (WPARAM i = 1; i <= 3; ++i) EXPECT_TRUE(desktop_->Post(top.window, WM_APP, i, 0));
  EXPECT_EQ(top.Count(WM_APP), 0);
  EXPECT_TRUE(desktop_->Pump(false));
  EXPECT_EQ(top.Count(WM_APP), 1);
  Settle();
  std::vector<WPARAM> order;
  for (const Witness::Report& t : top.reported)
    if (t.message == WM_APP) order.push_back(t.w);
  EXPECT_EQ(order, (std::vector<WPARAM>{1, 2, 3}));
  EXPECT_GE(top.offered.size(), 3U);
}

TEST_F(QtQueueTest, MessagesToAWindowThatGoesAreLost) {
  Witness child;
  Child(WindowKind::Custom, 0, 1, {0, 0, 9, 9}, &child);
  const HWND window = child.window;
  EXPECT_TRUE(desktop_->Post(window, WM_APP, 0, 0));
  desktop_->Find(window)->Destroy();
  EXPECT_FALSE(desktop_->Post(window, WM_APP, 0, 0));
  Settle();
  EXPECT_EQ(child.Count(WM_APP), 0);
}

TEST_F(QtQueueTest, PostsOfAnotherThreadArrive) {
  std::thread other([&] { desktop_->Post(top.window, WM_APP + 1, 9, 0); });
  EXPECT_TRUE(DispatchUntil([&] { return top.Count(WM_APP + 1) == 1; }));
  other.join();
}

TEST_F(QtQueueTest, ProgramsOwnLoopServesTheQueueToo) {
  QEventLoop loop;
  top.on_message = [&loop](UINT message, WPARAM, LPARAM, LRESULT&) {
    if (message == WM_APP) loop.quit();
    return false;
  };
  desktop_->Post(top.window, WM_APP, 0, 0);
  loop.exec();
  EXPECT_EQ(top.Count(WM_APP), 1);
}

TEST_F(QtQueueTest, TimerComesAgainUntilItIsKilled) {
  const auto peer = desktop_->Find(top.window);
  peer->SetTimer(4, 5);
  EXPECT_TRUE(DispatchUntil([&] { return top.Count(WM_TIMER) >= 3; }));
  EXPECT_EQ(top.Order({WM_TIMER}).front(), UINT{WM_TIMER});
  EXPECT_TRUE(peer->KillTimer(4));
  EXPECT_FALSE(peer->KillTimer(4));
  const int before = top.Count(WM_TIMER);
  QThread::msleep(20);
  Settle();
  EXPECT_EQ(top.Count(WM_TIMER), before);
}

TEST_F(QtQueueTest, WindowMayEndInItsTimer) {
  Witness child;
  Child(WindowKind::Custom, 0, 1, {0, 0, 9, 9}, &child);
  const HWND window = child.window;
  child.on_message = [&](UINT message, WPARAM, LPARAM, LRESULT&) {
    if (message == WM_TIMER) desktop_->Find(window)->Destroy();
    return false;
  };
  desktop_->Find(window)->SetTimer(1, 1);
  EXPECT_TRUE(DispatchUntil([&] { return desktop_->Find(window) == nullptr; }));
  EXPECT_EQ(child.Count(WM_TIMER), 1);
}

// A window that handlers of an outer message may still use waits to be deleted; a loop within the message
// sleeps meanwhile.
TEST_F(QtQueueTest, LoopWithinAMessageSleepsWhileAWindowWaitsToEnd) {
  const HWND child = Child(WindowKind::Custom, 0, 1, {0, 0, 9, 9});
  int rounds = 0;
  top.on_message = [&](UINT message, WPARAM, LPARAM, LRESULT&) {
    if (message != WM_APP) return false;
    desktop_->Find(child)->Destroy();
    bool over = false;
    QTimer::singleShot(100, [&over] { over = true; });
    for (; !over; ++rounds) desktop_->Pump(true);
    return true;
  };
  desktop_->Post(top.window, WM_APP, 0, 0);
  Settle();
  EXPECT_GT(rounds, 0);
  EXPECT_LT(rounds, 50);
}

// A program that goes on after its end was asked for has loops of the widget set's as before.
TEST_F(QtQueueTest, LoopsBeginAgainAfterTheEndWasAskedFor) {
  desktop_->Post(nullptr, WM_QUIT, 3, 0);
  EXPECT_FALSE(desktop_->Pump(false));
  QEventLoop loop;
  bool reached = false;
  QTimer::singleShot(0, &loop, [&] {
    reached = true;
    loop.exit(5);
  });
  EXPECT_EQ(loop.exec(), 5);
  EXPECT_TRUE(reached);
}

TEST_F(QtQueueTest, ModalDialogDisablesItsOwnerUntilItEnds) {
  Witness dialog;
  WindowRequest request;
  request.kind = WindowKind::Dialog;
  request.style = WS_CAPTION | WS_VISIBLE;
  request.place = {150, 150, 350, 250};
  request.parent = top.window;
  const HWND window = Make(request, &dialog);
  EXPECT_EQ(desktop_->Find(window)->ClassName(), CString(_T("#32770")));
  bool disabled = false;
  dialog.on_message = [&](UINT message, WPARAM, LPARAM, LRESULT&) {
    if (message != WM_APP) return false;
    disabled = (desktop_->Find(top.window)->Style() & WS_DISABLED) != 0;
    Click(top.window, QPoint(5, 5));
    desktop_->EndModal(window);
    return true;
  };
  desktop_->Post(window, WM_APP, 0, 0);
  desktop_->RunModal(window);
  EXPECT_TRUE(disabled);
  EXPECT_EQ(top.Count(WM_LBUTTONDOWN), 0);
  EXPECT_EQ(desktop_->Find(top.window)->Style() & WS_DISABLED, 0U);
  EXPECT_EQ(desktop_->Active(), top.window);
  EXPECT_EQ(top.Order({WM_ENABLE}), (std::vector<UINT>{WM_ENABLE, WM_ENABLE}));
}

TEST_F(QtQueueTest, ModalLoopEndsWithItsWindowAndNestsToo) {
  std::vector<int> order;
  Witness outer;
  Witness inner;
  WindowRequest request;
  request.kind = WindowKind::Dialog;
  request.style = WS_CAPTION | WS_VISIBLE;
  request.place = {0, 0, 100, 100};
  request.parent = top.window;
  const HWND first = Make(request, &outer);
  outer.on_message = [&](UINT message, WPARAM, LPARAM, LRESULT&) {
    if (message != WM_APP) return false;
    WindowRequest below = request;
    below.parent = first;
    const HWND second = Make(below, &inner);
    desktop_->Post(second, WM_CLOSE, 0, 0);
    desktop_->RunModal(second);
    order.push_back(2);
    desktop_->Find(first)->Destroy();
    return true;
  };
  desktop_->Post(first, WM_APP, 0, 0);
  desktop_->RunModal(first);
  order.push_back(1);
  EXPECT_EQ(order, (std::vector<int>{2, 1}));
  EXPECT_EQ(desktop_->Active(), top.window);
}

TEST_F(QtQueueTest, MenuGivesTheCommandThatIsChosen) {
  MenuModel below;
  below.entries.push_back({MF_STRING, 12, _T("矩形"), nullptr});
  MenuModel menu;
  menu.entries.push_back({MF_STRING, 10, _T("&Copy\tCtrl+C"), nullptr});
  menu.entries.push_back({MF_SEPARATOR, 0, CString(), nullptr});
  menu.entries.push_back({MF_GRAYED, 11, _T("Paste"), nullptr});
  menu.entries.push_back({MF_STRING, 0, _T("More"), std::make_shared<MenuModel>(below)});
  menu.entries.push_back({MF_CHECKED, 13, _T("Checked"), nullptr});
  bool was_up = false;
  const auto choose = [&](const std::function<void(QMenu&)>& step) {
    QTimer::singleShot(0, [&was_up, step, this] {
      was_up = desktop_->MenuUp();
      auto* const shown = qobject_cast<QMenu*>(QApplication::activePopupWidget());
      ASSERT_NE(shown, nullptr);
      step(*shown);
    });
    return desktop_->Popup(menu, {120, 120}, 0, top.window);
  };
  const auto key = [](QMenu& shown, int code) {
    QKeyEvent down(QEvent::KeyPress, code, Qt::NoModifier);
    QCoreApplication::sendEvent(&shown, &down);
  };
  EXPECT_EQ(choose([&](QMenu& shown) {
              key(shown, Qt::Key_Down);
              key(shown, Qt::Key_Return);
            }),
            10U);
  EXPECT_TRUE(was_up);
  EXPECT_FALSE(desktop_->MenuUp());
  EXPECT_EQ(choose([&](QMenu& shown) { key(shown, Qt::Key_Escape); }), 0U);
  EXPECT_EQ(choose([](QMenu& shown) {
              EXPECT_EQ(shown.actions().size(), 5);
              EXPECT_FALSE(shown.actions()[2]->isEnabled());
              EXPECT_TRUE(shown.actions()[4]->isChecked());
              QMenu* const more = shown.actions()[3]->menu();
              shown.setActiveAction(shown.actions()[3]);
              more->setActiveAction(more->actions()[0]);
              QKeyEvent down(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
              QCoreApplication::sendEvent(more, &down);
            }),
            12U);
}

TEST_F(QtQueueTest, NobodyIsOfferedAMessageWhileAMenuIsUp) {
  MenuModel menu;
  menu.entries.push_back({MF_STRING, 10, _T("a"), nullptr});
  top.offered.clear();
  desktop_->Post(top.window, WM_APP, 0, 0);
  QTimer::singleShot(20, [] {
    if (QWidget* const shown = QApplication::activePopupWidget()) shown->close();
  });
  desktop_->Popup(menu, {0, 0}, 0, top.window);
  EXPECT_EQ(top.Count(WM_APP), 1);
  EXPECT_TRUE(top.offered.empty());
}

TEST_F(QtQueueTest, QuitEndsTheLoops) {
  EXPECT_TRUE(desktop_->Post(nullptr, WM_QUIT, 0, 0));
  EXPECT_FALSE(desktop_->Pump(true));
}

TEST_F(QtQueueTest, SystemAnswersHaveSense) {
  EXPECT_NE(CRect(desktop_->Screen()).IsRectEmpty(), TRUE);
  EXPECT_NE(CRect(desktop_->WorkArea({0, 0})).IsRectEmpty(), TRUE);
  EXPECT_GT(desktop_->Metric(SM_CXVSCROLL), 4);
  EXPECT_GE(desktop_->Find(top.window)->Dpi(), 72);
  EXPECT_EQ(desktop_->Colour(COLOR_WINDOW), RGB(255, 255, 255));
  const UINT number = desktop_->RegisterMessage(_T("lorv.a"));
  EXPECT_GE(number, 0xC000U);
  EXPECT_EQ(desktop_->RegisterMessage(_T("lorv.a")), number);
  EXPECT_NE(desktop_->RegisterMessage(_T("lorv.b")), number);
  ASSERT_FALSE(desktop_->Layouts().empty());
  EXPECT_EQ(desktop_->ActivateLayout(desktop_->Layout(), 0), desktop_->Layout());
  EXPECT_EQ(desktop_->ActivateLayout(reinterpret_cast<HKL>(static_cast<UINT_PTR>(0x99)), 0), nullptr);
  const DWORD before = desktop_->Ticks();
  QThread::msleep(3);
  EXPECT_GE(desktop_->Ticks() - before, 2U);
}

}  // namespace
}  // namespace lorv::test
