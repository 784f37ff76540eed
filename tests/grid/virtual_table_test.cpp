#include <algorithm>
#include <string>

#include "grid/clipboard/grid_clipboard.h"
#include "grid/export/text_export.h"
#include "grid/find/grid_find.h"
#include "tests/grid/suite_desk.h"

// A table of ten million rows by a call-back: whatever is done with it, no more of its cells are there at a
// time than of a table of ten thousand.

namespace {

constexpr int kRows = 10'000'000;
constexpr int kColumns = 3;

class CountedItem : public CBCGPGridItem {
 public:
  explicit CountedItem(const _variant_t& value) : CBCGPGridItem(value) { most = std::max(most, ++alive); }
  CountedItem(const CountedItem&) = delete;
  CountedItem& operator=(const CountedItem&) = delete;
  ~CountedItem() override { --alive; }

  static inline int alive = 0;
  static inline int most = 0;
};

class VirtualTable : public lorv_test::SuiteDesk<CBCGPBasicGridCtrl> {
 protected:
  VirtualTable() {
    grid->Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 400, 300), &top, 7);
    grid->InsertColumns(Names(kColumns), _T(""), 0);
    grid->EnableVirtualMode([this](CBCGPGridRow& row, int index) {
      ++filled;
      for (int column = 0; column < kColumns; ++column)
        row.ReplaceItem(column, new CountedItem(_variant_t(index % kRows * 10 + column)), FALSE);
    });
    grid->SetVirtualRows(kRows);
    Run();
    filled = 0;
    CountedItem::most = CountedItem::alive;
  }
  // The cells of the rows that are kept, and of those on their way.
  static void ExpectFewAlive() {
    EXPECT_LE(CountedItem::most, static_cast<int>(lorv::kMostVirtualRows + 8) * kColumns);
  }

  int filled = 0;
};

}  // namespace

TEST_F(VirtualTable, ScrollingAsksForWhatIsSeen) {
  for (int page = 0; page < 500; ++page) {
    grid->EnsureVisible(CBCGPGridItemID(static_cast<int>(page * 7919LL * 613 % kRows), 0));
    Run();
  }
  EXPECT_LT(filled, 500 * 60);
  ExpectFewAlive();
  grid->MoveLast();
  Run();
  EXPECT_EQ(grid->GetCurrentRow(), kRows - 1);
  EXPECT_EQ(Text(kRows - 1, 0), _T("99999990"));
}

TEST_F(VirtualTable, FindingGoesOnWithoutKeepingRows) {
  lorv::GridFind find(*grid);
  lorv::FindOptions options;
  options.text = _T("99999991");
  find.SetOptions(options);
  EXPECT_EQ(find.FindFrom({kRows - 100'000, 0}, false), CBCGPGridItemID(kRows - 1, 1));
  EXPECT_LE(filled, 100'001);
  EXPECT_EQ(find.FindFrom({kRows - 1, 2}, true), CBCGPGridItemID(kRows - 1, 1));
  ExpectFewAlive();
}

TEST_F(VirtualTable, ACopyHasItsRowsAndNoOthers) {
  constexpr int kFrom = 5'000'000;
  constexpr int kCopied = 20'000;
  grid->SelectRange({0, kFrom, 1, kFrom + kCopied - 1});
  filled = 0;
  ASSERT_TRUE(lorv::GridClipboard(*grid).Copy());
  EXPECT_LE(filled, kCopied);
  ExpectFewAlive();
  const std::string text = desktop.ClipboardText().ToUtf8();
  EXPECT_EQ(text.substr(0, 19), "50000000\t50000001\r\n");
  EXPECT_EQ(text.substr(text.size() - 19), "50199990\t50199991\r\n");
}

// Of all of it no clipboard could hold the text: it is refused before the rows are even counted.
TEST_F(VirtualTable, ACopyBeyondAllMemoryIsRefused) {
  grid->SetVirtualRows(lorv::kMaxVirtualTable);
  grid->SelectAll();
  Run();
  filled = 0;
  desktop.SetClipboardText(_T("former"));
  EXPECT_FALSE(lorv::GridClipboard(*grid).Copy());
  EXPECT_EQ(desktop.ClipboardText(), CString(_T("former")));
  EXPECT_EQ(filled, 0);
}

TEST_F(VirtualTable, SelectedRowsAreAllReportedWithoutBeingAskedFor) {
  grid->SelectRange({0, 1'000'000, 2, 1'009'999});
  Run();
  filled = 0;
  CArray<int, int> rows;
  EXPECT_EQ(grid->GetSelectRows(rows), 10'000);
  EXPECT_EQ(rows[9'999], 1'009'999);
  EXPECT_EQ(filled, 0);
}

TEST_F(VirtualTable, AnExportHoldsOnePiece) {
  grid->SetVirtualRows(100'000);
  filled = 0;
  long long bytes = 0;
  std::string last;
  EXPECT_TRUE(lorv::ExportText(*grid, {}, [&](std::string_view piece) {
    bytes += static_cast<long long>(piece.size());
    last = piece;
    return true;
  }));
  EXPECT_LE(filled, 100'000);
  EXPECT_GT(bytes, 2'000'000);
  EXPECT_EQ(last.substr(last.size() - 22), "999990,999991,999992\r\n");
  ExpectFewAlive();
}
