#include "grid/view/column_widths.h"

#include "grid/commands/grid_commands.h"
#include "tests/grid/basic/basic_desk.h"

namespace {

class ColumnWidths : public lorv_test::BasicDesk {
 protected:
  ColumnWidths() { grid->InsertColumns(_T("a,b,c"), _T("120,70,50"), 0); }
};

}  // namespace

TEST_F(ColumnWidths, AreTheTextThatTheSuiteKeeps) {
  EXPECT_EQ(lorv::ColumnWidthsOf(*grid), CString(_T("120,70,50")));
  grid->SetColumnVisible(1, FALSE);
  EXPECT_EQ(lorv::ColumnWidthsOf(*grid), CString(_T("120,70,50")));
  EXPECT_EQ(lorv::ColumnWidthsOf(*grid), grid->GetColsWidth());
  EXPECT_EQ(grid->GetColumnVisible(1), FALSE);
}

TEST_F(ColumnWidths, GoByTheClipboard) {
  EXPECT_TRUE(lorv::CopyColumnWidths(*grid));
  EXPECT_EQ(desktop.ClipboardText(), CString(_T("120,70,50")));
  CBCGPGridCtrl other;
  other.InsertColumn(0, _T("x"), 10);
  other.InsertColumn(1, _T("y"), 10);
  EXPECT_TRUE(lorv::PasteColumnWidths(other));
  EXPECT_EQ(lorv::ColumnWidthsOf(other), CString(_T("120,70")));
  desktop.SetClipboardText(_T("33\r\n"));
  EXPECT_TRUE(lorv::PasteColumnWidths(other));
  EXPECT_EQ(lorv::ColumnWidthsOf(other), CString(_T("33,70")));
}

TEST_F(ColumnWidths, WhatIsNoListChangesNothing) {
  for (const LPCTSTR text : {_T(""), _T("abc"), _T("12;13"), _T("-5"), _T("1.5")}) {
    desktop.SetClipboardText(text);
    EXPECT_FALSE(lorv::PasteColumnWidths(*grid)) << CString(text).ToUtf8();
  }
  EXPECT_EQ(lorv::ColumnWidthsOf(*grid), CString(_T("120,70,50")));
  CBCGPGridCtrl empty;
  EXPECT_FALSE(lorv::CopyColumnWidths(empty));
}

TEST_F(ColumnWidths, TheCommandCopiesThem) {
  lorv::GridCommands commands(*grid);
  EXPECT_FALSE(commands.IsEnabled(_T("copy_widths")));
  lorv::BindColumnWidths(commands);
  EXPECT_TRUE(commands.Run(_T("copy_widths")));
  EXPECT_EQ(desktop.ClipboardText(), CString(_T("120,70,50")));
}
