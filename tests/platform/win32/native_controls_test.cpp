#include "tests/platform/win32/real_input.h"

using lorv::WindowKind;

// The system's own controls, used by keys and clicks, as the window classes above see them.
class NativeControls : public RealWindows {
 protected:
  CPoint Middle(const Probe& probe) { return CRect(probe.Peer()->WindowRect()).CenterPoint(); }
  LRESULT Ask(const Probe& probe, UINT message, WPARAM w = 0, LPARAM l = 0) {
    return Desk().Send(probe.window, message, w, l);
  }
  LRESULT Ask(const Probe& probe, UINT message, WPARAM w, LPCTSTR text) {
    return Desk().Send(probe.window, message, w, reinterpret_cast<LPARAM>(text));
  }
};

TEST_F(NativeControls, TypedLettersComeAsKeysAndCharactersAndReportTheParent) {
  Probe edit;
  MakeChild(edit, WindowKind::Edit, WS_BORDER, {10, 10, 110, 34}, 31);
  edit.Peer()->Focus();
  top.seen.clear();
  Type(_T("KL12"));
  EXPECT_EQ(edit.Peer()->Text(), _T("kl12"));
  EXPECT_EQ(edit.Count(WM_KEYDOWN), 4);
  EXPECT_EQ(edit.Count(WM_CHAR), 4);
  EXPECT_EQ(edit.Count(WM_KEYUP), 4);
  EXPECT_EQ(top.Codes(31), (std::vector<UINT>{EN_UPDATE, EN_CHANGE, EN_UPDATE, EN_CHANGE, EN_UPDATE,
                                              EN_CHANGE, EN_UPDATE, EN_CHANGE}));
}

TEST_F(NativeControls, ASetTextReportsTheParentAsWellAsATypedOne) {
  Probe edit;
  MakeChild(edit, WindowKind::Edit, 0, {10, 10, 110, 34}, 31);
  top.seen.clear();
  edit.Peer()->SetText(_T("C30"));
  EXPECT_EQ(top.Codes(31), (std::vector<UINT>{EN_UPDATE, EN_CHANGE}));
  top.seen.clear();
  edit.Peer()->SetText(_T("C30"));
  EXPECT_EQ(top.Codes(31), (std::vector<UINT>{EN_UPDATE, EN_CHANGE}));
}

TEST_F(NativeControls, EditSelectionsAreMessages) {
  Probe edit;
  MakeChild(edit, WindowKind::Edit, 0, {10, 10, 110, 34}, 31);
  edit.Peer()->SetText(_T("墙KL12"));
  Ask(edit, EM_SETSEL, 1, 3);
  DWORD start = 9;
  DWORD end = 9;
  Ask(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
  EXPECT_EQ(start, 1u);
  EXPECT_EQ(end, 3u);
  Ask(edit, EM_REPLACESEL, TRUE, _T("WB"));
  EXPECT_EQ(edit.Peer()->Text(), _T("墙WB12"));
  Ask(edit, EM_SETSEL, 0, -1);
  EXPECT_EQ(Ask(edit, EM_GETSEL), MAKELONG(0, 5));
  Ask(edit, WM_CLEAR);
  EXPECT_TRUE(edit.Peer()->Text().IsEmpty());
}

TEST_F(NativeControls, EditKeysMoveAndDelete) {
  Probe edit;
  MakeChild(edit, WindowKind::Edit, 0, {10, 10, 110, 34}, 31);
  edit.Peer()->SetText(_T("ABCD"));
  edit.Peer()->Focus();
  Press(VK_HOME);
  Press(VK_DELETE);
  Press(VK_END);
  Press(VK_BACK);
  KeyDown(VK_SHIFT);
  Press(VK_LEFT);
  KeyUp(VK_SHIFT);
  Settle();
  EXPECT_EQ(edit.Peer()->Text(), _T("BC"));
  EXPECT_EQ(Ask(edit, EM_GETSEL), MAKELONG(1, 2));
}

TEST_F(NativeControls, MultiLineEditCountsWrappedLinesAndEndsThemByCrLf) {
  Probe edit;
  MakeChild(edit, WindowKind::Edit, ES_MULTILINE | ES_WANTRETURN, {10, 10, 70, 200}, 31);
  edit.Peer()->SetText(_T("concrete of the walls and columns\r\nx"));
  EXPECT_GT(Ask(edit, EM_GETLINECOUNT), 2);
  Ask(edit, EM_SETSEL, 0, -1);
  edit.Peer()->Focus();
  Type(_T("A"));
  Press(VK_RETURN);
  Type(_T("B"));
  EXPECT_EQ(edit.Peer()->Text(), _T("a\r\nb"));
}

TEST_F(NativeControls, FocusReportsBothWindowsAndTheParent) {
  Probe first;
  Probe second;
  MakeChild(first, WindowKind::Edit, 0, {10, 10, 110, 34}, 31);
  MakeChild(second, WindowKind::Edit, 0, {10, 50, 110, 74}, 32);
  first.Peer()->Focus();
  EXPECT_EQ(Desk().Focus(), first.window);
  top.seen.clear();
  Click(Middle(second));
  EXPECT_EQ(Desk().Focus(), second.window);
  EXPECT_EQ(first.Count(WM_KILLFOCUS), 1);
  EXPECT_EQ(second.Count(WM_SETFOCUS), 1);
  EXPECT_EQ(top.Codes(31), (std::vector<UINT>{EN_KILLFOCUS}));
  EXPECT_EQ(top.Codes(32), (std::vector<UINT>{EN_SETFOCUS}));
}

TEST_F(NativeControls, ComboIsWorkedByItsMessages) {
  Probe combo;
  MakeChild(combo, WindowKind::Combo, CBS_DROPDOWNLIST | WS_VSCROLL, {10, 10, 110, 34}, 33);
  for (const auto* text : {_T("C20"), _T("C30"), _T("C40")}) Ask(combo, CB_ADDSTRING, 0, text);
  EXPECT_EQ(Ask(combo, CB_GETCOUNT), 3);
  EXPECT_EQ(Ask(combo, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), _T("C40")), 2);
  top.seen.clear();
  Ask(combo, CB_SETCURSEL, 1);
  EXPECT_TRUE(top.Codes(33).empty());
  EXPECT_EQ(combo.Peer()->Text(), _T("C30"));
  EXPECT_EQ(Ask(combo, CB_GETCURSEL), 1);
  EXPECT_EQ(Ask(combo, CB_SETCURSEL, 7), CB_ERR);
}

TEST_F(NativeControls, ComboOpensClosesAndChoosesByKeys) {
  Probe combo;
  MakeChild(combo, WindowKind::Combo, CBS_DROPDOWNLIST | WS_VSCROLL, {10, 10, 110, 34}, 33);
  for (const auto* text : {_T("C20"), _T("C30"), _T("C40")}) Ask(combo, CB_ADDSTRING, 0, text);
  Ask(combo, CB_SETCURSEL, 0);
  combo.Peer()->Focus();
  top.seen.clear();
  Press(VK_F4);
  EXPECT_NE(Ask(combo, CB_GETDROPPEDSTATE), 0);
  CRect opened;
  Ask(combo, CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&opened));
  EXPECT_GT(opened.Height(), 3 * 12) << "the list has room though the combo is as low as a cell";
  Press(VK_DOWN);
  Press(VK_RETURN);
  EXPECT_EQ(Ask(combo, CB_GETDROPPEDSTATE), 0);
  EXPECT_EQ(combo.Peer()->Text(), _T("C30"));
  const auto codes = top.Codes(33);
  ASSERT_GE(codes.size(), 3u);
  EXPECT_EQ(codes.front(), static_cast<UINT>(CBN_DROPDOWN));
  EXPECT_EQ(std::count(codes.begin(), codes.end(), static_cast<UINT>(CBN_SELCHANGE)), 1);
  EXPECT_EQ(std::count(codes.begin(), codes.end(), static_cast<UINT>(CBN_SELENDOK)), 1);
  EXPECT_EQ(std::count(codes.begin(), codes.end(), static_cast<UINT>(CBN_CLOSEUP)), 1);
}

TEST_F(NativeControls, ALookIntoAComboIsNoChange) {
  Probe combo;
  MakeChild(combo, WindowKind::Combo, CBS_DROPDOWN | WS_VSCROLL, {10, 10, 110, 34}, 33);
  Ask(combo, CB_ADDSTRING, 0, _T("C20"));
  Ask(combo, CB_ADDSTRING, 0, _T("C30"));
  combo.Peer()->SetText(_T("own"));
  top.seen.clear();
  Ask(combo, CB_SHOWDROPDOWN, TRUE);
  Ask(combo, CB_SHOWDROPDOWN, FALSE);
  EXPECT_EQ(combo.Peer()->Text(), _T("own"));
  const auto codes = top.Codes(33);
  EXPECT_EQ(std::count(codes.begin(), codes.end(), static_cast<UINT>(CBN_SELCHANGE)), 0);
}

TEST_F(NativeControls, KeysOfAComboAreOfferedToTheComboAndItsParents) {
  Probe combo;
  MakeChild(combo, WindowKind::Combo, CBS_DROPDOWN, {10, 10, 110, 34}, 33);
  combo.Peer()->Focus();
  Settle();
  const HWND inner = Desk().Focus();
  EXPECT_NE(inner, combo.window) << "the keys go to the edit inside";
  EXPECT_EQ(Desk().Find(inner)->Parent(), combo.window);
  combo.offered.clear();
  top.offered.clear();
  Type(_T("7"));
  EXPECT_EQ(combo.Peer()->Text(), _T("7"));
  EXPECT_TRUE(std::any_of(combo.offered.begin(), combo.offered.end(),
                          [&](const MSG& m) { return m.message == WM_KEYDOWN && m.hwnd == inner; }));
  EXPECT_TRUE(std::any_of(top.offered.begin(), top.offered.end(),
                          [](const MSG& m) { return m.message == WM_KEYDOWN; }));
  const auto codes = top.Codes(33);
  EXPECT_EQ(std::count(codes.begin(), codes.end(), static_cast<UINT>(CBN_EDITCHANGE)), 1);
}

TEST_F(NativeControls, TheEditInAComboCanBeTakenOver) {
  Probe combo;
  Probe inner;
  MakeChild(combo, WindowKind::Combo, CBS_DROPDOWN, {10, 10, 110, 34}, 33);
  inner.window = combo.Peer()->Children().at(0);
  lorv::MapWindow(inner.window, &inner);
  combo.Peer()->Focus();
  Type(_T("A"));
  EXPECT_EQ(inner.Count(WM_CHAR), 1);
  EXPECT_EQ(combo.Peer()->Text(), _T("a"));
  combo.Peer()->Destroy();
  EXPECT_EQ(inner.Count(WM_NCDESTROY), 1);
  EXPECT_EQ(inner.window, nullptr);
}

TEST_F(NativeControls, ListReportsItsSelectionAndDoubleClick) {
  Probe list;
  MakeChild(list, WindowKind::List, LBS_NOTIFY | WS_VSCROLL, {10, 10, 110, 110}, 34);
  for (const auto* text : {_T("wall"), _T("beam"), _T("slab")}) Ask(list, LB_ADDSTRING, 0, text);
  EXPECT_EQ(Ask(list, LB_GETCURSEL), LB_ERR);
  top.seen.clear();
  CRect row;
  Ask(list, LB_GETITEMRECT, 1, reinterpret_cast<LPARAM>(&row));
  const CPoint at = row.CenterPoint() + list.Peer()->ClientOrigin();
  Click(at);
  EXPECT_EQ(Ask(list, LB_GETCURSEL), 1);
  auto codes = top.Codes(34);
  EXPECT_EQ(std::count(codes.begin(), codes.end(), static_cast<UINT>(LBN_SELCHANGE)), 1);
  Click(at);
  codes = top.Codes(34);
  EXPECT_EQ(std::count(codes.begin(), codes.end(), static_cast<UINT>(LBN_DBLCLK)), 1);
  Press(VK_DOWN);
  EXPECT_EQ(Ask(list, LB_GETCURSEL), 2);
  CString text;
  Ask(list, LB_GETTEXT, 0, text.GetBuffer(10));
  text.ReleaseBuffer();
  EXPECT_EQ(text, _T("wall"));
}

TEST_F(NativeControls, ButtonsClickByMouseKeyAndMessage) {
  Probe push;
  Probe check;
  MakeChild(push, WindowKind::Button, BS_PUSHBUTTON | WS_TABSTOP, {10, 10, 110, 34}, 35);
  MakeChild(check, WindowKind::Button, BS_AUTOCHECKBOX | WS_TABSTOP, {10, 50, 110, 74}, 36);
  top.seen.clear();
  Click(Middle(push));
  EXPECT_EQ(top.Codes(35), (std::vector<UINT>{BN_CLICKED}));
  Press(VK_SPACE);
  Ask(push, BM_CLICK);
  EXPECT_EQ(top.Codes(35), (std::vector<UINT>{BN_CLICKED, BN_CLICKED, BN_CLICKED}));
  Click(Middle(check));
  EXPECT_EQ(Ask(check, BM_GETCHECK), BST_CHECKED);
  Ask(check, BM_SETCHECK, BST_UNCHECKED);
  EXPECT_EQ(Ask(check, BM_GETCHECK), BST_UNCHECKED);
  EXPECT_EQ(top.Codes(36), (std::vector<UINT>{BN_CLICKED}));
}

TEST_F(NativeControls, DisabledControlsTakeNoInput) {
  Probe push;
  MakeChild(push, WindowKind::Button, BS_PUSHBUTTON | WS_DISABLED, {10, 10, 110, 34}, 35);
  top.seen.clear();
  Click(Middle(push));
  EXPECT_TRUE(top.Codes(35).empty());
  EXPECT_EQ(Desk().WindowAt(Middle(push)), push.window);
}

TEST_F(NativeControls, LabelsHaveTheirText) {
  Probe label;
  auto request = label.Request(WindowKind::Static, WS_CHILD | WS_VISIBLE, {10, 10, 110, 34}, top.window, 37);
  request.text = _T("标号:");
  label.Make(request);
  EXPECT_EQ(label.Peer()->Text(), _T("标号:"));
  EXPECT_EQ(Desk().WindowAt(Middle(label)), label.window);
}

TEST_F(NativeControls, AnEditDestroyedByItsOwnKeyIsThatKeysEnd) {
  auto edit = std::make_unique<Probe>();
  MakeChild(*edit, WindowKind::Edit, 0, {10, 10, 110, 34}, 31);
  edit->Peer()->Focus();
  edit->on = [&](const Probe::Message& m, LRESULT&) {
    if (m.number != WM_KEYDOWN || m.w != VK_RETURN) return false;
    edit->Peer()->Destroy();
    return true;
  };
  Press(VK_RETURN);
  EXPECT_EQ(edit->window, nullptr);
  EXPECT_TRUE(top.Peer()->Children().empty());
}

TEST_F(NativeControls, AnEditDestroyedWhileItReportsItsParentIsLegal) {
  Probe edit;
  MakeChild(edit, WindowKind::Edit, 0, {10, 10, 110, 34}, 31);
  const auto peer = edit.Peer();
  top.on = [&](const Probe::Message& m, LRESULT&) {
    if (m.number == WM_COMMAND && HIWORD(m.w) == EN_KILLFOCUS) peer->Destroy();
    return false;
  };
  peer->Focus();
  top.Peer()->Focus();
  EXPECT_FALSE(peer->Exists());
  EXPECT_EQ(edit.Count(WM_NCDESTROY), 1);
  top.on = nullptr;
}
