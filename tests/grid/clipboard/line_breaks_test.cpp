#include "grid/clipboard/line_breaks.h"

#include <gtest/gtest.h>

#include "framework/text/utf8.h"
#include "grid/clipboard/html_table.h"

namespace {

// The first cells of the rows, with "/" for a line break.
std::string Taken(lorv::TextView text, std::string_view html) {
  lorv::TextTable table = lorv::ReadTabText(text);
  {
    // Nothing leads into the table that was taken from.
    const lorv::TextTable other = lorv::ReadHtmlTable(html);
    lorv::TakeLineBreaks(table, other);
  }
  std::string cells;
  for (int row = 0; row < table.Rows(); ++row) cells += lorv::TextToUtf8(*table.At(row, 0)) + ";";
  for (char& c : cells) c = c == '\n' ? '/' : c;
  return cells;
}

TEST(LineBreaks, ComeFromTheHtml) {
  EXPECT_EQ(Taken(_T("two lines\nb\n"), "<table><tr><td>two<br>lines<tr><td>b</table>"), "two/lines;b;");
  EXPECT_EQ(Taken(_T("墙  梁 板"), "<table><tr><td>墙<br><br>梁 板</table>"), "墙//梁 板;");
}

TEST(LineBreaks, CellsWithoutThemStayAsTheTextHasThem) {
  EXPECT_EQ(Taken(_T("  blanks  \n"), "<table><tr><td>blanks</table>"), "  blanks  ;");
  EXPECT_EQ(Taken(_T("\"a\nb\""), "<table><tr><td>a<br>b<br>c</table>"), "a/b;");
}

TEST(LineBreaks, OtherTextsAndOtherTablesStay) {
  EXPECT_EQ(Taken(_T("ab"), "<table><tr><td>a<br>b</table>"), "ab;");
  EXPECT_EQ(Taken(_T("a b c"), "<table><tr><td>a<br>b</table>"), "a b c;");
  EXPECT_EQ(Taken(_T("a b"), "<table><tr><td>a<br>b<tr><td>c</table>"), "a b;");
  EXPECT_EQ(Taken(_T("a b"), "<table><tr><td>a<br>b<td>c</table>"), "a b;");
  EXPECT_EQ(Taken(_T("a b"), "no table"), "a b;");
  EXPECT_EQ(Taken(_T(""), ""), "");
}

}  // namespace
