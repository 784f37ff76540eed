#include "grid/clipboard/html_table.h"

#include <gtest/gtest.h>

namespace {

using Rows = std::vector<std::vector<std::string>>;

Rows Read(std::string_view html) {
  const lorv::TextTable table = lorv::ReadHtmlTable(html);
  Rows rows;
  for (int row = 0; row < table.Rows(); ++row) {
    rows.emplace_back();
    for (int column = 0; table.At(row, column).has_value(); ++column) {
      const lorv::TextView text = *table.At(row, column);
      rows.back().push_back(CString(text.data(), static_cast<int>(text.size())).ToUtf8());
    }
  }
  return rows;
}

std::string Written(const CString& text, const lorv::CellExtent& extent = {}, bool literal = false) {
  std::string html;
  const lorv::TextView view(text.GetString(), static_cast<std::size_t>(text.GetLength()));
  lorv::AppendHtmlCell(html, {view, extent, literal});
  return html;
}

}  // namespace

TEST(HtmlTable, ReadsPlainTables) {
  EXPECT_EQ(Read(""), Rows{});
  EXPECT_EQ(Read("<p>no table</p>"), Rows{});
  EXPECT_EQ(Read("<table><tr><td>a</td><td>b</td></tr><tr><td>c</td></tr></table>"),
            (Rows{{"a", "b"}, {"c"}}));
  EXPECT_EQ(Read("x<TABLE border=1><TR><TH>a<TD>b<TR><td>c</TABLE>y<table><tr><td>z</table>"),
            (Rows{{"a", "b"}, {"c"}}));
  EXPECT_EQ(Read("<table><tr><td></td><td>&nbsp;</td></tr></table>"), (Rows{{"", " "}}));
  EXPECT_EQ(Read("<table><tr><td>a<table><tr><td>in</table>b</table>"), (Rows{{"ainb"}}));
  EXPECT_EQ(Read("</table><table><tr><td>a</table>"), (Rows{{"a"}}));
}

TEST(HtmlTable, ReadsTextAsItIsShown) {
  EXPECT_EQ(Read("<table><tr><td> a \r\n  b<br>\n c </td></table>"), (Rows{{"a b\nc"}}));
  EXPECT_EQ(Read("<table><tr><td>1 &lt; 2 &amp;&#x6881;&#26753;&unknown; &</td></table>"),
            (Rows{{"1 < 2 &梁梁&unknown; &"}}));
  EXPECT_EQ(Read("<table><tr><td>&#xD800;&#9999999;&#0;</td></table>"),
            (Rows{{"\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"}}));
  EXPECT_EQ(
      Read("<style>td{}<table></STYLE><!-- <table><tr><td>no --><table><tr><td title='a>b'><b>x</b></table>"),
      (Rows{{"x"}}));
  EXPECT_EQ(Read("<table><tr><td>a\xC2\xA0\xC2\xA0"
                 "b</table>"),
            (Rows{{"a  b"}}));
}

// As the two best known spreadsheets write it, from knowledge of their forms.
TEST(HtmlTable, ReadsWhatSpreadsheetsWrite) {
  EXPECT_EQ(
      Read("<html xmlns:v=\"urn:schemas-microsoft-com:vml\"><head><style><!--table {mso-x:\"\\.\";} "
           "--></style>"
           "</head><body><!--StartFragment--><table border=0 cellpadding=0><col width=64 style='width:48pt'>"
           "<tr height=20 style='height:15.0pt'>\r\n  <td height=20 class=xl65 width=64 "
           "style='height:15.0pt'>KL1</td>\r\n  <td align=right>3.5</td>\r\n </tr>\r\n <tr>\r\n  "
           "<td>two<br>\r\n"
           "    lines</td>\r\n  <td></td>\r\n </tr>\r\n<!--EndFragment--></table></body></html>"),
      (Rows{{"KL1", "3.5"}, {"two\nlines", ""}}));
  EXPECT_EQ(
      Read("<!DOCTYPE html><html><head><meta charset=\"utf-8\"/><style type=\"text/css\">body,div "
           "{font-size:x-small}</style></head><body><table cellspacing=\"0\" border=\"0\"><colgroup "
           "width=\"85\"></colgroup><tr><td height=\"17\" align=\"left\"><font face=\"DejaVu\">梁</font></td>"
           "<td align=\"right\" sdval=\"2.5\" sdnum=\"2052;\">2.5</td></tr></table></body></html>"),
      (Rows{{"梁", "2.5"}}));
}

TEST(HtmlTable, LaysSpansOutAndKeepsColours) {
  constexpr std::string_view kHtml =
      "<table><tr><td rowspan=2 colspan='2' bgcolor=\"#FF8000\">a</td><td>b</td></tr>"
      "<tr><td style=\"font:x;background-color:#010203;color:#0A0B0C\">c</td></tr>"
      "<tr><td>d</td><td rowspan=9>e</td><td><font color=#00FF00>f</font></td></tr></table>";
  EXPECT_EQ(Read(kHtml), (Rows{{"a", "", "b"}, {"", "", "c"}, {"d", "e", "f"}}));
  const lorv::TextTable table = lorv::ReadHtmlTable(kHtml);
  ASSERT_EQ(table.extents.size(), 4U);
  EXPECT_EQ(table.extents[0].rows, 2);
  EXPECT_EQ(table.extents[0].columns, 2);
  EXPECT_EQ(table.extents[0].back, static_cast<COLORREF>(RGB(255, 128, 0)));
  EXPECT_EQ(table.extents[1].column, 2);
  EXPECT_EQ(table.extents[1].back, static_cast<COLORREF>(RGB(1, 2, 3)));
  EXPECT_EQ(table.extents[1].text, static_cast<COLORREF>(RGB(10, 11, 12)));
  EXPECT_EQ(table.extents[2].rows, 1);
  EXPECT_EQ(table.extents[3].text, static_cast<COLORREF>(RGB(0, 255, 0)));
}

TEST(HtmlTable, StaysWithinItsLimitsWithHostileTables) {
  std::string html = "<table>";
  for (int row = 0; row < 2000; ++row) html += "<tr><td colspan=99999999999 rowspan=1000000>a<td>b";
  const lorv::TextTable table = lorv::ReadHtmlTable(html);
  EXPECT_LE(table.cells.size(), lorv::kMaxHtmlTable + lorv::kMaxHtmlColumns);
  EXPECT_LE(table.columns, lorv::kMaxHtmlColumns);
  for (std::size_t cut = 0; cut < 120; ++cut)
    lorv::ReadHtmlTable(
        std::string_view("<table><tr><td style=\"background:#12\">&#x<!-- <style> </table>").substr(0, cut));
}

TEST(HtmlTable, WritesWhatReadsBackAlike) {
  EXPECT_EQ(Written(_T("a<b>&c")), "<td>a&lt;b&gt;&amp;c</td>");
  EXPECT_EQ(Written(_T(" a  b\r\nc ")),
            "<td>&nbsp;a &nbsp;b<!--[if mso]><br "
            "style=\"mso-data-placement:same-cell;\"><![endif]-->&#10;c&nbsp;</td>");
  lorv::CellExtent extent;
  extent.rows = 2;
  extent.columns = 3;
  extent.back = RGB(1, 2, 255);
  EXPECT_EQ(
      Written(_T("007"), extent, true),
      "<td colspan=3 rowspan=2 style=\"background:#0102FF;mso-number-format:'\\@';\" sdnum=\"1033;0;@\" "
      "bgcolor=\"#0102FF\">007</td>");
  for (const CString& text :
       {CString(_T("  梁 <1>  ")), CString(_T("a\nb")), CString(_T("&amp;")), CString(_T(""))})
    EXPECT_EQ(Read("<table><tr>" + Written(text) + "</table>"), (Rows{{text.ToUtf8()}}));
}
