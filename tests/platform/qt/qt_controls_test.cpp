#include <QComboBox>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <limits>

#include "tests/platform/qt/qt_fixture.h"

namespace lorv::test {
namespace {

using QtControlsTest = QtTest;
using Notes = std::vector<UINT>;
constexpr RECT kPlace = {10, 10, 210, 34};
constexpr RECT kTall = {10, 10, 210, 110};
constexpr int kId = 5;

std::pair<DWORD, DWORD> SelectionOf(HWND edit) {
  std::pair<DWORD, DWORD> pair;
  DesktopInForce().Send(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&pair.first),
                        reinterpret_cast<LPARAM>(&pair.second));
  return pair;
}

TEST_F(QtControlsTest, TypingReportsUpdateThenChange) {
  const HWND edit = Child(WindowKind::Edit, 0, kId, kPlace);
  desktop_->Find(edit)->Focus();
  Type(edit, QStringLiteral("C30"));
  EXPECT_EQ(TextOf(edit), CString(_T("C30")));
  EXPECT_EQ(top.Notes(kId),
            (Notes{EN_SETFOCUS, EN_UPDATE, EN_CHANGE, EN_UPDATE, EN_CHANGE, EN_UPDATE, EN_CHANGE}));
  EXPECT_EQ(Send(edit, EM_GETMODIFY), 1);
}

TEST_F(QtControlsTest, TextOfAProgramIsReportedInOneLineOnlyEvenIfItIsTheSame) {
  const HWND line = Child(WindowKind::Edit, 0, kId, kPlace);
  const HWND lines = Child(WindowKind::Edit, ES_MULTILINE, kId + 1, kTall);
  desktop_->Find(line)->SetText(CString());
  desktop_->Find(line)->SetText(_T("a"));
  desktop_->Find(lines)->SetText(_T("a"));
  EXPECT_EQ(top.Notes(kId), (Notes{EN_UPDATE, EN_CHANGE, EN_UPDATE, EN_CHANGE}));
  EXPECT_EQ(top.Notes(kId + 1), Notes{});
  SendText(lines, EM_REPLACESEL, 0, _T("b"));
  EXPECT_EQ(top.Notes(kId + 1), (Notes{EN_UPDATE, EN_CHANGE}));
}

TEST_F(QtControlsTest, SelectionCountsUnitsAndTurnsPairsRound) {
  const HWND edit = Child(WindowKind::Edit, 0, kId, kPlace, nullptr, _T("墙a𠮷b"));
  EXPECT_EQ(SelectionOf(edit), (std::pair<DWORD, DWORD>(0, 0)));
  Send(edit, EM_SETSEL, 3, 1);
  EXPECT_EQ(SelectionOf(edit), (std::pair<DWORD, DWORD>(1, 3)));
  Send(edit, EM_SETSEL, 0, -1);
  EXPECT_EQ(SelectionOf(edit), (std::pair<DWORD, DWORD>(0, 5)));
  EXPECT_EQ(Send(edit, EM_GETSEL), MAKELONG(0, 5));
  Send(edit, EM_SETSEL, static_cast<WPARAM>(-1), 0);
  EXPECT_EQ(SelectionOf(edit), (std::pair<DWORD, DWORD>(5, 5)));
  Key(edit, Qt::Key_Backspace);
  Key(edit, Qt::Key_Backspace);
  EXPECT_EQ(TextOf(edit), CString(_T("墙a")));
}

TEST_F(QtControlsTest, CaretKeysMoveAndSelect) {
  const HWND edit = Child(WindowKind::Edit, 0, kId, kPlace, nullptr, _T("one two"));
  Key(edit, Qt::Key_End);
  EXPECT_EQ(SelectionOf(edit).first, 7U);
  Key(edit, Qt::Key_Left, {}, Qt::ShiftModifier);
  EXPECT_EQ(SelectionOf(edit), (std::pair<DWORD, DWORD>(6, 7)));
  Key(edit, Qt::Key_Left);
  EXPECT_EQ(SelectionOf(edit), (std::pair<DWORD, DWORD>(6, 6)));
  Key(edit, Qt::Key_Left, {}, Qt::ControlModifier);
  EXPECT_EQ(SelectionOf(edit).first, 4U);
  Key(edit, Qt::Key_Home);
  Key(edit, Qt::Key_Delete);
  EXPECT_EQ(TextOf(edit), CString(_T("ne two")));
}

TEST_F(QtControlsTest, LimitStopsTypingAndSaysSo) {
  const HWND edit = Child(WindowKind::Edit, 0, kId, kPlace);
  Send(edit, EM_SETLIMITTEXT, 2);
  EXPECT_EQ(Send(edit, EM_GETLIMITTEXT), 2);
  Type(edit, QStringLiteral("abc"));
  EXPECT_EQ(TextOf(edit), CString(_T("ab")));
  EXPECT_EQ(top.Notes(kId).back(), EN_MAXTEXT);
  desktop_->Find(edit)->SetText(_T("longer"));
  EXPECT_EQ(TextOf(edit), CString(_T("longer")));
}

TEST_F(QtControlsTest, StylesOfAnEditHold) {
  const HWND number = Child(WindowKind::Edit, ES_NUMBER, kId, kPlace);
  Type(number, QStringLiteral("1a2"));
  EXPECT_EQ(TextOf(number), CString(_T("12")));
  const HWND upper = Child(WindowKind::Edit, ES_UPPERCASE, kId, kPlace);
  Type(upper, QStringLiteral("c30"));
  EXPECT_EQ(TextOf(upper), CString(_T("C30")));
  const HWND fixed = Child(WindowKind::Edit, ES_READONLY, kId, kPlace, nullptr, _T("x"));
  Type(fixed, QStringLiteral("y"));
  Key(fixed, Qt::Key_Delete);
  EXPECT_EQ(TextOf(fixed), CString(_T("x")));
  Send(fixed, EM_SETREADONLY, 0);
  Type(fixed, QStringLiteral("y"));
  EXPECT_EQ(TextOf(fixed), CString(_T("yx")));
}

TEST_F(QtControlsTest, UndoGoesBackAndOn) {
  const HWND edit = Child(WindowKind::Edit, 0, kId, kPlace, nullptr, _T("a"));
  EXPECT_EQ(Send(edit, EM_CANUNDO), 0);
  Send(edit, EM_SETSEL, 1, 1);
  SendText(edit, EM_REPLACESEL, 1, _T("b"));
  EXPECT_EQ(Send(edit, EM_CANUNDO), 1);
  EXPECT_EQ(Send(edit, EM_UNDO), 1);
  EXPECT_EQ(TextOf(edit), CString(_T("a")));
  EXPECT_EQ(Send(edit, EM_UNDO), 1);
  EXPECT_EQ(TextOf(edit), CString(_T("ab")));
  Send(edit, EM_EMPTYUNDOBUFFER);
  EXPECT_EQ(Send(edit, EM_UNDO), 0);
}

TEST_F(QtControlsTest, SeveralLinesCountBothUnitsOfALineEnd) {
  const HWND edit =
      Child(WindowKind::Edit, ES_MULTILINE | ES_AUTOHSCROLL, kId, kTall, nullptr, _T("ab\r\ncde\r\n"));
  EXPECT_EQ(TextOf(edit), CString(_T("ab\r\ncde\r\n")));
  EXPECT_EQ(Send(edit, EM_GETLINECOUNT), 3);
  EXPECT_EQ(Send(edit, EM_LINEINDEX, 1), 4);
  EXPECT_EQ(Send(edit, EM_LINEINDEX, 3), -1);
  EXPECT_EQ(Send(edit, EM_LINELENGTH, 5), 3);
  EXPECT_EQ(Send(edit, EM_LINEFROMCHAR, 9), 2);
  Send(edit, EM_SETSEL, 4, 7);
  EXPECT_EQ(SelectionOf(edit), (std::pair<DWORD, DWORD>(4, 7)));
  TCHAR room[8] = {7};
  EXPECT_EQ(Send(edit, EM_GETLINE, 1, reinterpret_cast<LPARAM>(room)), 3);
  EXPECT_EQ(CString(room, 3), CString(_T("cde")));
  Send(edit, EM_SETSEL, 2, 2);
  Key(edit, Qt::Key_Return);
  EXPECT_EQ(TextOf(edit), CString(_T("ab\r\n\r\ncde\r\n")));
  EXPECT_EQ(SelectionOf(edit).first, 4U);
}

TEST_F(QtControlsTest, ScrollingByAnyNumberStopsAtTheEnds) {
  CString text;
  for (int i = 0; i < 40; ++i) text += _T("x\r\n");
  const HWND edit = Child(WindowKind::Edit, ES_MULTILINE | ES_AUTOHSCROLL, kId, kTall, nullptr, text);
  constexpr LPARAM kMost = std::numeric_limits<int>::max();
  Send(edit, EM_LINESCROLL, 0, 5);
  EXPECT_EQ(Send(edit, EM_GETFIRSTVISIBLELINE), 5);
  Send(edit, EM_LINESCROLL, 0, kMost);
  const LRESULT last = Send(edit, EM_GETFIRSTVISIBLELINE);
  EXPECT_GT(last, 5);
  Send(edit, EM_LINESCROLL, 0, kMost);
  EXPECT_EQ(Send(edit, EM_GETFIRSTVISIBLELINE), last);
  Send(edit, EM_LINESCROLL, 0, -kMost);
  EXPECT_EQ(Send(edit, EM_GETFIRSTVISIBLELINE), 0);
}

TEST_F(QtControlsTest, SeveralLinesWrapAtTheWidth) {
  const HWND edit = Child(WindowKind::Edit, ES_MULTILINE, kId, {0, 0, 60, 90});
  desktop_->Find(edit)->SetText(_T("one two three four five six seven"));
  EXPECT_GT(Send(edit, EM_GETLINECOUNT), 2);
  EXPECT_GT(Send(edit, EM_LINEINDEX, 1), 0);
}

TEST_F(QtControlsTest, PlacesAndPositionsAgree) {
  const HWND edit = Child(WindowKind::Edit, 0, kId, kPlace, nullptr, _T("abcdef"));
  const LRESULT at = Send(edit, EM_POSFROMCHAR, 3);
  const int across = static_cast<short>(LOWORD(at));
  EXPECT_GT(across, 0);
  EXPECT_EQ(LOWORD(Send(edit, EM_CHARFROMPOS, 0, MAKELPARAM(across, 5))), 3);
  EXPECT_EQ(Send(edit, EM_POSFROMCHAR, 7), -1);
  Click(edit, QPoint(across, 10));
  EXPECT_EQ(SelectionOf(edit).first, 3U);
  EXPECT_EQ(desktop_->Focus(), edit);
}

TEST_F(QtControlsTest, ClipboardKeysCutCopyPaste) {
  const HWND edit = Child(WindowKind::Edit, 0, kId, kPlace, nullptr, _T("墙体"));
  Key(edit, Qt::Key_A, {}, Qt::ControlModifier);
  Key(edit, Qt::Key_X, {}, Qt::ControlModifier);
  EXPECT_EQ(TextOf(edit), CString());
  EXPECT_EQ(desktop_->ClipboardText(), CString(_T("墙体")));
  Key(edit, Qt::Key_V, {}, Qt::ControlModifier);
  Key(edit, Qt::Key_V, {}, Qt::ControlModifier);
  EXPECT_EQ(TextOf(edit), CString(_T("墙体墙体")));
  desktop_->SetClipboardText(_T("1\r\n2"));
  EXPECT_EQ(desktop_->ClipboardText(), CString(_T("1\r\n2")));
  desktop_->Find(edit)->SetText(CString());
  Send(edit, WM_PASTE);
  EXPECT_EQ(TextOf(edit), CString(_T("1")));
}

TEST_F(QtControlsTest, CommittedCompositionIsTypedAndReported) {
  const HWND edit = Child(WindowKind::Edit, 0, kId, kPlace);
  QInputMethodEvent composing(QStringLiteral("qiang"), {});
  QCoreApplication::sendEvent(WidgetOf(edit), &composing);
  EXPECT_EQ(TextOf(edit), CString());
  QInputMethodEvent committed;
  committed.setCommitString(QStringLiteral("墙"));
  QCoreApplication::sendEvent(WidgetOf(edit), &committed);
  Settle();
  EXPECT_EQ(TextOf(edit), CString(_T("墙")));
  EXPECT_EQ(top.Notes(kId), (Notes{EN_UPDATE, EN_CHANGE}));
}

TEST_F(QtControlsTest, ChangeAtTheWidgetItselfIsReportedAfterwards) {
  const HWND edit = Child(WindowKind::Edit, 0, kId, kPlace);
  static_cast<QLineEdit*>(WidgetOf(edit))->insert(QStringLiteral("x"));
  EXPECT_EQ(top.Notes(kId), Notes{});
  Settle();
  EXPECT_EQ(top.Notes(kId), (Notes{EN_UPDATE, EN_CHANGE}));
}

TEST_F(QtControlsTest, EditMayEndInItsOwnNotification) {
  const HWND edit = Child(WindowKind::Edit, 0, kId, kPlace);
  top.on_message = [&](UINT message, WPARAM w, LPARAM, LRESULT&) {
    if (message == WM_COMMAND && HIWORD(w) == EN_UPDATE) desktop_->Find(edit)->Destroy();
    return false;
  };
  Type(edit, QStringLiteral("abc"));
  EXPECT_EQ(desktop_->Find(edit), nullptr);
  EXPECT_EQ(top.Notes(kId), Notes{EN_UPDATE});
}

TEST_F(QtControlsTest, EditMayEndInItsOwnKey) {
  Witness edit;
  Child(WindowKind::Edit, 0, kId, kPlace, &edit);
  const HWND window = edit.window;
  edit.on_message = [&](UINT message, WPARAM, LPARAM, LRESULT&) {
    if (message == WM_KEYDOWN) desktop_->Find(window)->Destroy();
    return false;
  };
  desktop_->Find(window)->Focus();
  QPointer<QWidget> widget = WidgetOf(window);
  QKeyEvent down(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"));
  QCoreApplication::sendEvent(widget, &down);
  EXPECT_EQ(desktop_->Find(window), nullptr);
  EXPECT_TRUE(DispatchUntil([&] { return widget.isNull(); }));
  EXPECT_EQ(edit.Count(WM_CHAR), 0);
}

// A widget lives until the events under way are over, and may get events meanwhile.
TEST_F(QtControlsTest, WidgetsReportNothingOnceTheirWindowsHaveEnded) {
  const HWND edit = Child(WindowKind::Edit, 0, kId, kPlace);
  const HWND lines = Child(WindowKind::Edit, ES_MULTILINE, kId, kPlace);
  const HWND combo = Child(WindowKind::Combo, CBS_DROPDOWNLIST, kId, kPlace);
  SendText(combo, CB_ADDSTRING, 0, _T("one"));
  QPointer<QWidget> line = WidgetOf(edit);
  QPointer<QWidget> text = WidgetOf(lines);
  QPointer<QWidget> list = WidgetOf(combo);
  Witness key;
  Child(WindowKind::Custom, 0, 2, kPlace, &key);
  bool has_worked = false;
  key.on_message = [&](UINT message, WPARAM, LPARAM, LRESULT&) {
    if (message != WM_KEYDOWN) return false;
    for (const HWND window : {edit, lines, combo}) desktop_->Find(window)->Destroy();
    has_worked = !line.isNull() && !text.isNull() && !list.isNull();
    if (!has_worked) return false;
    static_cast<QLineEdit*>(line.data())->insert(QStringLiteral("x"));
    static_cast<QPlainTextEdit*>(text.data())->insertPlainText(QStringLiteral("x"));
    static_cast<QComboBox*>(list.data())->hidePopup();
    Q_EMIT static_cast<QComboBox*>(list.data())->activated(0);
    return false;
  };
  desktop_->Find(key.window)->Focus();
  QKeyEvent down(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, QStringLiteral("a"));
  QCoreApplication::sendEvent(WidgetOf(key.window), &down);
  EXPECT_TRUE(has_worked);
  Settle();
  EXPECT_EQ(top.Notes(kId), Notes{});
}

TEST_F(QtControlsTest, ButtonClicksByMouseSpaceAndMessage) {
  const HWND button = Child(WindowKind::Button, BS_PUSHBUTTON, kId, kPlace, nullptr, _T("确定"));
  Click(button, QPoint(5, 5));
  EXPECT_EQ(top.Notes(kId), Notes{BN_CLICKED});
  Key(button, Qt::Key_Space, QStringLiteral(" "));
  Send(button, BM_CLICK);
  EXPECT_EQ(top.Notes(kId), (Notes{BN_CLICKED, BN_CLICKED, BN_CLICKED}));
  desktop_->Find(button)->Enable(false);
  Send(button, BM_CLICK);
  Click(button, QPoint(5, 5));
  EXPECT_EQ(top.Notes(kId).size(), 3U);
}

TEST_F(QtControlsTest, ReleaseBesideTheButtonClicksNothing) {
  const HWND button = Child(WindowKind::Button, 0, kId, kPlace);
  QWidget* const widget = WidgetOf(button);
  Mouse(widget, QEvent::MouseButtonPress, QPoint(5, 5), Qt::LeftButton, Qt::LeftButton);
  EXPECT_EQ(Send(button, BM_GETSTATE) & BST_PUSHED, BST_PUSHED);
  Mouse(widget, QEvent::MouseMove, QPoint(-5, 5), Qt::NoButton, Qt::LeftButton);
  Mouse(widget, QEvent::MouseButtonRelease, QPoint(-5, 5), Qt::LeftButton, Qt::NoButton);
  EXPECT_EQ(top.Notes(kId), Notes{});
  EXPECT_EQ(desktop_->Capture(), nullptr);
}

TEST_F(QtControlsTest, MarksChangeByThemselvesAndRadiosClearTheirGroup) {
  const HWND box = Child(WindowKind::Button, BS_AUTOCHECKBOX, 1, kPlace);
  Send(box, BM_CLICK);
  EXPECT_EQ(Send(box, BM_GETCHECK), BST_CHECKED);
  const HWND three = Child(WindowKind::Button, BS_AUTO3STATE, 2, kPlace);
  for (int i = 0; i < 2; ++i) Send(three, BM_CLICK);
  EXPECT_EQ(Send(three, BM_GETCHECK), BST_INDETERMINATE);
  const HWND first = Child(WindowKind::Button, BS_AUTORADIOBUTTON | WS_GROUP, 3, kPlace);
  const HWND second = Child(WindowKind::Button, BS_AUTORADIOBUTTON, 4, kPlace);
  const HWND other = Child(WindowKind::Button, BS_AUTORADIOBUTTON | WS_GROUP, 5, kPlace);
  Send(other, BM_CLICK);
  Send(first, BM_CLICK);
  Send(second, BM_CLICK);
  EXPECT_EQ(Send(first, BM_GETCHECK), BST_UNCHECKED);
  EXPECT_EQ(Send(second, BM_GETCHECK), BST_CHECKED);
  EXPECT_EQ(Send(other, BM_GETCHECK), BST_CHECKED);
  const HWND plain = Child(WindowKind::Button, BS_CHECKBOX, 6, kPlace);
  Send(plain, BM_CLICK);
  EXPECT_EQ(Send(plain, BM_GETCHECK), BST_UNCHECKED);
}

TEST_F(QtControlsTest, ListKeepsItemsInOrderWithTheirNumbers) {
  const HWND list = Child(WindowKind::List, LBS_NOTIFY | LBS_SORT, kId, kTall);
  EXPECT_EQ(SendText(list, LB_ADDSTRING, 0, _T("b")), 0);
  EXPECT_EQ(SendText(list, LB_ADDSTRING, 0, _T("A")), 0);
  EXPECT_EQ(SendText(list, LB_ADDSTRING, 0, _T("c")), 2);
  EXPECT_EQ(SendText(list, LB_INSERTSTRING, 9, _T("z")), LB_ERR);
  EXPECT_EQ(Send(list, LB_SETITEMDATA, 1, 77), 0);
  EXPECT_EQ(Send(list, LB_GETITEMDATA, 1), 77);
  EXPECT_EQ(Send(list, LB_GETCURSEL), LB_ERR);
  EXPECT_EQ(Send(list, LB_SETCURSEL, 2), 2);
  EXPECT_EQ(Send(list, LB_DELETESTRING, 0), 2);
  EXPECT_EQ(Send(list, LB_GETCURSEL), 1);
  EXPECT_EQ(SendText(list, LB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), _T("C")), 1);
  TCHAR room[4] = {};
  EXPECT_EQ(Send(list, LB_GETTEXT, 0, reinterpret_cast<LPARAM>(room)), 1);
  EXPECT_EQ(room[0], _T('b'));
  EXPECT_EQ(Send(list, LB_GETTEXTLEN, 5), LB_ERR);
  EXPECT_EQ(top.Notes(kId), Notes{});
  Send(list, LB_RESETCONTENT);
  EXPECT_EQ(Send(list, LB_GETCOUNT), 0);
}

TEST_F(QtControlsTest, ListReportsTheUsersChoice) {
  const HWND list = Child(WindowKind::List, LBS_NOTIFY, kId, kTall);
  for (const LPCTSTR text : {_T("one"), _T("two"), _T("three")}) SendText(list, LB_ADDSTRING, 0, text);
  Key(list, Qt::Key_Down);
  EXPECT_EQ(Send(list, LB_GETCURSEL), 0);
  Key(list, Qt::Key_End);
  EXPECT_EQ(Send(list, LB_GETCURSEL), 2);
  RECT row = {};
  ASSERT_EQ(Send(list, LB_GETITEMRECT, 1, reinterpret_cast<LPARAM>(&row)), 1);
  auto* const pane = static_cast<QListWidget*>(WidgetOf(list))->viewport();
  Mouse(pane, QEvent::MouseButtonPress, QPoint(row.left + 2, row.top + 2), Qt::LeftButton, Qt::LeftButton);
  EXPECT_EQ(Send(list, LB_GETCURSEL), 1);
  Mouse(pane, QEvent::MouseButtonDblClick, QPoint(row.left + 2, row.top + 2), Qt::LeftButton, Qt::LeftButton);
  EXPECT_EQ(top.Notes(kId), (Notes{LBN_SELCHANGE, LBN_SELCHANGE, LBN_SETFOCUS, LBN_SELCHANGE, LBN_DBLCLK}));
  Type(list, QStringLiteral("t"));
  EXPECT_EQ(Send(list, LB_GETCURSEL), 2);
}

TEST_F(QtControlsTest, ListOfSeveralChoicesGivesThemAll) {
  const HWND list = Child(WindowKind::List, LBS_NOTIFY | LBS_MULTIPLESEL, kId, kTall);
  for (const LPCTSTR text : {_T("one"), _T("two"), _T("three")}) SendText(list, LB_ADDSTRING, 0, text);
  EXPECT_EQ(Send(list, LB_SETSEL, 1, 2), 0);
  EXPECT_EQ(Send(list, LB_SETSEL, 1, 0), 0);
  EXPECT_EQ(Send(list, LB_SETSEL, 1, 7), LB_ERR);
  EXPECT_EQ(Send(list, LB_GETSELCOUNT), 2);
  int chosen[3] = {};
  EXPECT_EQ(Send(list, LB_GETSELITEMS, 3, reinterpret_cast<LPARAM>(chosen)), 2);
  EXPECT_EQ(chosen[1], 2);
  EXPECT_EQ(Send(list, LB_GETSEL, 1), 0);
  Send(list, LB_SETSEL, 0, -1);
  EXPECT_EQ(Send(list, LB_GETSELCOUNT), 0);
}

TEST_F(QtControlsTest, ComboAnswersAboutItsItems) {
  const HWND combo = Child(WindowKind::Combo, CBS_DROPDOWNLIST, kId, kPlace);
  EXPECT_EQ(SendText(combo, CB_ADDSTRING, 0, _T("墙")), 0);
  EXPECT_EQ(Send(combo, CB_GETCURSEL), CB_ERR);
  EXPECT_EQ(SendText(combo, CB_INSERTSTRING, 0, _T("梁")), 0);
  EXPECT_EQ(Send(combo, CB_SETCURSEL, 1), 1);
  EXPECT_EQ(TextOf(combo), CString(_T("墙")));
  EXPECT_EQ(SendText(combo, WM_SETTEXT, 0, _T("x")), CB_ERR);
  EXPECT_EQ(Send(combo, CB_SETCURSEL, 9), CB_ERR);
  EXPECT_EQ(TextOf(combo), CString());
  EXPECT_EQ(SendText(combo, CB_SELECTSTRING, static_cast<WPARAM>(-1), _T("墙")), 1);
  EXPECT_EQ(Send(combo, CB_DELETESTRING, 1), 1);
  EXPECT_EQ(Send(combo, CB_GETCURSEL), CB_ERR);
  EXPECT_EQ(top.Notes(kId), Notes{});
}

TEST_F(QtControlsTest, ComboHandsTheFocusToItsEditAndPassesItsNotes) {
  const HWND combo = Child(WindowKind::Combo, CBS_DROPDOWN, kId, kPlace);
  SendText(combo, CB_ADDSTRING, 0, _T("C30"));
  const auto inner = desktop_->Find(combo)->Children();
  ASSERT_EQ(inner.size(), 1U);
  EXPECT_EQ(desktop_->Find(inner[0])->ClassName(), CString(_T("Edit")));
  desktop_->Find(combo)->Focus();
  EXPECT_EQ(desktop_->Focus(), inner[0]);
  Type(inner[0], QStringLiteral("x"));
  EXPECT_EQ(top.Notes(kId), (Notes{CBN_SETFOCUS, CBN_EDITUPDATE, CBN_EDITCHANGE}));
  EXPECT_EQ(TextOf(combo), CString(_T("x")));
  Key(inner[0], Qt::Key_Down);
  EXPECT_EQ(TextOf(combo), CString(_T("C30")));
  EXPECT_EQ(Send(combo, CB_GETEDITSEL), MAKELONG(0, 3));
  desktop_->Find(top.window)->Focus();
  EXPECT_EQ(top.Notes(kId), (Notes{CBN_SETFOCUS, CBN_EDITUPDATE, CBN_EDITCHANGE, CBN_SELENDOK, CBN_SELCHANGE,
                                   CBN_KILLFOCUS}));
}

TEST_F(QtControlsTest, DroppedListIsTakenByReturnAndGivenUpByEscape) {
  const HWND combo = Child(WindowKind::Combo, CBS_DROPDOWNLIST, kId, kPlace);
  for (const LPCTSTR text : {_T("one"), _T("two")}) SendText(combo, CB_ADDSTRING, 0, text);
  Key(combo, Qt::Key_F4);
  EXPECT_EQ(Send(combo, CB_GETDROPPEDSTATE), 1);
  Key(combo, Qt::Key_Down);
  Key(combo, Qt::Key_Return, QStringLiteral("\r"));
  EXPECT_EQ(Send(combo, CB_GETDROPPEDSTATE), 0);
  EXPECT_EQ(top.Notes(kId), (Notes{CBN_DROPDOWN, CBN_SELCHANGE, CBN_SELENDOK, CBN_CLOSEUP}));
  top.reported.clear();
  Send(combo, CB_SHOWDROPDOWN, 1);
  Key(combo, Qt::Key_Down);
  EXPECT_EQ(Send(combo, CB_GETCURSEL), 1);
  Key(combo, Qt::Key_Escape);
  EXPECT_EQ(Send(combo, CB_GETCURSEL), 0);
  EXPECT_EQ(top.Notes(kId), (Notes{CBN_DROPDOWN, CBN_SELCHANGE, CBN_SELENDCANCEL, CBN_CLOSEUP}));
}

TEST_F(QtControlsTest, PickInTheListIsReportedInTheSystemsOrder) {
  const HWND combo = Child(WindowKind::Combo, CBS_DROPDOWNLIST, kId, kPlace);
  for (const LPCTSTR text : {_T("one"), _T("two")}) SendText(combo, CB_ADDSTRING, 0, text);
  Send(combo, CB_SHOWDROPDOWN, 1);
  // As the widget does when an item is clicked: the list goes, then the choice is reported.
  auto* const widget = static_cast<QComboBox*>(WidgetOf(combo));
  widget->hidePopup();
  Q_EMIT widget->activated(1);
  Settle();
  EXPECT_EQ(Send(combo, CB_GETCURSEL), 1);
  EXPECT_EQ(top.Notes(kId), (Notes{CBN_DROPDOWN, CBN_SELENDOK, CBN_CLOSEUP, CBN_SELCHANGE}));
  top.reported.clear();
  Send(combo, CB_SHOWDROPDOWN, 1);
  widget->hidePopup();
  Settle();
  EXPECT_EQ(top.Notes(kId), (Notes{CBN_DROPDOWN, CBN_SELENDCANCEL, CBN_CLOSEUP}));
}

TEST_F(QtControlsTest, ComboMayEndWhenItDrops) {
  const HWND combo = Child(WindowKind::Combo, CBS_DROPDOWN, kId, kPlace);
  top.on_message = [&](UINT message, WPARAM w, LPARAM, LRESULT&) {
    if (message == WM_COMMAND && HIWORD(w) == CBN_DROPDOWN) desktop_->Find(combo)->Destroy();
    return false;
  };
  Click(combo, QPoint(190, 10));
  EXPECT_EQ(desktop_->Find(combo), nullptr);
  Settle();
}

TEST_F(QtControlsTest, ControlsSayWhatTheyAreToADialog) {
  EXPECT_EQ(Send(Child(WindowKind::Button, BS_DEFPUSHBUTTON, 1, kPlace), WM_GETDLGCODE),
            DLGC_BUTTON | DLGC_DEFPUSHBUTTON);
  EXPECT_EQ(Send(Child(WindowKind::Static, 0, 2, kPlace), WM_GETDLGCODE), DLGC_STATIC);
  EXPECT_NE(Send(Child(WindowKind::Edit, ES_MULTILINE, 3, kPlace), WM_GETDLGCODE) & DLGC_WANTALLKEYS, 0);
  const HWND label = Child(WindowKind::Static, 0, 4, kPlace, nullptr, _T("&Name"));
  EXPECT_EQ(TextOf(label), CString(_T("&Name")));
  EXPECT_EQ(desktop_->Find(label)->ClassName(), CString(_T("Static")));
}

}  // namespace
}  // namespace lorv::test
