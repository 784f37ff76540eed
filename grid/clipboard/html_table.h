#pragma once

#include <string>
#include <string_view>

#include "grid/clipboard/tab_text.h"

namespace lorv {

constexpr int kMaxHtmlColumns = 16384;
constexpr std::size_t kMaxHtmlTable = std::size_t{1} << 22U;  // cells; those behind it are left out

// One cell on its way into a table in HTML.
struct HtmlCell {
  TextView text;
  CellExtent extent;
  bool literal = false;  // a spreadsheet is to keep it as a text, whatever it looks like
};

// Puts a cell behind what there is: UTF-8, line breaks so that spreadsheets keep them in the
// cell, spaces that HTML would drop as &nbsp;.
COMM_LORV_API void AppendHtmlCell(std::string& html, const HtmlCell& cell);

// The first table of a piece of HTML, as spreadsheets and browsers put it on the clipboard.
//
// Units: UTF-8 in; positions in the table count from 0. Places that a cell spans are empty cells.
// Edges: tags may be in any letter case, unclosed and with attributes of all sorts; what stands between tags
//   that mean nothing here counts, style sheets and comments do not; tables within cells are text. Cells
//   behind column kMaxHtmlColumns are left out, spans beyond the last row are cut. Without a table: no rows.
//
//   ReadHtmlTable("<table><tr><td>a<td>b<br>c</table>").At(0, 1)  gives the two lines "b" and "c"
COMM_LORV_API TextTable ReadHtmlTable(std::string_view html);

}  // namespace lorv
