#include "grid/clipboard/grid_clipboard.h"

#include "grid/commands/grid_commands.h"
#include "tests/grid/history/history_desk.h"

namespace {

using Grid = lorv_test::HostileGrid<CBcgTrueDbGridCtrlEx>;
using Refusal = lorv::PasteRefusal;

class GridClipboardOf : public lorv_test::HistoryDesk<Grid> {
 protected:
  void Start(int rows, int columns) {
    HistoryDesk::Start(rows, columns);
    clipboard = std::make_unique<lorv::GridClipboard>(*grid);
  }
  void Clip(LPCTSTR text) { desktop.SetClipboardText(text); }
  lorv::PasteReport PasteAt(int row, int column, const lorv::PasteOptions& options = {}) {
    Choose(row, column);
    return clipboard->Paste(options);
  }
  std::string Texts(int upper, int left, int bottom, int right) {
    std::string texts;
    for (int row = upper; row <= bottom; ++row)
      for (int column = left; column <= right; ++column)
        texts += Text(row, column).ToUtf8() + (column < right ? "," : (row < bottom ? ";" : ""));
    return texts;
  }
  std::unique_ptr<lorv::GridClipboard> clipboard;
};

// Refuses one value, or ends the grid at it.
class RefusingGrid : public CBCGPBasicGridCtrl {
 public:
  std::function<void()> at_stop;
  bool refuses = false;
  void SetValue(int row, int column, const _variant_t& value, BOOL redraw) override {
    const bool stop = value == _variant_t(_T("stop"));
    if (stop && refuses) return;
    if (stop && at_stop) {
      const auto copy = at_stop;
      return copy();
    }
    CBCGPBasicGridCtrl::SetValue(row, column, value, redraw);
  }
};

using GridClipboardHostile = lorv_test::HistoryDesk<RefusingGrid>;

}  // namespace

TEST_F(GridClipboardOf, CopiesTextAndHtml) {
  Start(3, 3);
  Put(1, 1, _T("two\r\nlines"));
  Put(1, 2, _T("007"));
  grid->GetItem(0, 1)->SetBackgroundColor(RGB(255, 0, 0));
  grid->SelectRange({1, 0, 2, 1});
  ASSERT_TRUE(clipboard->Copy());
  EXPECT_EQ(desktop.ClipboardText().ToUtf8(), "1\t2\r\n\"two\nlines\"\t007\r\n");
  const std::vector<BYTE> html = desktop.ClipboardBytes(CString(lorv::TransferData::kHtml));
  EXPECT_EQ(
      std::string(html.begin(), html.end()),
      "<table><tr><td style=\"background:#FF0000;\" bgcolor=\"#FF0000\">1</td><td>2</td></tr><tr><td>two"
      "<!--[if mso]><br style=\"mso-data-placement:same-cell;\"><![endif]-->&#10;lines</td>"
      "<td style=\"mso-number-format:'\\@';\" sdnum=\"1033;0;@\">007</td></tr></table>");
}

// A spreadsheet is to see a number in a text that is one, and nothing else in any other.
TEST_F(GridClipboardOf, MarksTextsThatASpreadsheetWouldChange) {
  Start(1, 1);
  const auto marked = [&](LPCTSTR text) {
    Put(0, 0, text);
    grid->SetCurSel({0, 0});
    clipboard->Copy();
    const std::vector<BYTE> html = desktop.ClipboardBytes(CString(lorv::TransferData::kHtml));
    return std::string(html.begin(), html.end()).find("sdnum") != std::string::npos;
  };
  for (const LPCTSTR text :
       {_T("007"), _T("=1"), _T("1e3"), _T("1/2"), _T("1-2"), _T("2.5."), _T("1."), _T("100%"), _T("+5"),
        _T("-"), _T("@a"), _T("12 34"), _T("1234567890123456"), _T("-01")})
    EXPECT_EQ(marked(text), CString(text).GetLength() > 1) << CString(text).ToUtf8();
  for (const LPCTSTR text : {_T("0"), _T("7"), _T("0.5"), _T("-0.5"), _T("7.25"), _T("C30"), _T("墙"), _T(""),
                             _T("123456789012345"), _T(" 1/2")})
    EXPECT_FALSE(marked(text)) << CString(text).ToUtf8();
}

TEST_F(GridClipboardOf, CopiesWhatIsShown) {
  Start(4, 4);
  grid->SetColumnVisible(1, FALSE);
  grid->SetRowVisible(2, false);
  grid->AdjustLayout();
  grid->SelectRange({0, 0, 3, 3});
  ASSERT_TRUE(clipboard->Copy());
  EXPECT_EQ(desktop.ClipboardText().ToUtf8(), "0\t2\t3\r\n10\t12\t13\r\n30\t32\t33\r\n");
}

TEST_F(GridClipboardOf, CopiesAMergedBlockOnce) {
  Start(3, 3);
  grid->MergeRange({0, 0, 1, 1});
  grid->SelectRange({0, 0, 2, 1});
  ASSERT_TRUE(clipboard->Copy());
  EXPECT_EQ(desktop.ClipboardText().ToUtf8(), "0\t\t2\r\n\t\t12\r\n");
  const std::vector<BYTE> html = desktop.ClipboardBytes(CString(lorv::TransferData::kHtml));
  EXPECT_EQ(std::string(html.begin(), html.end()),
            "<table><tr><td colspan=2 rowspan=2>0</td><td>2</td></tr><tr><td>12</td></tr></table>");
}

TEST_F(GridClipboardOf, CopiesSeveralRangesInLine) {
  Start(4, 3);
  grid->SelectRow(0);
  grid->SetCurSel({2, 0}, lorv::kSelectAdd);
  grid->SetCurSel({2, 0});
  grid->SetCurSel({0, 0}, lorv::kSelectAdd);
  ASSERT_TRUE(clipboard->Copy());
  EXPECT_EQ(desktop.ClipboardText().ToUtf8(), "0\r\n20\r\n");
  grid->SetCurSel({3, 2}, lorv::kSelectAdd);
  EXPECT_FALSE(clipboard->Copy());
  grid->SetCurSel(CBCGPGridItemID(), lorv::kSelectClear);
  EXPECT_FALSE(clipboard->Copy());
}

TEST_F(GridClipboardOf, PastesAsOneStepAndSelectsIt) {
  Start(4, 3);
  Clip(_T("a\tb\r\nc\t\"d\ne\"\r\n"));
  const lorv::PasteReport report = PasteAt(1, 1);
  EXPECT_TRUE(report.pasted);
  EXPECT_EQ(report.cells, 4);
  EXPECT_EQ(report.refused, 0);
  EXPECT_EQ(report.range, CBCGPGridRange(1, 1, 2, 2));
  EXPECT_EQ(grid->GetSelection().front(), report.range);
  EXPECT_EQ(Texts(1, 1, 2, 2), "a,b;c,d\r\ne");
  EXPECT_EQ(Text(3, 1), _T("31"));
  ExpectOneStep("a paste");
}

TEST_F(GridClipboardOf, PastesWhatItCopied) {
  Start(4, 4);
  Put(0, 0, _T("\"quoted\""));
  Put(1, 1, _T("a\r\n\tb"));
  grid->SelectRange({0, 0, 1, 1});
  ASSERT_TRUE(clipboard->Copy());
  PasteAt(2, 2);
  EXPECT_EQ(Texts(2, 2, 3, 3), Texts(0, 0, 1, 1));
}

TEST_F(GridClipboardOf, KeepsTheKindOfTheCell) {
  Start(1, 3);
  grid->SetValue(0, 0, _variant_t(1.5));
  grid->SetValue(0, 1, _variant_t(3));
  Clip(_T("2.25\tx\t7"));
  PasteAt(0, 0);
  EXPECT_EQ(grid->GetValue(0, 0), _variant_t(2.25));
  EXPECT_EQ(grid->GetValue(0, 1), _variant_t(_T("x")));
  EXPECT_EQ(grid->GetValue(0, 2), _variant_t(_T("7")));
}

TEST_F(GridClipboardOf, RepeatsOverALargerSelection) {
  Start(6, 4);
  Clip(_T("x"));
  grid->SelectRange({0, 0, 1, 2});
  EXPECT_EQ(clipboard->Paste().cells, 6);
  EXPECT_EQ(Texts(0, 0, 2, 2), "x,x,2;x,x,12;x,x,22");
  Clip(_T("1\t2"));
  grid->SelectRange({0, 3, 3, 4});
  EXPECT_EQ(clipboard->Paste().cells, 8);
  EXPECT_EQ(Texts(3, 0, 4, 3), "1,2,1,2;1,2,1,2");
  Clip(_T("p\nq"));
  grid->SelectRange({0, 0, 0, 2});
  EXPECT_EQ(clipboard->Paste().cells, 2);
  EXPECT_EQ(Texts(0, 0, 2, 0), "p;q;x");
}

TEST_F(GridClipboardOf, StepsOverHiddenAndKeepsLockedCells) {
  Start(5, 4);
  grid->SetColumnVisible(1, FALSE);
  grid->SetRowVisible(1, false);
  grid->AdjustLayout();
  grid->GetItem(2, 2)->SetReadOnly();
  grid->GetItem(2, 3)->AllowEdit(FALSE);
  Clip(_T("a\tb\tc\nd\te\tf\ng\th\ti"));
  const lorv::PasteReport report = PasteAt(0, 0);
  EXPECT_EQ(Texts(0, 0, 3, 3), "a,1,b,c;10,11,12,13;d,21,22,23;g,31,h,i");
  EXPECT_EQ(report.cells, 7);
  ASSERT_EQ(report.refused, 2);
  EXPECT_EQ(report.refused_cells[1].cell, CBCGPGridItemID(2, 3));
  EXPECT_EQ(report.refused_cells[1].text, _T("f"));
  EXPECT_EQ(report.refused_cells[1].why, Refusal::kLocked);
}

TEST_F(GridClipboardOf, PastesAllOrNothingWhereItIsAsked) {
  Start(3, 3);
  Clip(_T("a\tb\nc\td"));
  lorv::PasteOptions options;
  options.all_or_nothing = true;
  options.accepts = [](const CBCGPGridItemID&, const _variant_t& value) {
    return value != _variant_t(_T("d"));
  };
  lorv::PasteReport report = PasteAt(0, 0, options);
  EXPECT_FALSE(report.pasted);
  EXPECT_EQ(report.cells, 0);
  EXPECT_EQ(report.refused_cells[0].why, Refusal::kNotAccepted);
  EXPECT_EQ(Now(), first);
  EXPECT_FALSE(history->CanUndo());
  options.all_or_nothing = false;
  report = PasteAt(0, 0, options);
  EXPECT_TRUE(report.pasted);
  EXPECT_EQ(Texts(0, 0, 1, 1), "a,b;c,11");
  options = {};
  options.all_or_nothing = true;
  EXPECT_FALSE(PasteAt(2, 2, options).pasted);
  EXPECT_TRUE(PasteAt(1, 1, options).pasted);
}

TEST_F(GridClipboardOf, LeavesWhatHasNoRoomOutside) {
  Start(2, 2);
  Clip(_T("a\tb\tc\nd\te\tf\ng\th\ti"));
  const lorv::PasteReport report = PasteAt(1, 1);
  EXPECT_EQ(report.cells, 1);
  EXPECT_EQ(report.refused, 8);
  EXPECT_EQ(report.refused_cells[0].why, Refusal::kOutside);
  EXPECT_TRUE(report.refused_cells[0].cell.IsNull());
  lorv::PasteOptions options;
  options.adds_rows = true;
  EXPECT_EQ(PasteAt(1, 0, options).rows_added, 2);
  EXPECT_EQ(Texts(1, 0, 3, 1), "a,b;d,e;g,h");
}

TEST_F(GridClipboardOf, CountsRefusedCellsBeyondThoseThatItReports) {
  Start(1, 1);
  CString text;
  for (std::size_t i = 0; i <= lorv::kMaxReportedRefusals; ++i) text += _T("x\n");
  Clip(text);
  EXPECT_EQ(PasteAt(0, 0).refused_cells.size(), lorv::kMaxReportedRefusals);
  text += _T("x\n");
  Clip(text);
  const lorv::PasteReport report = PasteAt(0, 0);
  EXPECT_EQ(report.refused, static_cast<long long>(lorv::kMaxReportedRefusals) + 1);
  EXPECT_EQ(report.refused_cells.size(), lorv::kMaxReportedRefusals);
}

TEST_F(GridClipboardOf, AnAutoRowGridGrows) {
  Fill(2, 2);
  grid->SetAutoAddRow(true);
  history = std::make_unique<lorv::GridHistory>(*grid);
  clipboard = std::make_unique<lorv::GridClipboard>(*grid);
  first = Now();
  Clip(_T("a\tb\r\nc\td\r\ne\tf\r\n"));
  EXPECT_EQ(PasteAt(1, 0).rows_added, 2);
  EXPECT_EQ(grid->GetRowCount(), 4);
  EXPECT_EQ(Texts(1, 0, 3, 1), "a,b;c,d;e,f");
  ExpectOneStep("a paste that adds rows");
  EXPECT_EQ(PasteAt(2, 0).rows_added, 3);
  EXPECT_EQ(grid->GetRowCount(), 5);
  Clip(_T("x"));
  grid->SelectColumn(0);
  EXPECT_EQ(clipboard->Paste().rows_added, 0);
}

TEST_F(GridClipboardOf, CutsAsOneStep) {
  Start(3, 3);
  grid->GetItem(1, 1)->SetReadOnly();
  first = Now();
  grid->SelectRange({0, 0, 1, 1});
  ASSERT_TRUE(clipboard->Cut());
  EXPECT_EQ(desktop.ClipboardText().ToUtf8(), "0\t1\r\n10\t11\r\n");
  EXPECT_EQ(Texts(0, 0, 1, 2), ",,2;,11,12");
  ExpectOneStep("a cut");
}

TEST_F(GridClipboardOf, ReadsHtmlWhereItIsRicher) {
  Start(4, 4);
  lorv::TransferData data;
  data.SetHtml(
      "<table><tr><td colspan=2 bgcolor=#FF0000>a</td></tr><tr><td>b</td><td>c<br>d</td></tr></table>");
  desktop.SetClipboard(data);
  PasteAt(0, 0);
  EXPECT_EQ(Texts(0, 0, 1, 1), "a,;b,c\r\nd");
  EXPECT_FALSE(grid->GetMergedRange({0, 0}).IsValid());
  data.SetText(_T("plain"));
  desktop.SetClipboard(data);
  PasteAt(2, 2);
  EXPECT_EQ(Text(2, 2), _T("plain"));
  EXPECT_EQ(Text(3, 3), _T("33"));
  first = Now();
  history->Forget();
  lorv::PasteOptions options;
  options.takes_looks = true;
  PasteAt(2, 2, options);
  EXPECT_EQ(grid->GetMergedRange({2, 3}), CBCGPGridRange(2, 2, 3, 2));
  EXPECT_EQ(grid->GetItem(2, 2)->GetBackgroundColor(), static_cast<COLORREF>(RGB(255, 0, 0)));
  EXPECT_EQ(Text(3, 2), _T("b"));
  ExpectOneStep("a paste with looks");
}

TEST_F(GridClipboardOf, DoesNothingWhereNothingCanBeDone) {
  Start(2, 2);
  EXPECT_FALSE(PasteAt(0, 0).pasted);
  Clip(_T(""));
  EXPECT_FALSE(PasteAt(0, 0).pasted);
  Clip(_T("x"));
  grid->SetReadOnly();
  EXPECT_FALSE(PasteAt(0, 0).pasted);
  EXPECT_FALSE(clipboard->Cut());
  EXPECT_TRUE(clipboard->Copy());
  grid->SetReadOnly(FALSE);
  Choose(0, 0);
  Type(_T("half"));
  EXPECT_TRUE(clipboard->Paste().pasted);
  EXPECT_EQ(Text(0, 0), _T("0"));
  EXPECT_EQ(history->UndoCount(), 2U);
  history->Undo();
  EXPECT_EQ(Text(0, 0), _T("half"));
  grid.reset();
  EXPECT_FALSE(clipboard->Copy());
  EXPECT_FALSE(clipboard->Cut());
  EXPECT_FALSE(clipboard->Paste().pasted);
}

TEST_F(GridClipboardHostile, AThrowInTheMiddleLeavesOneStep) {
  Start(3, 2);
  lorv::GridClipboard clipboard(*grid);
  desktop.SetClipboardText(_T("a\tb\nstop\td"));
  grid->at_stop = [] { throw 7; };
  Choose(0, 0);
  EXPECT_THROW(clipboard.Paste(), int);
  EXPECT_EQ(Text(0, 1), _T("b"));
  EXPECT_EQ(Text(1, 0), _T("10"));
  ExpectOneStep("what was set until then");
  lorv::PasteOptions options;
  options.all_or_nothing = true;
  Choose(0, 0);
  EXPECT_THROW(clipboard.Paste(options), int);
  EXPECT_EQ(Now(), first);
  EXPECT_FALSE(history->CanUndo());
}

// What was set and taken back, and rows that were added and went again, are no step; nor do they end what can
// be redone.
TEST_F(GridClipboardHostile, NothingAtAllLeavesNoStep) {
  Start(3, 2);
  lorv::GridClipboard clipboard(*grid);
  Enter(0, 0, _T("typed"));
  ASSERT_TRUE(history->Undo());
  desktop.SetClipboardText(_T("a\tb\nc\td\ne\tf\nstop\tg"));
  grid->refuses = true;
  lorv::PasteOptions options;
  options.all_or_nothing = options.adds_rows = true;
  Choose(1, 0);
  const lorv::PasteReport report = clipboard.Paste(options);
  EXPECT_FALSE(report.pasted);
  EXPECT_EQ(report.refused, 1);
  EXPECT_EQ(Now(), first);
  EXPECT_FALSE(history->CanUndo());
  EXPECT_TRUE(history->CanRedo());
  // The same texts that stand there: nothing to take back either.
  desktop.SetClipboardText(_T("10\t11\n20\t21"));
  Choose(1, 0);
  EXPECT_TRUE(clipboard.Paste().pasted);
  EXPECT_FALSE(history->CanUndo());
}

TEST_F(GridClipboardHostile, TheEndOfTheGridOrTheClipboardInTheMiddle) {
  Start(3, 2);
  auto clipboard = std::make_unique<lorv::GridClipboard>(*grid);
  desktop.SetClipboardText(_T("a\nstop\nc"));
  Choose(0, 0);
  grid->at_stop = [&] { clipboard.reset(); };
  EXPECT_TRUE(clipboard->Paste().pasted);
  clipboard = std::make_unique<lorv::GridClipboard>(*grid);
  Choose(0, 0);
  grid->at_stop = [&] { grid.reset(); };
  EXPECT_FALSE(clipboard->Paste().pasted);
  EXPECT_FALSE(clipboard->Cut());
}

TEST_F(GridClipboardHostile, RowsThatGoInTheMiddle) {
  Start(4, 2);
  lorv::GridClipboard clipboard(*grid);
  desktop.SetClipboardText(_T("stop\tb\nc\td\ne\tf\ng\th"));
  grid->at_stop = [&] { grid->DeleteRows(1, 3); };
  Choose(0, 0);
  const lorv::PasteReport report = clipboard.Paste();
  EXPECT_EQ(report.cells, 1);
  EXPECT_EQ(report.refused, 7);
  EXPECT_TRUE(history->Undo());
  EXPECT_EQ(Now(), first);
}

TEST_F(GridClipboardHostile, AValueThatTheGridRefusesIsReported) {
  Start(2, 2);
  lorv::GridClipboard clipboard(*grid);
  desktop.SetClipboardText(_T("a\tstop"));
  grid->refuses = true;
  Choose(0, 0);
  lorv::PasteReport report = clipboard.Paste();
  EXPECT_EQ(report.cells, 1);
  EXPECT_EQ(report.refused_cells.at(0).why, Refusal::kNotTaken);
  ExpectOneStep("the rest");
  lorv::PasteOptions options;
  options.all_or_nothing = true;
  Choose(0, 0);
  report = clipboard.Paste(options);
  EXPECT_FALSE(report.pasted);
  EXPECT_EQ(Now(), first);
}

TEST_F(GridClipboardHostile, TheQuestionOfTheHostMayTakeRows) {
  Start(4, 2);
  lorv::GridClipboard clipboard(*grid);
  desktop.SetClipboardText(_T("a\tb\nc\td\ne\tf\ng\th"));
  lorv::PasteOptions options;
  options.accepts = [&](const CBCGPGridItemID&, const _variant_t&) { return grid->DeleteRows(0, 1), true; };
  Choose(0, 0);
  const lorv::PasteReport report = clipboard.Paste(options);
  EXPECT_TRUE(report.pasted);
  EXPECT_EQ(report.cells + report.refused, 8);
  EXPECT_LT(grid->GetRowCount(), 4);
}

TEST_F(GridClipboardHostile, TheQuestionOfTheHostMayEndTheGrid) {
  Start(4, 2);
  lorv::GridClipboard clipboard(*grid);
  desktop.SetClipboardText(_T("a\tb\nc\td"));
  lorv::PasteOptions options;
  options.accepts = [&](const CBCGPGridItemID&, const _variant_t&) { return grid.reset(), true; };
  Choose(0, 0);
  EXPECT_FALSE(clipboard.Paste(options).pasted);
}

TEST_F(GridClipboardHostile, TheQuestionBeforeAllOrNothingMayEndTheGrid) {
  Start(4, 2);
  lorv::GridClipboard clipboard(*grid);
  desktop.SetClipboardText(_T("a\tb\nc\td"));
  lorv::PasteOptions options;
  options.all_or_nothing = true;
  options.accepts = [&](const CBCGPGridItemID&, const _variant_t&) { return grid.reset(), true; };
  Choose(0, 0);
  EXPECT_FALSE(clipboard.Paste(options).pasted);
  EXPECT_FALSE(clipboard.Copy());
}

TEST_F(GridClipboardOf, IsWorkedByKeysWhereCommandsAreBound) {
  Start(3, 3);
  lorv::GridCommands commands(*grid);
  clipboard->Bind(commands);
  history->Bind(commands);
  EXPECT_FALSE(commands.IsEnabled(_T("undo")));
  Choose(0, 1);
  KeyWith(VK_CONTROL, 'C');
  EXPECT_EQ(desktop.ClipboardText(), _T("1\r\n"));
  Choose(2, 2);
  KeyWith(VK_CONTROL, 'V');
  EXPECT_EQ(Text(2, 2), _T("1"));
  KeyWith(VK_CONTROL, 'Z');
  EXPECT_EQ(Now(), first);
  KeyWith(VK_CONTROL, 'Y');
  EXPECT_EQ(Text(2, 2), _T("1"));
  Choose(1, 0);
  KeyWith(VK_CONTROL, 'X');
  EXPECT_EQ(Text(1, 0), _T(""));
  EXPECT_EQ(desktop.ClipboardText(), _T("10\r\n"));
  EXPECT_EQ(history->UndoCount(), 2U);
}
