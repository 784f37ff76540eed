#include "tools/lorv-desk/table/table_commands.h"

#include "prompts/language.h"
#include "tests/tools/desk/table_windows.h"
#include "tools/lorv/language/spoken_language.h"

namespace lorv::tool {
namespace {

class TableCommandsInUse : public TableWindows {
 protected:
  EditedGrid& Table() { return window->Table(); }
  // Whether the table counts as changed since the last question.
  bool Changed() {
    const bool changed = Table().IsChanged();
    Table().MarkChanged(false);
    return changed;
  }
};

// What a user sees at first: nothing to undo, as reading the file is none of his steps.
TEST_F(TableCommandsInUse, ReadingIsNoStep) {
  Open("a,b\n1,2\n");
  EXPECT_FALSE(window->Commands().History().CanUndo());
  PressControl('Z');
  EXPECT_FALSE(Table().IsChanged());
  EXPECT_EQ(Table().GetRowCount(), 1);
}

TEST_F(TableCommandsInUse, UndoAndRedoByTheirKeysChangeTheTable) {
  Open("a,b\n1,2\n3,4\n");
  Table().SetCurSel({0, 1});
  Type(_T("7"));
  Press(VK_RETURN);
  EXPECT_EQ(At(0, 1), CString(_T("7")));
  EXPECT_TRUE(Changed());
  // Return has opened the next cell, whose editor has an undo of its own.
  Press(VK_ESCAPE);
  PressControl('Z');
  EXPECT_EQ(At(0, 1), CString(_T("2")));
  EXPECT_TRUE(Changed());
  PressControl('Y');
  EXPECT_EQ(At(0, 1), CString(_T("7")));
  EXPECT_TRUE(Changed());
}

TEST_F(TableCommandsInUse, CopyLeavesTheTableAndPasteChangesIt) {
  Open("a,b\n1,2\n3,4\n");
  Table().SelectRange({0, 0, 1, 0});
  PressControl('C');
  EXPECT_FALSE(Changed());
  EXPECT_EQ(DesktopInForce().ClipboardText(), CString(_T("1\t2\r\n")));
  Table().SetCurSel({1, 0});
  PressControl('V');
  EXPECT_EQ(At(1, 1), CString(_T("2")));
  EXPECT_TRUE(Changed());
  PressControl('X');
  EXPECT_TRUE(At(1, 1).IsEmpty());
  EXPECT_TRUE(Changed());
  Give(_T("save"));
  EXPECT_EQ(Bytes(), "a,b\n1,2\n,\n");
}

TEST_F(TableCommandsInUse, ColumnsAreFrozenAndFreedByTheMenu) {
  Open("a,b,c\n1,2,3\n");
  Table().SetCurSel({0, 1});
  EXPECT_TRUE(Give(_T("freeze_columns")));
  EXPECT_EQ(Table().GetFrozenColumns(), 2);
  EXPECT_TRUE(Give(_T("unfreeze_columns")));
  EXPECT_EQ(Table().GetFrozenColumns(), 0);
  EXPECT_FALSE(Changed());
}

// As in a spreadsheet the file has the columns as they stand; a name that was moved behind columns without
// one is written, too.
TEST_F(TableCommandsInUse, MovedColumnsAreSavedAndUndone) {
  Open("a,b\n1,2,3\n4,5\n");
  Table().SetCurSel({0, 0});
  EXPECT_TRUE(Give(_T("move_column_right")));
  EXPECT_TRUE(Changed());
  EXPECT_EQ(At(0, 1), CString(_T("1")));
  EXPECT_TRUE(Give(_T("move_column_right")));
  Give(_T("save"));
  EXPECT_EQ(Bytes(), "b,,a\n2,3,1\n5,,4\n");
  EXPECT_TRUE(Give(_T("restore_columns")));
  EXPECT_TRUE(Changed());
  Give(_T("save"));
  EXPECT_EQ(Bytes(), "a,b\n1,2,3\n4,5\n");
  PressControl('Z');
  EXPECT_EQ(At(0, 2), CString(_T("1")));
}

// The rows below are made as a spreadsheet has them without end; columns are those of the file.
TEST_F(TableCommandsInUse, PasteAddsRowsAndReportsWhatHasNoPlace) {
  Open("a,b\n1,2\n");
  TransferData copied;
  copied.SetText(_T("x\ty\tz\r\nu\tv\tw\r\n"));
  DesktopInForce().SetClipboard(copied);
  Table().SetCurSel({0, 0});
  EXPECT_TRUE(Give(_T("paste")));
  EXPECT_EQ(Table().GetRowCount(), 2);
  EXPECT_EQ(At(1, 1), CString(_T("v")));
  ASSERT_EQ(dialogs.messages.size(), 1U);
  EXPECT_EQ(Utf8(dialogs.messages[0].text), "cells that could not be pasted: 2");
  PressControl('Z');
  EXPECT_EQ(Table().GetRowCount(), 1);
  EXPECT_EQ(At(0, 0), CString(_T("1")));
}

TEST_F(TableCommandsInUse, ReplacingChangesTheTable) {
  Open("a,b\nC30,C30\n");
  FindOptions options;
  options.text = _T("C30");
  window->Commands().Find().SetOptions(options);
  EXPECT_EQ(window->Commands().Find().ReplaceAll(_T("C35")).changed, 2);
  EXPECT_TRUE(Changed());
  PressControl('Z');
  EXPECT_EQ(At(0, 0), CString(_T("C30")));
  EXPECT_TRUE(Changed());
}

TEST_F(TableCommandsInUse, SortingIsSavedAndUndone) {
  Open("a\n10\n9\n2\n");
  Table().SetCurSel({0, 0});
  EXPECT_TRUE(Give(_T("sort_up")));
  EXPECT_TRUE(Changed());
  Give(_T("save"));
  EXPECT_EQ(Bytes(), "a\n2\n9\n10\n");
  PressControl('Z');
  EXPECT_TRUE(Changed());
  Give(_T("save"));
  EXPECT_EQ(Bytes(), "a\n10\n9\n2\n");
}

TEST_F(TableCommandsInUse, LooksAreNoChange) {
  Open("a,b\n1,2\n");
  const int width = Table().GetColumnWidth(0);
  PressControl(VK_OEM_PLUS);
  EXPECT_EQ(window->Commands().Zoom().Zoom(), 110);
  EXPECT_GT(Table().GetColumnWidth(0), width);
  Give(_T("filter_bar"));
  Table().SelectRow(0);
  EXPECT_FALSE(Table().IsChanged());
  EXPECT_TRUE(Give(_T("zoom_reset")));
  EXPECT_EQ(Table().GetColumnWidth(0), width);
}

TEST_F(TableCommandsInUse, RowsAreChanges) {
  Open("a\n1\n2\n");
  Table().SetCurSel({0, 0});
  Give(_T("insert_row"));
  EXPECT_TRUE(Changed());
  Table().SelectRow(0);
  Give(_T("delete_rows"));
  EXPECT_TRUE(Changed());
}

TEST_F(TableCommandsInUse, PrintsWithTheNameOfTheFile) {
  HeadlessPrinting printing;
  Platform ports = PortsInForce();
  ports.printing = &printing;
  const ScopedPlatform scope(ports);
  Open("a,b\n1,2\n");
  PressControl('P');
  EXPECT_EQ(printing.pages.size(), 1U);
  ASSERT_GE(printing.asked.size(), 2U);
  EXPECT_NE(Utf8(printing.asked[1]).find("t.csv"), std::string::npos);
  EXPECT_EQ(printing.asked.back(), CString(_T("gone")));
  printing.agrees = false;
  EXPECT_FALSE(Give(_T("print")));
  EXPECT_EQ(printing.pages.size(), 1U);
}

// One table for the keys and the menu: each entry stands there with the key that gives it.
TEST_F(TableCommandsInUse, TheMenuShowsTheKeys) {
  SetLanguageType(LANGUAGE_ENGLISH);
  Open("a,b\n1,2\n");
  window->Commands().ShowMenu(CPoint(10, 10));
  SetLanguageType(LANGUAGE_CHINESE);
  ASSERT_EQ(desktop.ShownMenus().size(), 1U);
  std::string entries;
  for (const MenuEntry& entry : desktop.ShownMenus()[0].entries) entries += Utf8(entry.text) + "|";
  for (const char* entry : {"Copy\tCtrl+C|", "Undo\tCtrl+Z|", "Find\tCtrl+F|", "Save\tCtrl+S|",
                            "Print\tCtrl+P|", "To a spreadsheet|", "Sort ascending|"})
    EXPECT_NE(entries.find(entry), std::string::npos) << entry << " in " << entries;
}

TEST_F(TableCommandsInUse, EveryEntryHasAnAction) {
  Open("a,b\n1,2\n");
  for (const CString& name : TableCommands::MenuNames()) {
    if (name == _T("-")) continue;
    const GridCommand* const command = window->Commands().Table().Find(name);
    ASSERT_NE(command, nullptr) << Utf8(name);
    EXPECT_TRUE(command->run != nullptr) << Utf8(name);
    EXPECT_FALSE(command->chinese.IsEmpty()) << Utf8(name);
    EXPECT_FALSE(command->english.IsEmpty()) << Utf8(name);
  }
}

}  // namespace
}  // namespace lorv::tool
