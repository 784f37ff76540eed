#include "tools/lorv-desk/table/table_window.h"

#include "tests/tools/desk/table_windows.h"

namespace lorv::tool {
namespace {

TEST_F(TableWindows, ShowWhatTheFileHolds) {
  Open("name,length\nKL1,7.2\nKL2,6.6\n");
  EXPECT_EQ(window->Table().GetRowCount(), 2);
  EXPECT_FALSE(window->Table().IsChanged());
  EXPECT_GE(window->Table().GetColumnWidth(0), 50);
  CRect client;
  window->GetClientRect(&client);
  CRect grid;
  window->Grid().GetClientRect(&grid);
  EXPECT_GT(grid.Width(), client.Width() / 2);
  ASSERT_FALSE(shell.progress.empty());
}

TEST_F(TableWindows, SaveWhatIsTyped) {
  Open("name,length\nKL1,7.2\nKL2,6.6\n");
  window->Table().SetCurSel({0, 1});
  Type(_T("8.4"));
  // The editor is still open: its text belongs to what is saved.
  PressControl('S');
  EXPECT_EQ(Bytes(), "name,length\nKL1,8.4\nKL2,6.6\n");
  EXPECT_FALSE(window->Table().IsChanged());
  EXPECT_TRUE(dialogs.messages.empty());
}

// Control with Alt is AltGr: a letter that is typed, not the command.
TEST_F(TableWindows, AltGrIsNotControl) {
  Open("a,b\n1,2\n");
  window->Table().SetValue(0, 0, _variant_t(_T("9")));
  desktop.KeyDown(VK_CONTROL);
  desktop.KeyDown(VK_MENU);
  Press('S');
  desktop.KeyUp(VK_MENU);
  desktop.KeyUp(VK_CONTROL);
  Run();
  EXPECT_EQ(Bytes(), "a,b\n1,2\n");
  EXPECT_TRUE(window->Table().IsChanged());
  PressControl('S');
  EXPECT_EQ(Bytes(), "a,b\n9,2\n");
}

TEST_F(TableWindows, ReportWhyTheyCannotSave) {
  Open("a,b\n1,2\n");
  window->Table().SetValue(0, 0, _variant_t(_T("9")));
  Protect(true);
  PressControl('S');
  Protect(false);
  ASSERT_EQ(dialogs.messages.size(), 1U);
  EXPECT_NE(Utf8(dialogs.messages[0].text).find("t.csv"), std::string::npos);
  EXPECT_TRUE(window->Table().IsChanged());
  EXPECT_EQ(Bytes(), "a,b\n1,2\n");
}

TEST_F(TableWindows, AskBeforeChangesAreLost) {
  Open("a,b\n1,2\n");
  window->Table().SetValue(0, 0, _variant_t(_T("9")));
  dialogs.answer = kAnswerYes;
  Protect(true);
  Close();
  // It could not be saved: that is reported, and the window stays.
  EXPECT_EQ(dialogs.messages.size(), 2U);
  ASSERT_NE(window->m_hWnd, nullptr);
  Protect(false);
  Close();
  EXPECT_EQ(window->m_hWnd, nullptr);
  EXPECT_EQ(Bytes(), "a,b\n9,2\n");
}

TEST_F(TableWindows, CloseWithoutSavingOnNo) {
  Open("a,b\n1,2\n");
  window->Table().SetValue(0, 0, _variant_t(_T("9")));
  dialogs.answer = kAnswerNo;
  Close();
  EXPECT_EQ(window->m_hWnd, nullptr);
  EXPECT_EQ(Bytes(), "a,b\n1,2\n");
}

TEST_F(TableWindows, CloseSilentlyWithoutChanges) {
  Open("a,b\n1,2\n");
  Close();
  EXPECT_EQ(window->m_hWnd, nullptr);
  EXPECT_TRUE(dialogs.messages.empty());
}

TEST_F(TableWindows, RowsComeAndGo) {
  Open("a,b\n1,2\n3,4\n");
  window->Table().SetCurSel({1, 0});
  Give(_T("insert_row"));
  EXPECT_TRUE(window->Table().IsChanged());
  EXPECT_EQ(window->Table().GetRowCount(), 3);
  EXPECT_EQ(window->Table().GetCurrentRow(), 1);
  Give(_T("save"));
  EXPECT_EQ(Bytes(), "a,b\n1,2\n,\n3,4\n");
  window->Table().SelectRow(0);
  Give(_T("delete_rows"));
  Give(_T("save"));
  EXPECT_EQ(Bytes(), "a,b\n,\n3,4\n");
}

TEST_F(TableWindows, RowsAreAddedBelowTheLastOne) {
  Open("a,b\n1,2\n");
  window->Table().SetCurSel({0, 0});
  Type(_T("5"));
  Press(VK_RETURN);
  EXPECT_EQ(window->Table().GetRowCount(), 2);
  Give(_T("save"));
  EXPECT_EQ(Bytes(), "a,b\n5,2\n,\n");
}

TEST_F(TableWindows, EmptyTablesTakeTheirFirstRow) {
  Open("");
  EXPECT_EQ(window->Table().GetColumnCount(), 1);
  Give(_T("insert_row"));
  EXPECT_EQ(window->Table().GetRowCount(), 1);
  window->Table().SetValue(0, 0, _variant_t(_T("x")));
  Give(_T("save"));
  EXPECT_EQ(Bytes(), "x\r\n");
}

TEST_F(TableWindows, MenuOffersTheCommands) {
  Open("a,b\n1,2\n3,4\n");
  window->Table().SelectRow(0);
  Run();
  Choose(_T("delete_rows"));
  desktop.Click(On(window->Grid(), 60, 50), VK_RBUTTON);
  Run();
  ASSERT_EQ(desktop.ShownMenus().size(), 1U);
  EXPECT_EQ(window->Table().GetRowCount(), 1);
}

// The reading was cancelled and that was meant: nothing is edited.
TEST_F(TableWindows, ReadingEndsWhenTheUserSaysSo) {
  std::string file = "a,b\n";
  for (int row = 0; row < 9000; ++row) file += "1,2\n";
  test::WriteBytes(std::filesystem::temp_directory_path() / "lorv_ended.csv", file);
  shell.user_cancelled = true;
  dialogs.answer = kAnswerYes;
  TableWindow ended((std::filesystem::temp_directory_path() / "lorv_ended.csv").string());
  EXPECT_FALSE(ended.Read());
  std::filesystem::remove(std::filesystem::temp_directory_path() / "lorv_ended.csv");
}

}  // namespace
}  // namespace lorv::tool
