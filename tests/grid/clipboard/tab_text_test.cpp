#include "grid/clipboard/tab_text.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using Rows = std::vector<std::vector<std::string>>;

std::string Utf8(lorv::TextView text) {
  return CString(text.data(), static_cast<int>(text.size())).ToUtf8();
}

Rows RowsOf(const lorv::TextTable& table) {
  Rows rows;
  for (int row = 0; row < table.Rows(); ++row) {
    rows.emplace_back();
    for (int column = 0; table.At(row, column).has_value(); ++column)
      rows.back().push_back(Utf8(*table.At(row, column)));
  }
  return rows;
}

Rows ReadTabs(const std::string& text) {
  const CString units = CString::FromUtf8(text);
  return RowsOf(
      lorv::ReadTabText(lorv::TextView(units.GetString(), static_cast<std::size_t>(units.GetLength()))));
}

std::string Written(const std::string& cell) {
  std::basic_string<TCHAR> text;
  const CString units = CString::FromUtf8(cell);
  lorv::AppendTabCell(text, lorv::TextView(units.GetString(), static_cast<std::size_t>(units.GetLength())));
  return Utf8(text);
}

}  // namespace

TEST(TabText, ReadsWhatSpreadsheetsPutOnTheClipboard) {
  EXPECT_EQ(ReadTabs(""), Rows{});
  EXPECT_EQ(ReadTabs("梁"), (Rows{{"梁"}}));
  EXPECT_EQ(ReadTabs("a\tb\r\nc\td\r\n"), (Rows{{"a", "b"}, {"c", "d"}}));
  EXPECT_EQ(ReadTabs("a\tb\nc\td\n"), (Rows{{"a", "b"}, {"c", "d"}}));
  EXPECT_EQ(ReadTabs("a\rb"), (Rows{{"a"}, {"b"}}));
  EXPECT_EQ(ReadTabs("\r\n"), (Rows{{""}}));
  EXPECT_EQ(ReadTabs("a\n\nb"), (Rows{{"a"}, {""}, {"b"}}));
  EXPECT_EQ(ReadTabs("\t\r\n"), (Rows{{"", ""}}));
  EXPECT_EQ(ReadTabs("a\tb\tc\nd"), (Rows{{"a", "b", "c"}, {"d"}}));
}

TEST(TabText, ReadsQuotesAroundBreaksAndLeavesOthers) {
  EXPECT_EQ(ReadTabs("\"a\nb\"\tc\r\n"), (Rows{{"a\nb", "c"}}));
  EXPECT_EQ(ReadTabs("\"a\tb\"\n\"c \"\"d\"\"\""), (Rows{{"a\tb"}, {"c \"d\""}}));
  EXPECT_EQ(ReadTabs("\"\"\t\"\""), (Rows{{"", ""}}));
  EXPECT_EQ(ReadTabs("\"a"), (Rows{{"\"a"}}));
  EXPECT_EQ(ReadTabs("\"a\" b\tc"), (Rows{{"\"a\" b", "c"}}));
  EXPECT_EQ(ReadTabs("5\" pipe\t6\""), (Rows{{"5\" pipe", "6\""}}));
  EXPECT_EQ(ReadTabs("\"a\tb\nc"), (Rows{{"\"a", "b"}, {"c"}}));
}

TEST(TabText, KnowsTheLongestRow) {
  const lorv::TextTable table = lorv::ReadTabText(_T("a\nb\tc\td\ne\tf"));
  EXPECT_EQ(table.Rows(), 3);
  EXPECT_EQ(table.columns, 3);
  EXPECT_FALSE(table.At(0, 1).has_value());
  EXPECT_EQ(Utf8(*table.At(2, 1)), "f");
}

TEST(TabText, QuotesOnlyWhatNeedsIt) {
  EXPECT_EQ(Written("C30 砼"), "C30 砼");
  EXPECT_EQ(Written("5\" pipe"), "5\" pipe");
  EXPECT_EQ(Written("a\tb"), "\"a\tb\"");
  EXPECT_EQ(Written("a\r\nb"), "\"a\nb\"");
  EXPECT_EQ(Written("a\nsay \"x\""), "\"a\nsay \"\"x\"\"\"");
  EXPECT_EQ(Written("\"quoted\""), "\"\"\"quoted\"\"\"");
  EXPECT_EQ(Written(""), "");
}

TEST(TabText, ReadsBackWhateverItWrote) {
  std::mt19937 random(5);
  const std::string letters = "a\"\t\n b";
  for (int turn = 0; turn < 3000; ++turn) {
    Rows rows(1 + random() % 3, std::vector<std::string>(1 + random() % 3));
    std::string text;
    for (auto& row : rows) {
      for (std::size_t column = 0; column < row.size(); ++column) {
        for (std::size_t i = random() % 5; i > 0; --i) row[column] += letters[random() % letters.size()];
        text += (column > 0 ? "\t" : "") + Written(row[column]);
      }
      text += "\r\n";
    }
    ASSERT_EQ(ReadTabs(text), rows) << text;
  }
}
