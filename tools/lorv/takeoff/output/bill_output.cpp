#include "tools/lorv/takeoff/output/bill_output.h"

#include <ostream>

#include "tools/lorv/csv/csv_writer.h"
#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/screen/column_text.h"

// The bill as text for people, as CSV and as JSON. The printed one leaves out what can be seen from the line
// above; the others repeat everything, as programs read lines one by one.

namespace lorv::tool {
namespace {

constexpr const char* kKindNames[] = {"line", "subtotal", "total"};

std::string Titled(const std::string& title) {
  // Titles of known columns are small letters in files and begin with a capital on paper.
  std::string shown = Say(title);
  if (!shown.empty() && shown[0] >= 'a' && shown[0] <= 'z')
    shown[0] = static_cast<char>(shown[0] - 'a' + 'A');
  return shown;
}

std::vector<TextTable::Column> Columns(const Bill& bill) {
  constexpr std::size_t kNumberColumns = 2;
  const std::vector<std::string> titles = BillTitles(bill);
  std::vector<TextTable::Column> columns;
  for (std::size_t i = 0; i < titles.size(); ++i) {
    const bool number = i + kNumberColumns >= titles.size();
    columns.push_back({titles[i], number ? TextTable::Side::kRight : TextTable::Side::kLeft});
  }
  return columns;
}

// What stands in the line above is not said again, as far as the beginnings are the same.
void BlankRepeated(std::vector<std::string>& cells, const std::vector<std::string>& above, std::size_t keys) {
  if (above.empty() || cells[0] != above[0]) return;
  const bool same_quantity = cells[1] == above[1] && cells[2] == above[2];
  // Keys behind one that differs stand in full: the same storey of another class is another one.
  bool same = same_quantity;
  for (std::size_t key = 3; same && key + 1 < keys + 2; ++key) {
    same = cells[key] == above[key];
    if (same) cells[key].clear();
  }
  cells[0].clear();
  if (same_quantity) cells[1] = cells[2] = "";
}

void PrintBuilding(const Bill& bill, const std::vector<BillRow>& rows, std::ostream& out) {
  using Side = TextTable::Side;
  TextTable table({{Say("Whole building")},
                   {Say("Unit")},
                   {Say("Components"), Side::kRight},
                   {Say("Total"), Side::kRight}});
  for (const BillRow& row : rows) {
    if (row.kind != BillRow::kTotal) continue;
    const Quantity& quantity = bill.OfQuantities().List()[row.quantity];
    table.Add({quantity.name, quantity.unit, quantity.is_ratio ? "" : PlainReal(row.components), row.shown});
  }
  table.Print(out);
}

}  // namespace

std::vector<std::string> BillTitles(const Bill& bill) {
  std::vector<std::string> titles = {Titled(bill.Keys()[0].title), Say("Quantity"), Say("Unit")};
  for (std::size_t key = 1; key < bill.Keys().size(); ++key) titles.push_back(Titled(bill.Keys()[key].title));
  titles.push_back(Say("Components"));
  titles.push_back(Say("Total"));
  return titles;
}

// The quantity and its unit stand behind the first key.
std::vector<std::string> BillCells(const Bill& bill, const BillRow& row) {
  const Quantity& quantity = bill.OfQuantities().List()[row.quantity];
  std::vector<std::string> cells = {row.keys[0], quantity.name, quantity.unit};
  cells.insert(cells.end(), row.keys.begin() + 1, row.keys.end());
  if (row.kind == BillRow::kSubtotal) cells[row.depth + 2] = Say("all");
  cells.push_back(quantity.is_ratio ? std::string() : PlainReal(row.components));
  cells.push_back(row.shown);
  return cells;
}

void PrintBill(const Bill& bill, std::ostream& out) {
  const std::vector<BillRow> rows = bill.Rows();
  TextTable table(Columns(bill));
  std::vector<std::string> above;
  for (const BillRow& row : rows) {
    if (row.kind == BillRow::kTotal) continue;
    std::vector<std::string> cells = BillCells(bill, row);
    const std::vector<std::string> whole = cells;
    // A line between the groups of the first key, which people look for first.
    if (!above.empty() && above[0] != whole[0]) table.AddLine();
    BlankRepeated(cells, above, bill.Keys().size());
    table.Add(cells);
    above = whole;
  }
  table.Print(out);
  out << "\n";
  PrintBuilding(bill, rows, out);
  // Only then: elsewhere the note would raise a question that nobody has.
  if (Bill::IsAdjusted(rows, bill.OfQuantities())) {
    out << "\n" << Say("Rounded so that lines add up to their totals (largest remainder).") << "\n";
  }
}

void WriteBill(const Bill& bill, OutputFile& file) {
  CsvLine line;
  line.Add(bill.Keys()[0].title).Add("quantity").Add("unit");
  for (std::size_t key = 1; key < bill.Keys().size(); ++key) line.Add(bill.Keys()[key].title);
  line.Add("components").Add("total").Add("shown").Add("row");
  // Words for rows are English in files, whatever language is spoken: programs read them.
  file.Write(line.Take());
  for (const BillRow& row : bill.Rows()) {
    const Quantity& quantity = bill.OfQuantities().List()[row.quantity];
    line.Add(row.keys[0]).Add(quantity.name).Add(quantity.unit);
    for (std::size_t key = 1; key < row.keys.size(); ++key) line.Add(row.keys[key]);
    line.Add(quantity.is_ratio ? "" : PlainReal(row.components)).Add(PlainReal(row.total)).Add(row.shown);
    line.Add(kKindNames[row.kind]);
    file.Write(line.Take());
  }
}

void WriteBill(const Bill& bill, JsonText& json) {
  const std::vector<BillRow> rows = bill.Rows();
  constexpr const char* kLists[] = {"bill", "subtotals", "totals"};
  for (const BillRow::Kind kind : {BillRow::kLine, BillRow::kSubtotal, BillRow::kTotal}) {
    json.Key(kLists[kind]).Open('[');
    for (const BillRow& row : rows) {
      if (row.kind != kind) continue;
      const Quantity& quantity = bill.OfQuantities().List()[row.quantity];
      json.Open('{');
      for (std::size_t key = 0; key < row.depth; ++key)
        json.Key(bill.Keys()[key].title).String(row.keys[key]);
      json.Key("quantity").String(quantity.name);
      json.Key("unit").String(quantity.unit);
      json.Key("components").Number(row.components);
      json.Key("total").Number(row.total);
      json.Key("shown").String(row.shown);
      json.Close('}');
    }
    json.Close(']');
  }
}

}  // namespace lorv::tool
