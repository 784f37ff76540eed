#include <cstdlib>
#include <filesystem>
#include <functional>

#include "grid/clipboard/grid_clipboard.h"
#include "tests/grid/suite_desk.h"
#include "tests/support/data.h"

// What a spreadsheet office puts on the clipboard, as files that office_clipboard.py has taken from one:
// those beside this test, or fresh ones in the folder that LORV_OFFICE_CLIPBOARD names. And what we put
// there, as files that the same script pastes into the office.

namespace {

namespace fs = std::filesystem;
using lorv::test::ReadBytes;

constexpr int kRows = 6;
constexpr int kColumns = 4;
using Cells = const char* const[kRows][kColumns];

// As the office shows them; the script fills its sheet so.
constexpr Cells kCells = {
    {"构件", "Grade", "Length", "Remark"},        {"KL1", "C30", "7.25", "two\r\nlines"},
    {"梁 2", "007", "-0.5", "a \"quoted\" word"}, {"a & b < c", "", "0.25", "  blanks  "},
    {"tab here", "1e3", "1234567.875", "1"},      {"merged", "", "100%", "𠀀 end"}};

fs::path Kept() {
  return lorv::test::ProjectFolder() / "tests/grid/clipboard/office";
}

fs::path Taken() {
  const char* const fresh = std::getenv("LORV_OFFICE_CLIPBOARD");
  return fresh == nullptr ? Kept() : fs::path(fresh);
}

class OfficeClipboard : public lorv_test::SuiteDesk<CBCGPBasicGridCtrl> {
 protected:
  OfficeClipboard() {
    grid->Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 400, 300), &top, 7);
    Run();
    Fill(kRows, kColumns);
    for (int row = 0; row < kRows; ++row)
      for (int column = 0; column < kColumns; ++column)
        grid->SetValue(row, column, _variant_t(_T("")), FALSE);
  }
  void Offer(bool text, bool html) {
    lorv::TransferData data;
    if (text) data.SetText(CString::FromUtf8(ReadBytes(Taken() / "range.txt")));
    if (html) data.SetHtml(ReadBytes(Taken() / "range.html"));
    desktop.SetClipboard(data);
  }
  lorv::PasteReport Paste(const lorv::PasteOptions& options = {}) {
    grid->SetCurSel({0, 0});
    return lorv::GridClipboard(*grid).Paste(options);
  }
  void ExpectCells(const std::function<std::string(int row, int column, std::string text)>& seen) {
    for (int row = 0; row < kRows; ++row)
      for (int column = 0; column < kColumns; ++column)
        EXPECT_EQ(Text(row, column).ToUtf8(), seen(row, column, kCells[row][column])) << row << "," << column;
  }
  static std::string AsItIs(int /*row*/, int /*column*/, std::string text) { return text; }
};

}  // namespace

// Blanks from the text, line breaks from the HTML: the cells are as the office has them.
TEST_F(OfficeClipboard, BothFormsTogetherGiveTheCells) {
  Offer(true, true);
  const lorv::PasteReport report = Paste();
  EXPECT_TRUE(report.pasted);
  EXPECT_EQ(report.refused, 0);
  EXPECT_EQ(report.range, CBCGPGridRange(0, 0, kColumns - 1, kRows - 1));
  ExpectCells(AsItIs);
}

// The office's text has a blank for a line break.
TEST_F(OfficeClipboard, TheTextAloneHasNoLineBreaks) {
  Offer(true, false);
  EXPECT_TRUE(Paste().pasted);
  ExpectCells([](int, int, std::string text) {
    const std::size_t at = text.find("\r\n");
    return at == std::string::npos ? text : text.replace(at, 2, " ");
  });
}

// HTML has no blanks at the edges of a cell.
TEST_F(OfficeClipboard, TheHtmlAloneHasNoBlanksAround) {
  Offer(false, true);
  EXPECT_TRUE(Paste().pasted);
  ExpectCells([](int, int, const std::string& text) { return text == "  blanks  " ? "blanks" : text; });
}

TEST_F(OfficeClipboard, ColoursAndMergedCellsComeWhereTheyAreWanted) {
  Offer(true, true);
  lorv::PasteOptions options;
  options.takes_looks = true;
  EXPECT_TRUE(Paste(options).pasted);
  EXPECT_EQ(grid->GetItem(1, 1)->GetBackgroundColor(), RGB(0xFF, 0xCC, 0));
  EXPECT_EQ(grid->GetItem(1, 1)->GetTextColor(), RGB(0, 0, 0x80));
  EXPECT_EQ(grid->GetMergedRange({5, 1}), CBCGPGridRange(0, 5, 1, 5));
}

// What the script pastes into the office is what we copy.
TEST_F(OfficeClipboard, OurCopyIsTheOneThatTheOfficeWasGiven) {
  for (int row = 0; row < kRows; ++row)
    for (int column = 0; column < kColumns; ++column)
      grid->SetValue(row, column, _variant_t(CString::FromUtf8(kCells[row][column])), FALSE);
  grid->GetItem(1, 1)->SetBackgroundColor(RGB(0xFF, 0xCC, 0));
  grid->MergeRange({0, 5, 1, 5});
  grid->SelectRange({0, 0, kColumns - 1, kRows - 1});
  ASSERT_TRUE(lorv::GridClipboard(*grid).Copy());
  EXPECT_EQ(desktop.ClipboardText().ToUtf8(), ReadBytes(Kept() / "ours.txt"));
  const std::vector<BYTE> html = desktop.ClipboardBytes(CString(lorv::TransferData::kHtml));
  EXPECT_EQ(std::string(html.begin(), html.end()), ReadBytes(Kept() / "ours.html"));
}
