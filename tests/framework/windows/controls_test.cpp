#include "framework/windows/controls.h"

#include <algorithm>
#include <limits>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/headless_desk.h"

namespace {

constexpr DWORD kShown = WS_CHILD | WS_VISIBLE;

class Controls : public lorv_test::Desk {
 protected:
  void MakeEdit(DWORD style) { edit.Create(kShown | style, CRect(0, 0, 140, 48), &top, 1002); }
  void MakeList(DWORD style) { list.Create(kShown | style, CRect(0, 0, 100, 64), &top, 1003); }
  void MakeCombo(DWORD style) { combo.Create(kShown | style, CRect(0, 0, 100, 200), &top, 1004); }
  std::string ItemOf(int index) const {
    CString text(_T("untouched"));
    list.GetText(index, text);
    return text.ToUtf8();
  }
  CEdit edit;
  CListBox list;
  CComboBox combo;
};

using Texts = std::vector<std::string>;

}  // namespace

TEST_F(Controls, HeaderExample) {
  CEdit field;
  field.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 90, 20), &top, 1002);
  field.SetWindowText(_T("KL12"));
  field.SetSel(0, 2);
  field.ReplaceSel(_T("WKL"));
  EXPECT_EQ(TextOf(field), CString(_T("WKL12")));
}

TEST_F(Controls, WithoutAWindowTheyAnswerWithNothing) {
  EXPECT_EQ(list.GetCount(), 0);
  EXPECT_EQ(ItemOf(0), "");
  EXPECT_EQ(combo.AddString(_T("a")), 0);
  EXPECT_EQ(edit.GetSel(), 0U);
  EXPECT_EQ(edit.Undo(), FALSE);
  EXPECT_TRUE(edit.GetLineText(0).IsEmpty());
  int start = 7;
  int end = 7;
  edit.GetSel(start, end);
  EXPECT_EQ(start, 0);
  EXPECT_EQ(end, 0);
}

// The message has no word for the room: a control that tells one length and writes another writes into room
// of ours.
template <class Control>
class Liar : public Control {
 public:
  LRESULT length = 1;
  CString text;
  LRESULT reported = 0;

 protected:
  LRESULT WindowProc(UINT message, WPARAM w, LPARAM l) override {
    if (message == LB_GETTEXTLEN || message == CB_GETLBTEXTLEN) return length;
    if (message != LB_GETTEXT && message != CB_GETLBTEXT) return Control::WindowProc(message, w, l);
    std::copy_n(text.GetString(), text.GetLength() + 1, reinterpret_cast<TCHAR*>(l));
    return reported;
  }
};

TEST_F(Controls, AnItemLongerThanItsLengthIsTakenWhole) {
  Liar<CListBox> box;
  box.Create(WS_CHILD, CRect(0, 0, 50, 50), &top, 8);
  Liar<CComboBox> drop;
  drop.Create(WS_CHILD | CBS_DROPDOWNLIST, CRect(0, 0, 50, 50), &top, 9);
  for (const int units : {1, 2, 40, 65536}) {
    box.text = drop.text = CString(_T('w'), units);
    box.reported = drop.reported = units;
    CString got, dropped;
    box.GetText(0, got);
    drop.GetLBText(0, dropped);
    EXPECT_EQ(got, box.text) << units;
    EXPECT_EQ(dropped, box.text) << units;
  }
}

TEST_F(Controls, AnItemShorterThanItSaysHoldsNothingOfOthers) {
  Liar<CListBox> box;
  box.Create(WS_CHILD, CRect(0, 0, 50, 50), &top, 8);
  box.text = _T("ab");
  for (const LRESULT reported : {LRESULT{4}, LRESULT{1} << 20, LRESULT{1} << 30}) {
    box.reported = reported;
    CString got;
    box.GetText(0, got);
    EXPECT_EQ(got, CString(_T("ab"))) << reported;
  }
  box.reported = LB_ERR;
  CString got(_T("before"));
  box.GetText(0, got);
  EXPECT_TRUE(got.IsEmpty());
}

TEST_F(Controls, SelectionsAreBroughtIntoTheText) {
  MakeEdit(0);
  edit.SetWindowText(_T("abcdef"));
  const struct {
    int from;
    int to;
    DWORD selected;
  } kRows[] = {{0, -1, MAKELONG(0, 6)},
               {2, 4, MAKELONG(2, 4)},
               {4, 2, MAKELONG(2, 4)},
               {3, 99, MAKELONG(3, 6)},
               {99, 99, MAKELONG(6, 6)}};
  for (const auto& row : kRows) {
    edit.SetSel(row.from, row.to);
    EXPECT_EQ(edit.GetSel(), row.selected) << row.from << " " << row.to;
    int start = -1;
    int end = -1;
    edit.GetSel(start, end);
    EXPECT_EQ(static_cast<DWORD>(MAKELONG(start, end)), row.selected);
  }
  // -1 first: what was selected is so no longer.
  edit.SetSel(1, 3);
  edit.SetSel(-1, 0);
  EXPECT_EQ(LOWORD(edit.GetSel()), HIWORD(edit.GetSel()));
  edit.SetSel(static_cast<DWORD>(MAKELONG(1, 5)));
  EXPECT_EQ(edit.GetSel(), static_cast<DWORD>(MAKELONG(1, 5)));
}

TEST_F(Controls, LinesAreAskedForByNumberAndByPosition) {
  MakeEdit(ES_MULTILINE | ES_AUTOHSCROLL);
  edit.SetWindowText(_T("one\r\n\r\nthree"));
  EXPECT_EQ(edit.GetLineCount(), 3);
  EXPECT_EQ(edit.LineIndex(0), 0);
  EXPECT_EQ(edit.LineIndex(1), 5);
  EXPECT_EQ(edit.LineIndex(2), 7);
  EXPECT_EQ(edit.LineIndex(3), -1);
  EXPECT_EQ(edit.LineLength(8), 5);
  EXPECT_EQ(edit.LineFromChar(6), 1);
  EXPECT_EQ(edit.GetLineText(0), CString(_T("one")));
  EXPECT_EQ(edit.GetLineText(1), CString());
  EXPECT_EQ(edit.GetLineText(2), CString(_T("three")));
  EXPECT_EQ(edit.GetLineText(3), CString());
  EXPECT_EQ(edit.GetLineText(-7), CString());
  edit.SetSel(9, 9);
  EXPECT_EQ(edit.LineIndex(), 7);
  EXPECT_EQ(edit.LineFromChar(), 2);
}

TEST_F(Controls, EveryPositionIsFoundAtItsPlace) {
  MakeEdit(ES_MULTILINE | ES_AUTOHSCROLL);
  edit.SetWindowText(_T("KL1 梁\r\nW2\r\n\r\nx"));
  for (int position = 0; position <= 14; ++position) {
    if (position == 6 || position == 10 || position == 12) continue;  // within a line end
    const CPoint at = edit.PosFromChar(static_cast<UINT>(position));
    const int found = edit.CharFromPos(at);
    EXPECT_EQ(LOWORD(found), position);
    EXPECT_EQ(HIWORD(found), edit.LineFromChar(position));
  }
}

TEST_F(Controls, ScrollingStopsAtTheEndsOfTheText) {
  MakeEdit(ES_MULTILINE | ES_AUTOHSCROLL);
  CString text;
  for (int i = 0; i < 20; ++i) text.AppendFormat(_T("%d\r\n"), i);
  edit.SetWindowText(text);
  edit.LineScroll(5);
  EXPECT_EQ(edit.GetFirstVisibleLine(), 5);
  edit.LineScroll(-3);
  EXPECT_EQ(edit.GetFirstVisibleLine(), 2);
  // Whatever a host asks for: no sum may leave 32 bits.
  edit.LineScroll(std::numeric_limits<int>::max());
  const int last = edit.GetFirstVisibleLine();
  EXPECT_GT(last, 2);
  EXPECT_LT(last, edit.GetLineCount());
  edit.LineScroll(std::numeric_limits<int>::max());
  EXPECT_EQ(edit.GetFirstVisibleLine(), last);
  edit.LineScroll(std::numeric_limits<int>::min());
  EXPECT_EQ(edit.GetFirstVisibleLine(), 0);
}

TEST_F(Controls, ASelectionScrollsOnlyWhenItMay) {
  MakeEdit(ES_MULTILINE | ES_AUTOVSCROLL);
  CString text;
  for (int i = 0; i < 20; ++i) text.AppendFormat(_T("%d\r\n"), i);
  edit.SetWindowText(text);
  edit.SetSel(0, 0);
  ASSERT_EQ(edit.GetFirstVisibleLine(), 0);
  edit.SetSel(text.GetLength(), text.GetLength(), TRUE);
  EXPECT_EQ(edit.GetFirstVisibleLine(), 0);
  edit.SetSel(text.GetLength(), text.GetLength());
  EXPECT_GT(edit.GetFirstVisibleLine(), 10);
}

TEST_F(Controls, WhatIsPutInByTheProgramIsNotModified) {
  MakeEdit(0);
  edit.SetWindowText(_T("a"));
  EXPECT_EQ(edit.GetModify(), FALSE);
  edit.SetModify();
  EXPECT_NE(edit.GetModify(), FALSE);
  edit.SetModify(FALSE);
  edit.SetFocus();
  desktop.Type(_T("b"));
  Run();
  EXPECT_NE(edit.GetModify(), FALSE);
}

TEST_F(Controls, UndoGoesBackAndForthUntilItIsForgotten) {
  MakeEdit(0);
  edit.SetWindowText(_T("abc"));
  EXPECT_EQ(edit.CanUndo(), FALSE);
  edit.SetSel(1, 2);
  edit.ReplaceSel(_T("X"), TRUE);
  ASSERT_NE(edit.CanUndo(), FALSE);
  EXPECT_NE(edit.Undo(), FALSE);
  EXPECT_EQ(TextOf(edit), CString(_T("abc")));
  EXPECT_NE(edit.Undo(), FALSE);
  EXPECT_EQ(TextOf(edit), CString(_T("aXc")));
  edit.EmptyUndoBuffer();
  EXPECT_EQ(edit.CanUndo(), FALSE);
  EXPECT_EQ(edit.Undo(), FALSE);
  EXPECT_EQ(TextOf(edit), CString(_T("aXc")));
}

TEST_F(Controls, TheLimitIsForTypingAndNotForTheProgram) {
  MakeEdit(ES_AUTOHSCROLL);
  edit.SetLimitText(3);
  EXPECT_EQ(edit.GetLimitText(), 3U);
  edit.SetWindowText(_T("abcdef"));
  EXPECT_EQ(TextOf(edit), CString(_T("abcdef")));
  edit.SetWindowText(_T(""));
  edit.SetFocus();
  desktop.Type(_T("vwxyz"));
  Run();
  EXPECT_EQ(TextOf(edit), CString(_T("vwx")));
}

TEST_F(Controls, ClipboardTakesAndGivesTheSelection) {
  MakeEdit(ES_AUTOHSCROLL);
  edit.SetWindowText(_T("abcd"));
  edit.SetSel(1, 3);
  edit.Copy();
  EXPECT_EQ(desktop.ClipboardText(), CString(_T("bc")));
  edit.Cut();
  EXPECT_EQ(TextOf(edit), CString(_T("ad")));
  edit.SetSel(2, 2);
  edit.Paste();
  EXPECT_EQ(TextOf(edit), CString(_T("adbc")));
  edit.SetSel(0, 2);
  edit.Clear();
  EXPECT_EQ(TextOf(edit), CString(_T("bc")));
  EXPECT_EQ(desktop.ClipboardText(), CString(_T("bc")));
}

TEST_F(Controls, BadIndicesOfAListAreAnsweredMinusOne) {
  MakeList(0);
  list.AddString(_T("a"));
  for (const int index : {-2, 1, 99, std::numeric_limits<int>::max()}) {
    EXPECT_EQ(list.GetTextLen(index), -1) << index;
    EXPECT_EQ(ItemOf(index), "") << index;
    EXPECT_EQ(list.DeleteString(static_cast<UINT>(index)), -1) << index;
    EXPECT_EQ(list.GetItemData(index), static_cast<DWORD_PTR>(-1)) << index;
    EXPECT_EQ(list.SetItemData(index, 5), -1) << index;
    EXPECT_EQ(list.SetCurSel(index), -1) << index;
  }
  EXPECT_EQ(list.InsertString(3, _T("b")), -1);
  EXPECT_EQ(list.GetCount(), 1);
}

TEST_F(Controls, FindsByBeginningAndByTheWhole) {
  MakeList(0);
  for (const LPCTSTR text : {_T("KL1"), _T("KL12"), _T("WKL1"), _T("kl1")}) list.AddString(text);
  EXPECT_EQ(list.FindString(-1, _T("kl1")), 0);
  EXPECT_EQ(list.FindString(0, _T("KL1")), 1);
  EXPECT_EQ(list.FindString(3, _T("KL")), 0);
  EXPECT_EQ(list.FindStringExact(0, _T("KL1")), 3);
  EXPECT_EQ(list.FindStringExact(-1, _T("KL")), -1);
  EXPECT_EQ(list.SelectString(-1, _T("W")), 2);
  EXPECT_EQ(list.GetCurSel(), 2);
  EXPECT_EQ(list.SelectString(-1, _T("none")), -1);
  EXPECT_EQ(list.GetCurSel(), 2);
}

// Insertions and removals beside a plain list of texts and numbers.
TEST_F(Controls, AListKeepsTextsNumbersAndTheChoice) {
  MakeList(0);
  std::mt19937 random(4);
  std::vector<std::pair<std::string, DWORD_PTR>> model;
  int chosen = -1;
  for (int step = 0; step < 400; ++step) {
    const int at = static_cast<int>(random() % (model.size() + 1));
    const bool there = at < static_cast<int>(model.size());
    const auto place = model.begin() + at;
    switch (random() % 4) {
      case 0:
      case 1: {
        const std::string text = "item " + std::to_string(step);
        ASSERT_EQ(list.InsertString(at, CString::FromUtf8(text)), at);
        list.SetItemData(at, static_cast<DWORD_PTR>(step));
        model.insert(place, {text, static_cast<DWORD_PTR>(step)});
        if (chosen >= at) ++chosen;
        break;
      }
      case 2:
        if (!there) break;
        ASSERT_EQ(list.DeleteString(static_cast<UINT>(at)), static_cast<int>(model.size()) - 1);
        model.erase(place);
        chosen = chosen == at ? -1 : chosen > at ? chosen - 1 : chosen;
        break;
      default:
        if (!there) break;
        ASSERT_EQ(list.SetCurSel(at), at);
        chosen = at;
    }
    ASSERT_EQ(list.GetCount(), static_cast<int>(model.size()));
    ASSERT_EQ(list.GetCurSel(), chosen);
    for (std::size_t i = 0; i < model.size(); ++i) {
      ASSERT_EQ(ItemOf(static_cast<int>(i)), model[i].first);
      ASSERT_EQ(list.GetItemData(static_cast<int>(i)), model[i].second);
    }
  }
  list.ResetContent();
  EXPECT_EQ(list.GetCount(), 0);
  EXPECT_EQ(list.GetCurSel(), -1);
}

TEST_F(Controls, ASortedListTakesItemsInTheirOrder) {
  MakeList(LBS_SORT);
  for (const LPCTSTR text : {_T("b"), _T("C"), _T("a"), _T("B")}) list.AddString(text);
  Texts texts;
  for (int i = 0; i < list.GetCount(); ++i) texts.push_back(ItemOf(i));
  EXPECT_EQ(texts, (Texts{"a", "b", "B", "C"}));
  // A place that is named is kept.
  EXPECT_EQ(list.InsertString(0, _T("z")), 0);
  EXPECT_EQ(ItemOf(0), "z");
}

TEST_F(Controls, ACombosChoiceIsItsText) {
  MakeCombo(CBS_DROPDOWNLIST);
  combo.AddString(_T("C30"));
  combo.AddString(_T("C35"));
  EXPECT_EQ(combo.GetCurSel(), -1);
  EXPECT_EQ(combo.SetCurSel(1), 1);
  EXPECT_EQ(TextOf(combo), CString(_T("C35")));
  CString text;
  combo.GetLBText(0, text);
  EXPECT_EQ(text, CString(_T("C30")));
  combo.GetLBText(2, text);
  EXPECT_TRUE(text.IsEmpty());
  EXPECT_EQ(combo.GetLBTextLen(0), 3);
  EXPECT_EQ(combo.GetLBTextLen(2), -1);
  EXPECT_EQ(combo.DeleteString(0), 1);
  EXPECT_EQ(combo.GetCurSel(), 0);
  EXPECT_EQ(combo.SelectString(-1, _T("c")), 0);
  combo.ResetContent();
  EXPECT_EQ(combo.GetCount(), 0);
  EXPECT_EQ(combo.GetCurSel(), -1);
}

TEST_F(Controls, ACombosListOpensAndCloses) {
  MakeCombo(CBS_DROPDOWN);
  combo.AddString(_T("a"));
  EXPECT_EQ(combo.GetDroppedState(), FALSE);
  combo.ShowDropDown();
  EXPECT_NE(combo.GetDroppedState(), FALSE);
  combo.ShowDropDown(FALSE);
  EXPECT_EQ(combo.GetDroppedState(), FALSE);
}

TEST_F(Controls, ButtonsKeepTheirCheck) {
  CButton button;
  button.Create(_T("x"), kShown | BS_AUTOCHECKBOX, CRect(0, 0, 50, 20), &top, 1005);
  EXPECT_EQ(button.GetCheck(), BST_UNCHECKED);
  button.SetCheck(BST_CHECKED);
  EXPECT_EQ(button.GetCheck(), BST_CHECKED);
  desktop.Click(On(button, 5, 5));
  Run();
  EXPECT_EQ(button.GetCheck(), BST_UNCHECKED);
}
