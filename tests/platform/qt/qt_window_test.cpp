#include <QCloseEvent>
#include <QImage>
#include <QInputMethodQueryEvent>
#include <QPixmap>
#include <QScrollBar>
#include <QWheelEvent>

#include "framework/drawing/geometry.h"
#include "tests/platform/qt/qt_fixture.h"

namespace lorv::test {
namespace {

using QtWindowTest = QtTest;
using Order = std::vector<UINT>;

TEST_F(QtWindowTest, BeginsWithCreateThenSizeThenShow) {
  Witness child;
  WindowRequest request;
  request.style = WS_CHILD | WS_VISIBLE;
  request.place = {10, 20, 110, 70};
  request.parent = top.window;
  request.id = 7;
  ASSERT_NE(Make(request, &child), nullptr);
  ASSERT_GE(child.reported.size(), 3U);
  EXPECT_EQ(child.Order({WM_CREATE, WM_SIZE, WM_SHOWWINDOW}), (Order{WM_CREATE, WM_SIZE, WM_SHOWWINDOW}));
  EXPECT_EQ(child.reported[1].l, MAKELPARAM(100, 50));
  EXPECT_EQ(desktop_->Find(child.window)->Id(), 7U);
}

TEST_F(QtWindowTest, CreateRefusedEndsTheWindow) {
  Witness child;
  child.on_message = [](UINT message, WPARAM, LPARAM, LRESULT& answer) {
    answer = -1;
    return message == WM_CREATE;
  };
  EXPECT_EQ(Child(WindowKind::Custom, 0, 1, {0, 0, 9, 9}, &child), nullptr);
  EXPECT_EQ(child.Order({WM_CREATE, WM_DESTROY, WM_NCDESTROY}), (Order{WM_CREATE, WM_DESTROY, WM_NCDESTROY}));
  EXPECT_TRUE(desktop_->Find(top.window)->Children().empty());
}

TEST_F(QtWindowTest, ChildNeedsAParentThatLives) {
  WindowRequest request;
  request.style = WS_CHILD;
  request.attach = [](HWND) {};
  EXPECT_EQ(desktop_->Create(request), nullptr);
  request.parent = reinterpret_cast<HWND>(static_cast<UINT_PTR>(0x77777));
  EXPECT_EQ(desktop_->Create(request), nullptr);
}

TEST_F(QtWindowTest, EndsFromTheOutsideInThenFromTheInsideOut) {
  std::vector<std::pair<int, UINT>> order;
  Witness outer;
  Witness inner;
  const auto write = [&order](int which) {
    return [&order, which](UINT message, WPARAM, LPARAM, LRESULT&) {
      if (message == WM_DESTROY || message == WM_NCDESTROY) order.push_back({which, message});
      return false;
    };
  };
  outer.on_message = write(1);
  inner.on_message = write(2);
  Child(WindowKind::Custom, 0, 1, {0, 0, 90, 90}, &outer);
  WindowRequest request;
  request.style = WS_CHILD;
  request.parent = outer.window;
  Make(request, &inner);
  const auto peer = desktop_->Find(outer.window);
  peer->Destroy();
  peer->Destroy();
  EXPECT_EQ(order, (std::vector<std::pair<int, UINT>>{
                       {1, WM_DESTROY}, {2, WM_DESTROY}, {2, WM_NCDESTROY}, {1, WM_NCDESTROY}}));
  EXPECT_FALSE(peer->Exists());
  EXPECT_EQ(desktop_->Find(outer.window), nullptr);
  EXPECT_EQ(CRect(peer->ClientRect()), CRect());
  EXPECT_EQ(peer->Default(WM_GETTEXTLENGTH, 0, 0), 0);
  EXPECT_NE(peer->ClientCanvas(), nullptr);
}

TEST_F(QtWindowTest, PlaceReportsMoveAndSizeOnceAndOnlyOfChanges) {
  Witness child;
  Child(WindowKind::Custom, 0, 1, {0, 0, 50, 40}, &child);
  child.reported.clear();
  const auto peer = desktop_->Find(child.window);
  peer->Place({5, 6, 65, 56});
  Settle();
  EXPECT_EQ(child.Order({WM_MOVE, WM_SIZE}), (Order{WM_MOVE, WM_SIZE}));
  EXPECT_EQ(CRect(peer->ClientRect()), CRect(0, 0, 60, 50));
  child.reported.clear();
  peer->Place({5, 6, 65, 56});
  Settle();
  EXPECT_EQ(child.Order({WM_MOVE, WM_SIZE}), Order{});
  peer->Place({7, 6, 67, 56});
  EXPECT_EQ(child.Order({WM_MOVE, WM_SIZE}), Order{WM_MOVE});
  EXPECT_EQ(child.reported.back().l, MAKELPARAM(7, 6));
}

TEST_F(QtWindowTest, KeyIsOfferedUpwardsThenReportedThenItsCharacter) {
  Witness child;
  Child(WindowKind::Custom, 0, 1, {0, 0, 50, 40}, &child);
  desktop_->Find(child.window)->Focus();
  child.reported.clear();
  Key(child.window, Qt::Key_A, QStringLiteral("a"));
  EXPECT_EQ(child.Order({WM_KEYDOWN, WM_CHAR, WM_KEYUP}), (Order{WM_KEYDOWN, WM_CHAR, WM_KEYUP}));
  EXPECT_EQ(child.reported[0].w, static_cast<WPARAM>('A'));
  EXPECT_EQ(child.reported[1].w, static_cast<WPARAM>('a'));
  EXPECT_GE(top.offered.size(), 3U);
}

TEST_F(QtWindowTest, KeyTakenByAParentGivesNeitherMessageNorCharacter) {
  Witness child;
  Child(WindowKind::Custom, 0, 1, {0, 0, 50, 40}, &child);
  top.on_offer = [](const MSG& message) { return message.message == WM_KEYDOWN; };
  Key(child.window, Qt::Key_Return, QStringLiteral("\r"));
  EXPECT_EQ(child.Order({WM_KEYDOWN, WM_CHAR}), Order{});
}

TEST_F(QtWindowTest, AltMakesSystemKeysAndControlMakesControlCharacters) {
  Witness child;
  Child(WindowKind::Custom, 0, 1, {0, 0, 50, 40}, &child);
  child.reported.clear();
  Key(child.window, Qt::Key_F, QStringLiteral("f"), Qt::AltModifier);
  EXPECT_EQ(child.Order({WM_SYSKEYDOWN, WM_SYSCHAR, WM_SYSKEYUP}),
            (Order{WM_SYSKEYDOWN, WM_SYSCHAR, WM_SYSKEYUP}));
  child.reported.clear();
  short held = 0;
  child.on_message = [&](UINT message, WPARAM, LPARAM, LRESULT&) {
    if (message == WM_KEYDOWN) held = desktop_->KeyState(VK_CONTROL);
    return false;
  };
  Key(child.window, Qt::Key_C, {}, Qt::ControlModifier);
  EXPECT_LT(held, 0);
  ASSERT_EQ(child.Count(WM_CHAR), 1);
  EXPECT_EQ(child.reported[1].w, WPARAM{3});
}

TEST_F(QtWindowTest, MouseGoesToTheChildWithItsOwnPlace) {
  Witness child;
  Child(WindowKind::Custom, 0, 1, {30, 20, 130, 120}, &child);
  child.reported.clear();
  Click(child.window, QPoint(11, 12));
  EXPECT_EQ(child.Order({WM_SETCURSOR, WM_LBUTTONDOWN, WM_LBUTTONUP}),
            (Order{WM_SETCURSOR, WM_LBUTTONDOWN, WM_SETCURSOR, WM_LBUTTONUP}));
  const auto down = std::find_if(child.reported.begin(), child.reported.end(),
                                 [](const Witness::Report& t) { return t.message == WM_LBUTTONDOWN; });
  EXPECT_EQ(down->l, MAKELPARAM(11, 12));
  EXPECT_EQ(down->w, WPARAM{MK_LBUTTON});
}

TEST_F(QtWindowTest, CaptureTakesTheMouseOfOthersAndReportsWhenItEnds) {
  Witness first;
  Witness second;
  Child(WindowKind::Custom, 0, 1, {0, 0, 50, 50}, &first);
  Child(WindowKind::Custom, 0, 2, {100, 0, 150, 50}, &second);
  desktop_->SetCapture(first.window);
  EXPECT_EQ(desktop_->Capture(), first.window);
  Mouse(WidgetOf(second.window), QEvent::MouseMove, QPoint(5, 6), Qt::NoButton, Qt::NoButton);
  EXPECT_EQ(second.Count(WM_MOUSEMOVE), 0);
  ASSERT_EQ(first.Count(WM_MOUSEMOVE), 1);
  for (const Witness::Report& t : first.reported)
    EXPECT_TRUE(t.message != WM_MOUSEMOVE || t.l == MAKELPARAM(105, 6));
  desktop_->SetCapture(second.window);
  EXPECT_EQ(first.Count(WM_CAPTURECHANGED), 1);
  EXPECT_EQ(first.reported.back().l, reinterpret_cast<LPARAM>(second.window));
  desktop_->SetCapture(nullptr);
}

TEST_F(QtWindowTest, HiddenWindowThatHasTheMouseGetsItThroughItsParent) {
  Witness child;
  Child(WindowKind::Custom, 0, 1, {30, 20, 130, 120}, &child);
  desktop_->Find(child.window)->Show(SW_HIDE);
  desktop_->SetCapture(child.window);
  QWidget* const grabber = QWidget::mouseGrabber();
  ASSERT_NE(grabber, nullptr);
  Mouse(grabber, QEvent::MouseButtonRelease, QPoint(40, 40), Qt::LeftButton, Qt::NoButton);
  EXPECT_EQ(child.Count(WM_LBUTTONUP), 1);
  EXPECT_EQ(top.Count(WM_LBUTTONUP), 0);
  desktop_->SetCapture(nullptr);
  EXPECT_EQ(QWidget::mouseGrabber(), nullptr);
}

TEST_F(QtWindowTest, DisabledChildLeavesTheMouseToItsParent) {
  Witness child;
  Child(WindowKind::Custom, WS_DISABLED, 1, {30, 20, 130, 120}, &child);
  child.reported.clear();
  Click(child.window, QPoint(1, 2));
  EXPECT_EQ(child.Count(WM_LBUTTONDOWN), 0);
  ASSERT_EQ(top.Count(WM_LBUTTONDOWN), 1);
}

TEST_F(QtWindowTest, WheelGoesToTheFocus) {
  Witness child;
  Child(WindowKind::Custom, 0, 1, {0, 0, 50, 50}, &child);
  desktop_->Find(child.window)->Focus();
  QWheelEvent turned(QPointF(2, 3), QPointF(102, 103), QPoint(), QPoint(0, -120), Qt::NoButton,
                     Qt::NoModifier, Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(WidgetOf(top.window), &turned);
  ASSERT_EQ(child.Count(WM_MOUSEWHEEL), 1);
  EXPECT_EQ(static_cast<short>(HIWORD(child.reported.back().w)), -120);
  // What the child leaves alone comes to its parent.
  EXPECT_EQ(top.Count(WM_MOUSEWHEEL), 1);
}

TEST_F(QtWindowTest, FocusMovesWithLossFirst) {
  Witness first;
  Witness second;
  Child(WindowKind::Custom, 0, 1, {0, 0, 50, 50}, &first);
  Child(WindowKind::Custom, 0, 2, {50, 0, 99, 50}, &second);
  desktop_->Find(first.window)->Focus();
  EXPECT_EQ(desktop_->Focus(), first.window);
  bool lost_before = false;
  second.on_message = [&](UINT message, WPARAM, LPARAM, LRESULT&) {
    if (message == WM_SETFOCUS) lost_before = first.Count(WM_KILLFOCUS) == 1;
    return false;
  };
  desktop_->Find(second.window)->Focus();
  EXPECT_TRUE(lost_before);
  EXPECT_EQ(desktop_->Focus(), second.window);
  desktop_->Find(second.window)->Destroy();
  EXPECT_EQ(desktop_->Focus(), top.window);
}

TEST_F(QtWindowTest, HiddenFocusGoesToTheParentAndDisabledFocusToNobody) {
  Witness child;
  Child(WindowKind::Custom, 0, 1, {0, 0, 50, 50}, &child);
  const auto peer = desktop_->Find(child.window);
  peer->Focus();
  peer->Show(SW_HIDE);
  EXPECT_EQ(desktop_->Focus(), top.window);
  peer->Show(SW_SHOW);
  peer->Focus();
  peer->Enable(false);
  EXPECT_EQ(desktop_->Focus(), nullptr);
  EXPECT_EQ(child.Order({WM_CANCELMODE, WM_ENABLE}), (Order{WM_CANCELMODE, WM_ENABLE}));
  EXPECT_NE(peer->Style() & WS_DISABLED, 0U);
}

TEST_F(QtWindowTest, FocusOfAForeignWidgetIsSomeForeignHandle) {
  desktop_->Find(top.window)->Destroy();
  QWidget foreign;
  foreign.show();
  foreign.activateWindow();
  foreign.setFocus();
  ASSERT_TRUE(DispatchUntil([&] { return QApplication::focusWidget() == &foreign; }));
  EXPECT_NE(desktop_->Focus(), nullptr);
  EXPECT_EQ(desktop_->Find(desktop_->Focus()), nullptr);
}

TEST_F(QtWindowTest, FocusThatGoesToAForeignWidgetIsReported) {
  Witness child;
  Child(WindowKind::Custom, 0, 1, {0, 0, 50, 40}, &child);
  desktop_->Find(child.window)->Focus();
  Settle();
  QWidget foreign;
  foreign.show();
  foreign.activateWindow();
  EXPECT_TRUE(DispatchUntil([&] { return child.Count(WM_KILLFOCUS) == 1; }));
  EXPECT_EQ(top.Order({WM_ACTIVATE}), std::vector<UINT>{WM_ACTIVATE});
  EXPECT_EQ(desktop_->Active(), nullptr);
  EXPECT_EQ(desktop_->Find(desktop_->Focus()), nullptr);
  desktop_->Find(top.window)->Activate();
  EXPECT_TRUE(DispatchUntil([&] { return QApplication::activeWindow() == WidgetOf(top.window); }));
}

TEST_F(QtWindowTest, CloseAsksTheClassAndEndsByDefault) {
  bool keep = true;
  top.on_message = [&keep](UINT message, WPARAM, LPARAM, LRESULT&) { return message == WM_CLOSE && keep; };
  QCloseEvent first;
  QCoreApplication::sendEvent(WidgetOf(top.window), &first);
  EXPECT_EQ(top.Count(WM_CLOSE), 1);
  EXPECT_NE(desktop_->Find(top.window), nullptr);
  keep = false;
  QCloseEvent second;
  QCoreApplication::sendEvent(WidgetOf(top.window), &second);
  EXPECT_EQ(desktop_->Find(top.window), nullptr);
  Settle();
}

TEST_F(QtWindowTest, TextIsTheCaption) {
  EXPECT_EQ(TextOf(top.window), CString(_T("墙体")));
  desktop_->Find(top.window)->SetText(_T("梁柱"));
  EXPECT_EQ(WidgetOf(top.window)->windowTitle(), QStringLiteral("梁柱"));
  TCHAR room[2] = {1, 1};
  EXPECT_EQ(Send(top.window, WM_GETTEXT, 2, reinterpret_cast<LPARAM>(room)), 1);
  EXPECT_EQ(room[1], 0);
  EXPECT_EQ(Send(top.window, WM_GETTEXTLENGTH), 2);
}

TEST_F(QtWindowTest, ScrollRangeHidesTheBarThatFits) {
  Witness child;
  Child(WindowKind::Custom, WS_VSCROLL, 1, {0, 0, 100, 100}, &child);
  const auto peer = desktop_->Find(child.window);
  const int bar = desktop_->Metric(SM_CXVSCROLL);
  EXPECT_EQ(CRect(peer->ClientRect()), CRect(0, 0, 100 - bar, 100));
  SCROLLINFO info = {};
  info.fMask = SIF_ALL;
  info.nMax = 9;
  info.nPage = 10;
  peer->SetScroll(SB_VERT, info);
  EXPECT_EQ(CRect(peer->ClientRect()), CRect(0, 0, 100, 100));
  EXPECT_EQ(peer->Style() & WS_VSCROLL, 0U);
  info.nPage = 4;
  info.nPos = 99;
  peer->SetScroll(SB_VERT, info);
  EXPECT_EQ(peer->Scroll(SB_VERT).nPos, 6);
  EXPECT_NE(peer->Style() & WS_VSCROLL, 0U);
}

TEST_F(QtWindowTest, BarAsksAndDoesNotMoveByItself) {
  Witness child;
  Child(WindowKind::Custom, WS_VSCROLL, 1, {0, 0, 100, 100}, &child);
  const auto peer = desktop_->Find(child.window);
  SCROLLINFO info = {};
  info.fMask = SIF_ALL;
  info.nMax = 99;
  info.nPage = 10;
  peer->SetScroll(SB_VERT, info);
  child.reported.clear();
  auto* const bar = WidgetOf(child.window)->findChild<QScrollBar*>();
  ASSERT_NE(bar, nullptr);
  bar->triggerAction(QAbstractSlider::SliderSingleStepAdd);
  ASSERT_EQ(child.Count(WM_VSCROLL), 2);
  EXPECT_EQ(LOWORD(child.reported[0].w), SB_LINEDOWN);
  EXPECT_EQ(LOWORD(child.reported[1].w), SB_ENDSCROLL);
  EXPECT_EQ(bar->value(), 0);
  info.fMask = SIF_POS;
  info.nPos = 5;
  peer->SetScroll(SB_VERT, info);
  EXPECT_EQ(bar->value(), 5);
  child.reported.clear();
  bar->setSliderDown(true);
  bar->setSliderPosition(40);
  bar->setSliderDown(false);
  ASSERT_GE(child.Count(WM_VSCROLL), 3);
  EXPECT_EQ(LOWORD(child.reported[0].w), SB_THUMBTRACK);
  EXPECT_EQ(HIWORD(child.reported[0].w), 40);
  EXPECT_EQ(LOWORD(child.reported[1].w), SB_THUMBPOSITION);
  EXPECT_EQ(bar->value(), 5);
}

TEST_F(QtWindowTest, DialogWithoutASizingFrameKeepsTheSizeOfTheProgram) {
  Witness dialog;
  WindowRequest request;
  request.kind = WindowKind::Dialog;
  request.style = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_VISIBLE;
  request.place = {150, 150, 350, 250};
  const HWND window = Make(request, &dialog);
  const QWidget* const widget = QtWidgetOf(window);
  EXPECT_EQ(widget->minimumSize(), widget->size());
  EXPECT_EQ(widget->maximumSize(), widget->size());
  EXPECT_FALSE(widget->windowFlags().testFlag(Qt::WindowMaximizeButtonHint));
  const QSize before = widget->size();
  desktop_->Find(window)->Show(SW_SHOWMAXIMIZED);
  EXPECT_EQ(widget->size(), before);
  // The program may size it.
  desktop_->Find(window)->Place({150, 150, 400, 300});
  EXPECT_GT(widget->width(), before.width());
  EXPECT_EQ(widget->maximumSize(), widget->size());
  desktop_->Find(window)->SetStyle(desktop_->Find(window)->Style() | WS_THICKFRAME);
  EXPECT_GT(widget->maximumWidth(), 10000);
}

TEST_F(QtWindowTest, CandidatesStandAtTheCaretOfTheWindowClass) {
  Witness child;
  const HWND window = Child(WindowKind::Custom, WS_BORDER, 1, {10, 10, 110, 60}, &child);
  desktop_->Find(window)->SetCompositionCaret({20, 5, 21, 21});
  QInputMethodQueryEvent query(Qt::ImCursorRectangle | Qt::ImEnabled);
  QCoreApplication::sendEvent(QtWidgetOf(window), &query);
  EXPECT_EQ(query.value(Qt::ImCursorRectangle).toRect(), QRect(21, 6, 1, 16));
  EXPECT_TRUE(query.value(Qt::ImEnabled).toBool());
}

TEST_F(QtWindowTest, ButtonWithTheFocusLooksOtherwise) {
  Child(WindowKind::Button, BS_PUSHBUTTON, 1, {10, 10, 110, 40});
  const HWND second = Child(WindowKind::Button, BS_PUSHBUTTON, 2, {10, 50, 110, 80});
  ASSERT_TRUE(DispatchUntil([] { return QApplication::activeWindow() != nullptr; }));
  Settle();
  const QImage before = QtWidgetOf(second)->grab().toImage();
  desktop_->Find(second)->Focus();
  EXPECT_TRUE(DispatchUntil([&] { return QtWidgetOf(second)->grab().toImage() != before; }));
}

TEST_F(QtWindowTest, LeaveIsReportedOnceWhenAskedFor) {
  Witness child;
  Child(WindowKind::Custom, 0, 1, {0, 0, 50, 50}, &child);
  Mouse(WidgetOf(child.window), QEvent::MouseMove, QPoint(5, 5), Qt::NoButton, Qt::NoButton);
  desktop_->Find(child.window)->TrackLeave();
  for (int i = 0; i < 2; ++i) {
    QEvent gone(QEvent::Leave);
    QCoreApplication::sendEvent(WidgetOf(child.window), &gone);
  }
  EXPECT_EQ(child.Count(WM_MOUSELEAVE), 1);
}

TEST_F(QtWindowTest, WindowAtIsTheInnermost) {
  const HWND child = Child(WindowKind::Custom, 0, 1, {30, 20, 130, 120});
  const CPoint origin(desktop_->Find(child)->ClientOrigin());
  EXPECT_EQ(desktop_->WindowAt(origin + CSize(1, 1)), child);
  EXPECT_EQ(desktop_->WindowAt(origin - CSize(1, 1)), top.window);
  EXPECT_EQ(desktop_->WindowAt({-5000, -5000}), nullptr);
}

// Edits and lists lay out their inner part only when they are shown.
TEST_F(QtWindowTest, ControlsOfAHiddenWindowKnowTheirClientAreaOnceItIsShown) {
  WindowRequest request;
  request.kind = WindowKind::Dialog;
  request.style = WS_POPUP | WS_CAPTION;
  request.place = {50, 50, 450, 350};
  Witness dialog;
  ASSERT_NE(Make(request, &dialog), nullptr);
  for (const WindowKind kind : {WindowKind::Edit, WindowKind::List}) {
    WindowRequest control;
    control.kind = kind;
    control.style = WS_CHILD | WS_VISIBLE | WS_BORDER | ES_MULTILINE;
    control.parent = dialog.window;
    control.place = {10, 10, 310, 210};
    const HWND window = Make(control, nullptr);
    desktop_->Find(dialog.window)->Show(SW_SHOW);
    Settle();
    const CRect client(desktop_->Find(window)->ClientRect());
    EXPECT_GE(client.Width(), 290);
    EXPECT_LE(client.Width(), 300);
    EXPECT_GE(client.Height(), 190);
    desktop_->Find(dialog.window)->Show(SW_HIDE);
  }
  desktop_->Find(dialog.window)->Destroy();
}

TEST_F(QtWindowTest, RightClickAsksForAMenuUpwards) {
  Witness child;
  Child(WindowKind::Custom, 0, 1, {30, 20, 130, 120}, &child);
  QWidget* const widget = WidgetOf(child.window);
  Mouse(widget, QEvent::MouseButtonPress, QPoint(3, 4), Qt::RightButton, Qt::RightButton);
  Mouse(widget, QEvent::MouseButtonRelease, QPoint(3, 4), Qt::RightButton, Qt::NoButton);
  EXPECT_EQ(child.Count(WM_CONTEXTMENU), 1);
  ASSERT_EQ(top.Count(WM_CONTEXTMENU), 1);
  const CPoint at = CPoint(desktop_->Find(child.window)->ClientOrigin()) + CSize(3, 4);
  EXPECT_EQ(top.reported.back().l, MAKELPARAM(at.x, at.y));
}

}  // namespace
}  // namespace lorv::test
