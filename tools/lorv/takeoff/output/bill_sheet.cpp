#include "tools/lorv/takeoff/output/bill_sheet.h"

#include <algorithm>

#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/takeoff/output/bill_output.h"
#include "tools/lorv/takeoff/output/sheet_rows.h"

// The bill as a sheet: the printed bill's cells, with subtotals that fold what they sum up. Rows repeat their
// keys, other than on paper, so that the sheet can be filtered and sorted.

namespace lorv::tool {
namespace {

// Components and total, behind all others.
constexpr std::size_t kNumberColumns = 2;

bool SumsUp(const BillRow& subtotal, const BillRow& row) {
  return subtotal.quantity == row.quantity && subtotal.depth < row.depth &&
         std::equal(subtotal.keys.begin(),
                    subtotal.keys.begin() + static_cast<std::ptrdiff_t>(subtotal.depth), row.keys.begin());
}

// Of each row how many subtotals sum it up. These stand behind what they sum up: the rows are
// walked from the end.
std::vector<int> Levels(const std::vector<BillRow>& rows) {
  std::vector<int> levels(rows.size());
  std::vector<const BillRow*> open;
  for (std::size_t i = rows.size(); i-- > 0;) {
    while (!open.empty() && !SumsUp(*open.back(), rows[i])) open.pop_back();
    levels[i] = static_cast<int>(open.size());
    if (rows[i].kind == BillRow::kSubtotal) open.push_back(&rows[i]);
  }
  return levels;
}

void AddRow(SheetRows& sheet, const std::vector<std::string>& cells, bool bold, int level) {
  for (std::size_t i = 0; i < cells.size(); ++i) {
    if (i + kNumberColumns < cells.size()) {
      sheet.AddText(cells[i], bold);
    } else {
      sheet.AddNumber(cells[i], bold);
    }
  }
  sheet.EndRow(level);
}

// The totals of the building have no keys: the first of them says so, the cells of keys are cleared of "all".
std::vector<std::string> TotalCells(const Bill& bill, const BillRow& row, bool first) {
  std::vector<std::string> cells = BillCells(bill, row);
  std::fill(cells.begin() + 3, cells.end() - static_cast<std::ptrdiff_t>(kNumberColumns), std::string());
  cells[0] = first ? Say("Whole building") : std::string();
  return cells;
}

}  // namespace

void AddBillSheet(const Bill& bill, WorkbookFile& book) {
  SheetRows sheet(book, book.AddSheet(CString::FromUtf8(Say("Bill")), 0));
  for (const std::string& title : BillTitles(bill)) sheet.AddText(title, true);
  sheet.EndRow();
  const std::vector<BillRow> rows = bill.Rows();
  const std::vector<int> levels = Levels(rows);
  bool in_totals = false;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (rows[i].kind != BillRow::kTotal) {
      AddRow(sheet, BillCells(bill, rows[i]), rows[i].kind == BillRow::kSubtotal, levels[i]);
      continue;
    }
    // An empty row parts the totals from the lines that they sum up.
    if (!in_totals) sheet.EndRow();
    AddRow(sheet, TotalCells(bill, rows[i], !in_totals), true, 0);
    in_totals = true;
  }
  sheet.Finish();
}

}  // namespace lorv::tool
