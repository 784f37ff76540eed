#include "grid/commands/grid_commands.h"

#include "framework/windows/menu.h"
#include "prompts/language.h"
#include "tests/grid/basic/basic_desk.h"

namespace {

using lorv::CommandWhen;

class GridCommands : public lorv_test::BasicDesk {
 protected:
  GridCommands() {
    MakeTable(4, 3);
    commands = std::make_unique<lorv::GridCommands>(*grid);
    grid->SetFocus();
    grid->SetCurSel({1, 1});
    Run();
  }
  ~GridCommands() override { SetLanguageType(LANGUAGE_CHINESE); }
  void MakeTable(int rows, int columns) {
    for (int column = 0; column < columns; ++column) grid->InsertColumn(column, _T("c"), 60);
    grid->AppendRows(rows);
    for (int row = 0; row < rows; ++row)
      for (int column = 0; column < columns; ++column)
        grid->SetValue(row, column, _variant_t(10 * (rows - row) + column), FALSE);
    Run();
  }
  // A command that counts how often it was given.
  lorv::GridCommand Counting(LPCTSTR name, LPCTSTR keys) {
    lorv::GridCommand command;
    command.name = name;
    command.keys = keys;
    command.chinese = _T("数");
    command.english = _T("Count");
    command.run = [this](CBCGPGridCtrl&) { return ++given > 0; };
    return command;
  }
  void PressWith(int modifier, int key) {
    desktop.PressWith(modifier, key);
    Run();
  }
  std::string Cell(int row, int column) const { return grid->GetItem(row, column)->FormatItem().ToUtf8(); }

  std::unique_ptr<lorv::GridCommands> commands;
  int given = 0;
};

}  // namespace

TEST_F(GridCommands, KeysGiveWhatIsBound) {
  PressWith(VK_CONTROL, 'Z');
  EXPECT_TRUE(commands->Bind(_T("undo"), [this](CBCGPGridCtrl& on) {
    EXPECT_EQ(&on, grid.get());
    return ++given > 0;
  }));
  PressWith(VK_CONTROL, 'Z');
  EXPECT_EQ(given, 1);
  desktop.Press('Z');
  Run();
  EXPECT_EQ(given, 1);
}

TEST_F(GridCommands, UnboundOnesAreKnownAndCannotBeGiven) {
  for (const LPCTSTR name : {_T("copy"), _T("cut"), _T("paste"), _T("undo"), _T("redo"), _T("find")}) {
    EXPECT_NE(commands->Find(name), nullptr);
    EXPECT_FALSE(commands->IsEnabled(name));
    EXPECT_FALSE(commands->Run(name));
  }
  EXPECT_FALSE(commands->Run(_T("nobody")));
}

TEST_F(GridCommands, AHostChangesKeysAndTexts) {
  ASSERT_TRUE(commands->Add(Counting(_T("count"), _T("F9"))));
  EXPECT_FALSE(commands->Add(Counting(_T("count"), _T("F8"))));
  EXPECT_FALSE(commands->Add(Counting(_T(""), _T("F8"))));
  EXPECT_FALSE(commands->Add(Counting(_T("other"), _T("F99"))));
  Key(VK_F9);
  EXPECT_EQ(given, 1);
  EXPECT_FALSE(commands->SetKeys(_T("count"), _T("F99")));
  EXPECT_FALSE(commands->SetKeys(_T("nobody"), _T("F6")));
  EXPECT_TRUE(commands->SetKeys(_T("count"), _T("F6, Ctrl+F6")));
  Key(VK_F9);
  Key(VK_F6);
  PressWith(VK_CONTROL, VK_F6);
  EXPECT_EQ(given, 3);
  EXPECT_TRUE(commands->SetTexts(_T("count"), _T("计数"), _T("Count & more")));
  EXPECT_FALSE(commands->SetTexts(_T("nobody"), _T("a"), _T("b")));
  EXPECT_EQ(commands->MenuText(_T("count")), CString(_T("计数\tF6")));
  SetLanguageType(LANGUAGE_ENGLISH);
  EXPECT_EQ(commands->MenuText(_T("count")), CString(_T("Count && more\tF6")));
  EXPECT_NE(commands->HelpText().Find(_T("F6, Ctrl+F6\tCount & more\n")), -1);
  EXPECT_TRUE(commands->Remove(_T("count")));
  EXPECT_FALSE(commands->Remove(_T("count")));
  Key(VK_F6);
  EXPECT_EQ(given, 3);
}

TEST_F(GridCommands, TheGridsOwnKeysStay) {
  EXPECT_FALSE(commands->SetKeys(_T("move"), _T("F6")));
  EXPECT_FALSE(commands->Bind(_T("move"), [](CBCGPGridCtrl&) { return true; }));
  Key(VK_DOWN);
  EXPECT_EQ(grid->GetCurrentRow(), 2);
}

TEST_F(GridCommands, TheFirstThatCanBeGivenTakesTheKey) {
  commands->Add(Counting(_T("count"), _T("Ctrl+C")));
  PressWith(VK_CONTROL, 'C');
  EXPECT_EQ(given, 1);
  int copied = 0;
  commands->Bind(
      _T("copy"), [&](CBCGPGridCtrl&) { return ++copied > 0; },
      [this](const CBCGPGridCtrl&) { return given < 2; });
  PressWith(VK_CONTROL, 'C');
  EXPECT_EQ(copied, 1);
  EXPECT_EQ(given, 1);
  given = 2;
  PressWith(VK_CONTROL, 'C');
  EXPECT_EQ(copied, 1);
  EXPECT_EQ(given, 3);
}

TEST_F(GridCommands, AskWhatMustBeSo) {
  EXPECT_TRUE(commands->IsEnabled(_T("hide_column")));
  EXPECT_TRUE(commands->IsEnabled(_T("clear")));
  grid->SetCurSel(CBCGPGridItemID(), lorv::kSelectClear);
  EXPECT_FALSE(commands->IsEnabled(_T("hide_column")));
  EXPECT_FALSE(commands->IsEnabled(_T("clear")));
  EXPECT_TRUE(commands->IsEnabled(_T("sort_up")));
  lorv::GridCommand edits = Counting(_T("edits"), _T(""));
  edits.when = CommandWhen::kEditableCell;
  commands->Add(edits);
  grid->SetCurSel({0, 0});
  EXPECT_TRUE(commands->IsEnabled(_T("edits")));
  grid->SetItemReadOnly(0, 0, true);
  EXPECT_FALSE(commands->IsEnabled(_T("edits")));
  ASSERT_NE(grid->EnableVirtualMode([](CBCGPGridRow&, int) {}), FALSE);
  EXPECT_FALSE(commands->IsEnabled(_T("sort_up")));
  EXPECT_FALSE(commands->Run(_T("clear")));
}

TEST_F(GridCommands, AnEditorKeepsItsKeys) {
  commands->Bind(_T("copy"), [this](CBCGPGridCtrl&) { return ++given > 0; });
  commands->Bind(_T("find"), [this](CBCGPGridCtrl&) { return ++given > 0; });
  Key(VK_F2);
  ASSERT_NE(grid->GetEditingItem(), nullptr);
  PressWith(VK_CONTROL, 'C');
  EXPECT_EQ(given, 0);
  desktop.Type(_T("77"));
  Run();
  PressWith(VK_CONTROL, 'F');
  EXPECT_EQ(given, 1);
  EXPECT_EQ(grid->GetEditingItem(), nullptr);
  EXPECT_EQ(Cell(1, 1), "77");
}

TEST_F(GridCommands, OwnStepsDoWhatTheySay) {
  EXPECT_TRUE(commands->Run(_T("select_all")));
  EXPECT_EQ(grid->GetSelection().front(), CBCGPGridRange(0, 0, 2, 3));
  grid->SetCurSel({1, 1});
  EXPECT_TRUE(commands->Run(_T("sort_up")));
  EXPECT_EQ(Cell(0, 1), "11");
  EXPECT_TRUE(commands->Run(_T("sort_down")));
  EXPECT_EQ(Cell(0, 1), "41");
  EXPECT_TRUE(commands->Run(_T("hide_column")));
  EXPECT_EQ(grid->GetColumnVisible(1), FALSE);
  EXPECT_TRUE(commands->Run(_T("show_columns")));
  EXPECT_NE(grid->GetColumnVisible(1), FALSE);
  grid->SetCurSel({1, 1});
  EXPECT_TRUE(commands->Run(_T("insert_row")));
  EXPECT_EQ(grid->GetRowCount(), 5);
  EXPECT_EQ(Cell(1, 1), "");
  grid->SetCurSel({1, 1});
  EXPECT_TRUE(commands->Run(_T("delete_rows")));
  EXPECT_EQ(grid->GetRowCount(), 4);
  EXPECT_FALSE(commands->IsChecked(_T("filter_bar")));
  EXPECT_TRUE(commands->Run(_T("filter_bar")));
  EXPECT_TRUE(commands->IsChecked(_T("filter_bar")));
}

TEST_F(GridCommands, TheLastColumnIsNotHidden) {
  for (int column = 0; column < 2; ++column) {
    grid->SetCurSel({0, column});
    EXPECT_TRUE(commands->Run(_T("hide_column")));
  }
  grid->SetCurSel({0, 2});
  EXPECT_FALSE(commands->Run(_T("hide_column")));
}

TEST_F(GridCommands, ClearingKeepsWhatIsReadOnlyOrHidden) {
  grid->SetItemReadOnly(0, 0, true);
  grid->SetRowVisible(1, false);
  grid->AdjustLayout();
  commands->Run(_T("select_all"));
  grid->Taken();
  EXPECT_TRUE(commands->Run(_T("clear")));
  EXPECT_EQ(Cell(0, 0), "40");
  EXPECT_EQ(Cell(0, 1), "");
  EXPECT_EQ(Cell(1, 1), "31");
  EXPECT_EQ(grid->Taken().size(), 8U);
  EXPECT_FALSE(commands->Run(_T("clear")));
  grid->SetReadOnly();
  EXPECT_FALSE(commands->Run(_T("insert_row")));
  EXPECT_FALSE(commands->Run(_T("delete_rows")));
}

TEST_F(GridCommands, MenusComeFromTheTable) {
  commands->Run(_T("filter_bar"));
  CMenu menu;
  menu.CreatePopupMenu();
  commands->FillMenu(menu, {_T("copy"), _T("-"), _T("nobody"), _T("filter_bar")}, 100);
  ASSERT_EQ(menu.GetMenuItemCount(), 3);
  EXPECT_EQ(menu.GetMenuItemID(0), 100U);
  EXPECT_EQ(menu.GetMenuItemID(2), 103U);
  EXPECT_NE(menu.GetMenuState(0, MF_BYPOSITION) & MF_GRAYED, 0U);
  EXPECT_NE(menu.GetMenuState(2, MF_BYPOSITION) & MF_CHECKED, 0U);
  CString text;
  menu.GetMenuString(0, text, MF_BYPOSITION);
  EXPECT_EQ(text, CString(_T("复制\tCtrl+C")));
  desktop.AnswerMenu(2);
  EXPECT_TRUE(commands->ShowMenu({_T("copy"), _T("select_all")}, CPoint(5, 5)));
  EXPECT_EQ(grid->GetSelection().front(), CBCGPGridRange(0, 0, 2, 3));
  EXPECT_FALSE(commands->ShowMenu({_T("copy"), _T("select_all")}, CPoint(5, 5)));
}

TEST_F(GridCommands, FunctionsMayChangeTheTableAndEndTheCommands) {
  commands->Bind(_T("undo"), [this](CBCGPGridCtrl&) { return commands->Remove(_T("undo")); });
  EXPECT_TRUE(commands->Run(_T("undo")));
  EXPECT_EQ(commands->Find(_T("undo")), nullptr);
  commands->Bind(_T("redo"), [this](CBCGPGridCtrl&) {
    commands.reset();
    return true;
  });
  PressWith(VK_CONTROL, 'Y');
  EXPECT_EQ(commands, nullptr);
  EXPECT_TRUE(grid->KeyHandlers().IsEmpty());
}

TEST_F(GridCommands, FunctionsMayEndTheGrid) {
  commands->Bind(_T("undo"), [this](CBCGPGridCtrl&) {
    grid.reset();
    return true;
  });
  PressWith(VK_CONTROL, 'Z');
  EXPECT_EQ(commands->Grid(), nullptr);
  EXPECT_FALSE(commands->Run(_T("undo")));
  EXPECT_FALSE(commands->IsChecked(_T("filter_bar")));
  EXPECT_FALSE(commands->ShowMenu({_T("undo")}, CPoint()));
}

TEST_F(GridCommands, QuestionsMayEndTheGridOrTheCommands) {
  const auto run = [](CBCGPGridCtrl&) { return true; };
  commands->Bind(_T("undo"), run, [this](const CBCGPGridCtrl&) {
    grid.reset();
    return true;
  });
  PressWith(VK_CONTROL, 'Z');
  EXPECT_EQ(commands->Grid(), nullptr);
  CMenu menu;
  menu.CreatePopupMenu();
  commands->FillMenu(menu, {_T("undo"), _T("copy")}, 1);
  EXPECT_EQ(menu.GetMenuItemCount(), 2);
}

TEST_F(GridCommands, TheEditorThatClosesForACommandMayEndThem) {
  commands->Bind(_T("find"), [this](CBCGPGridCtrl&) { return ++given > 0; });
  Key(VK_F2);
  grid->on = [this](const std::string&) { commands.reset(); };
  desktop.Type(_T("5"));
  Run();
  PressWith(VK_CONTROL, 'F');
  EXPECT_EQ(given, 0);
  EXPECT_EQ(commands, nullptr);
}
