#include "gridcore/items/check_item.h"
#include "tests/gridcore/control/grid_desk.h"
#include "tests/support/print.h"

// What users of input methods complain about in grids: a first key that is lost, a Return that was meant for
// the candidates and leaves the cell, windows that open over nothing.

namespace lorv_test {
namespace {

class GridComposition : public GridDesk {
 protected:
  void Compose(LPCTSTR text) {
    desktop.ComposeText(text, CString(text).GetLength());
    Run();
  }
  void Commit(LPCTSTR text) {
    desktop.CommitText(text);
    Run();
  }
  CString Value(int row, int column) const { return At(row, column)->FormatItem(); }
  std::shared_ptr<lorv::WindowModel> Peer() const {
    return std::dynamic_pointer_cast<lorv::WindowModel>(desktop.Find(grid->m_hWnd));
  }
  lorv::Composition Shown() const { return lorv::PeerOf(desktop.Focus())->CompositionNow(); }
  // Cells that hold texts.
  void FillTexts(int rows, int columns) {
    Fill(rows, columns);
    for (int row = 0; row < rows; ++row)
      for (int column = 0; column < columns; ++column) At(row, column)->SetValue(_variant_t(_T("板")));
  }
};

TEST_F(GridComposition, TheFirstKeyOpensTheEditorAndIsKept) {
  FillTexts(4, 3);
  Choose(1, 1);
  Compose(_T("q"));
  ASSERT_NE(Editor(), nullptr);
  EXPECT_EQ(desktop.Focus(), Editor()->m_hWnd);
  EXPECT_EQ(TextOf(*Editor()), CString()) << "what is typed takes the place of the old text";
  EXPECT_EQ(Shown().text, CString(_T("q"))) << "no Latin letter, and none lost";
  Compose(_T("qiang"));
  EXPECT_EQ(Shown().text, CString(_T("qiang")));
  Commit(_T("墙"));
  EXPECT_EQ(TextOf(*Editor()), CString(_T("墙")));
  Key(VK_RETURN);
  EXPECT_EQ(Value(1, 1), CString(_T("墙")));
  EXPECT_EQ(grid->GetCurSelItemID(), CBCGPGridItemID(2, 1));
}

TEST_F(GridComposition, SeveralWordsGoIntoOneCell) {
  FillTexts(4, 3);
  Choose(1, 1);
  Compose(_T("jian"));
  Commit(_T("剪力"));
  Compose(_T("qiang"));
  Commit(_T("墙"));
  EXPECT_EQ(TextOf(*Editor()), CString(_T("剪力墙")));
}

TEST_F(GridComposition, KeysOfTheInputMethodDoNotLeaveTheCell) {
  FillTexts(4, 3);
  Choose(1, 1);
  Compose(_T("qiang"));
  // Some input methods let the keys through that choose among candidates and confirm one.
  for (const int key : {VK_RETURN, VK_TAB, VK_UP, VK_DOWN, VK_ESCAPE}) {
    Key(key);
    ASSERT_NE(Editor(), nullptr) << key;
    EXPECT_EQ(grid->GetCurSelItemID(), CBCGPGridItemID(1, 1)) << key;
  }
  Commit(_T("墙"));
  EXPECT_EQ(TextOf(*Editor()), CString(_T("墙")));
  EXPECT_EQ(Value(1, 1), CString(_T("板"))) << "still being edited";
  Key(VK_RETURN);
  EXPECT_EQ(Editor(), nullptr) << "and now it is meant for the cell";
}

TEST_F(GridComposition, WhatIsBeingComposedIsNotLostWithTheEditor) {
  FillTexts(4, 3);
  Choose(1, 1);
  Compose(_T("jian"));
  Commit(_T("剪"));
  Compose(_T("li"));
  ClickOn(3, 2);
  EXPECT_EQ(Value(1, 1), CString(_T("剪li")));
  Choose(2, 1);
  Compose(_T("li"));
  EXPECT_NE(grid->EndEditItem(FALSE), FALSE);
  EXPECT_EQ(Value(2, 1), CString(_T("板"))) << "given up";
}

TEST_F(GridComposition, ACompositionThatIsGivenUpKeepsTheValue) {
  FillTexts(4, 3);
  Choose(1, 1);
  Compose(_T("q"));
  Compose(_T(""));
  ASSERT_NE(Editor(), nullptr);
  Key(VK_RETURN);
  EXPECT_EQ(Value(1, 1), CString(_T("板")));
}

TEST_F(GridComposition, NothingOpensOverACellThatTakesNoText) {
  FillTexts(4, 3);
  At(1, 1)->SetReadOnly();
  At(2, 1)->Enable(FALSE);
  grid->GetRow(3)->ReplaceItem(1, new CBCGPGridCheckItem(true));
  for (const int row : {1, 2}) {
    Choose(row, 1);
    EXPECT_FALSE(Peer()->TakesComposition()) << row;
    Compose(_T("q"));
    Commit(_T("墙"));
    EXPECT_EQ(Editor(), nullptr) << row;
    EXPECT_EQ(Value(row, 1), CString(_T("板"))) << row;
    EXPECT_TRUE(Shown().text.IsEmpty()) << row;
  }
  Choose(0, 0);
  EXPECT_TRUE(Peer()->TakesComposition()) << "the next cell takes it again";
  Choose(3, 1);
  Compose(_T("q"));
  Commit(_T("墙"));
  EXPECT_EQ(Editor(), nullptr);
  EXPECT_EQ(Value(3, 1), CString(_T("-1"))) << "a check is no text";
}

TEST_F(GridComposition, AReadOnlyGridTakesNothingEvenWhenItBecomesOne) {
  FillTexts(4, 3);
  Choose(1, 1);
  grid->SetReadOnly();
  Compose(_T("q"));
  Commit(_T("墙"));
  EXPECT_EQ(Editor(), nullptr);
  EXPECT_EQ(Value(1, 1), CString(_T("板")));
}

TEST_F(GridComposition, TheCandidatesStandAtTheCell) {
  FillTexts(50, 3);
  Choose(1, 1);
  EXPECT_EQ(CRect(Peer()->CompositionCaret()), CRect(80, 40, 81, 60)) << "before anything is typed";
  grid->EnsureVisible({49, 1});
  Choose(48, 2);
  const CRect cell = grid->GetItemRect({48, 2});
  EXPECT_EQ(Peer()->CompositionCaret().left, cell.left);
  EXPECT_EQ(Peer()->CompositionCaret().top, cell.top);
}

TEST_F(GridComposition, TheEditorStaysWhenTheMouseMovesAndTheCaptureChanges) {
  FillTexts(4, 3);
  Choose(1, 1);
  Compose(_T("qiang"));
  Commit(_T("墙"));
  desktop.MoveMouse(Centre(3, 2));
  Run();
  grid->SetCapture();
  desktop.MoveMouse(Centre(0, 0));
  Run();
  desktop.SetCapture(nullptr);
  desktop.MoveMouse(Centre(1, 1));
  Run();
  ASSERT_NE(Editor(), nullptr);
  EXPECT_EQ(TextOf(*Editor()), CString(_T("墙")));
}

TEST_F(GridComposition, ALookAtTheListIsNoChange) {
  FillTexts(4, 3);
  At(1, 1)->AddOption(_T("C20"));
  At(1, 1)->AddOption(_T("C30"));
  Choose(1, 1);
  Key(VK_F2);
  Key(VK_F4);
  ASSERT_NE(grid->GetRow(1)->GetComboWnd(), nullptr);
  EXPECT_NE(grid->GetRow(1)->GetComboWnd()->GetDroppedState(), FALSE);
  Key(VK_ESCAPE);
  ASSERT_NE(Editor(), nullptr) << "the list alone was closed";
  Key(VK_RETURN);
  EXPECT_EQ(Value(1, 1), CString(_T("板")));
  EXPECT_EQ(At(1, 1)->IsItemChanged(), FALSE);
}

// The test may end it whenever it says something: it does nothing more then.
class QuietEndGrid : public NotingGrid {
 protected:
  void OnEndInplaceEdit(CBCGPGridItem* /*item*/) override { Say("ended"); }
};

TEST_F(GridComposition, HandlersMayEndTheGridWhileOneBegins) {
  for (const char* const moment : {"ended", "changed", "left"}) {
    grid = std::make_unique<QuietEndGrid>();
    grid->Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 400, 300), &top, 7);
    FillTexts(4, 3);
    Choose(1, 1);
    grid->on = [this, moment](const std::string& what) {
      if (what.rfind(moment, 0) == 0) grid.reset();
    };
    Compose(_T("qiang"));
    ClickOn(3, 2);
    EXPECT_EQ(grid, nullptr) << moment;
    grid.reset();
    Run();
  }
}

}  // namespace
}  // namespace lorv_test
