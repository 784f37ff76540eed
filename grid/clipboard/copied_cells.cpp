#include "grid/clipboard/copied_cells.h"

#include <algorithm>

#include "grid/basic/basic_grid.h"
#include "grid/clipboard/grid_clipboard.h"
#include "grid/clipboard/html_table.h"

// Both forms of what is copied, written in one walk over the cells.

namespace lorv {
namespace {

// How many of the numbers, which ascend, lie from `first` to `last`.
int CountWithin(const std::vector<int>& numbers, int first, int last) {
  return static_cast<int>(std::upper_bound(numbers.begin(), numbers.end(), last) -
                          std::lower_bound(numbers.begin(), numbers.end(), first));
}

class CellWriter {
 public:
  CellWriter(const CBCGPBasicGridCtrl& grid, const CellArea& area) : grid_(grid), area_(area) {
    const auto cells = static_cast<long long>(area.rows.size()) * static_cast<long long>(area.columns.size());
    // HTML takes ten times the room of the text; whole tables go as text alone.
    html_on_ = cells <= kMaxHtmlCells;
    grid.GetMergedItemsInRange(
        {area.columns.front(), area.rows.front(), area.columns.back(), area.rows.back()}, blocks_);
    merges_ = !blocks_.empty();
  }

  TransferData Write() {
    if (html_on_) html_ = "<table>";
    TransferData data;
    for (const int row : area_.rows) {
      WriteRow(row);
      if (text_.size() > kMaxCopiedUnits) return data;
    }
    data.SetText(CString(text_.data(), static_cast<int>(text_.size())));
    if (html_on_) data.SetHtml(html_ + "</table>");
    return data;
  }

 private:
  void WriteRow(int row) {
    if (html_on_) html_ += "<tr>";
    const CBCGPGridRow* const found = grid_.CBCGPGridCtrl::GetRow(row);
    for (const int column : area_.columns) {
      if (column != area_.columns.front()) text_ += '\t';
      WriteCell({row, column}, found);
    }
    text_ += _T("\r\n");
    if (html_on_) html_ += "</tr>";
  }

  void WriteCell(const CBCGPGridItemID& id, const CBCGPGridRow* row) {
    const CBCGPGridRange block = merges_ ? grid_.GetMergedRange(id) : CBCGPGridRange();
    // Cells below a merged one keep their place in the text, which knows no extents.
    const bool covered = block.IsValid() && (block.m_nTop != id.m_nRow || block.m_nLeft != id.m_nColumn);
    const bool there = row != nullptr && row->HasItem(id.m_nColumn);
    CString room;
    const TextView view = there && !covered ? row->ShownText(id.m_nColumn, room) : TextView();
    AppendTabCell(text_, view);
    if (!html_on_ || covered) return;
    HtmlCell cell;
    cell.text = view;
    if (block.IsValid()) {
      cell.extent.rows = std::max(1, CountWithin(area_.rows, block.m_nTop, block.m_nBottom));
      cell.extent.columns = std::max(1, CountWithin(area_.columns, block.m_nLeft, block.m_nRight));
    }
    if (there) cell.literal = row->GetValueType(id.m_nColumn) == VT_BSTR && WouldChange(view);
    if (const CBCGPGridItem* const item = there ? row->FindItem(id.m_nColumn) : nullptr) {
      cell.extent.back = item->GetBackgroundColor();
      cell.extent.text = item->GetTextColor();
    }
    AppendHtmlCell(html_, cell);
  }

  // A spreadsheet would take zeros in front off, calculate, or see a date or another number in it.
  static bool WouldChange(TextView text) {
    constexpr TextView kDigits = _T("0123456789");
    constexpr TextView kBegins = _T("=+-@0123456789");
    constexpr std::size_t kExactDigits = 15;
    if (text.size() < 2 || kBegins.find(text.front()) == TextView::npos) return false;
    if (text.front() == '-') text.remove_prefix(1);
    const std::size_t whole = std::min(text.size(), text.find_first_not_of(kDigits));
    const bool zeros = whole > 1 && text.front() == '0';
    if (whole == 0 || zeros || text.size() > kExactDigits) return true;
    if (whole == text.size()) return false;
    const TextView behind = text.substr(whole + 1);
    return text[whole] != '.' || behind.empty() || behind.find_first_not_of(kDigits) != TextView::npos;
  }

  const CBCGPBasicGridCtrl& grid_;
  const CellArea& area_;
  bool html_on_ = false;
  bool merges_ = false;
  std::vector<CBCGPGridRange> blocks_;
  std::basic_string<TCHAR> text_;
  std::string html_;
};

}  // namespace

TransferData CopiedCells(const CBCGPBasicGridCtrl& grid, const CellArea& area) {
  return CellWriter(grid, area).Write();
}

}  // namespace lorv
