#include "spreadsheet/servers/engine/xlsx/sheet_part.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "framework/text/number_text.h"
#include "framework/values/ole_date.h"
#include "spreadsheet/servers/engine/areas/cell_reference.h"
#include "spreadsheet/servers/engine/book/cell_values.h"
#include "spreadsheet/servers/engine/engine_failure.h"
#include "spreadsheet/servers/engine/engine_limits.h"
#include "spreadsheet/servers/engine/xlsx/xlsx_text.h"

// One worksheet on its way from the file's XML into the book, cell by cell, with nothing kept but the cell at
// hand. Where a file leaves out what follows from the order (numbers of rows, places of cells) it is counted;
// where it contradicts itself the later word holds; a place outside a sheet refuses the file.

namespace lorv::engine {
namespace {

[[noreturn]] void RefuseCell() {
  Fail(_T("工作簿文件已损坏：单元格超出工作表的范围。"));
}

// One letter a type; unknown ones are numbers, which is what cells without a type are.
char TypeCode(std::string_view type) {
  if (type == "str") return 't';
  if (type == "inlineStr") return 'i';
  return type.size() == 1 ? type[0] : 'n';
}

std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r\n";
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// Read strictly, so that what is no number is seen and kept as text. A number without end is none of a sheet.
bool IsPlainNumberText(std::string_view text, double& value) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  return error == std::errc() && end == text.data() + text.size() && std::isfinite(value);
}

void Widen(Area& marked, const Area& by) {
  marked = marked.Rows() > 0 ? Union(marked, by) : by;
}

}  // namespace

void SheetPart::Start(std::string_view name, XmlAttributes attributes) {
  if (in_cell_) {
    // Formulas stand in cells as well; they are passed over, as their results are there, too.
    if (name == "v") {
      in_value_ = true;
      is_marked_ = true;
    } else if (name == "f") {
      is_marked_ = true;
    } else {
      inline_.Start(name);
    }
  } else if (in_data_) {
    if (name == "c") StartCell(attributes);
    if (name == "row") StartRow(attributes);
  } else if (name == "sheetData") {
    in_data_ = true;
  } else if (name == "col") {
    TakeColumns(attributes);
  } else if (name == "mergeCell") {
    // Columns come before the cells in a file and merged areas behind them: in between neither is looked for.
    TakeMerge(attributes);
  }
}

void SheetPart::End(std::string_view name) {
  if (in_cell_) {
    if (name == "c") {
      EndCell();
    } else if (name == "v") {
      in_value_ = false;
    } else {
      inline_.End(name);
    }
  } else if (name == "sheetData") {
    in_data_ = false;
  }
}

void SheetPart::Text(std::string_view raw, bool literal) {
  if (!in_cell_) return;
  if (in_value_) {
    AppendXmlText(raw, literal, value_);
  } else if (type_ == 'i') {
    inline_.Take(raw, literal);
  }
}

void SheetPart::StartRow(XmlAttributes attributes) {
  const std::string_view number = attributes.Value("r");
  // Small writers leave the numbers out.
  row_ = number.empty() ? row_ + 1 : WholeNumber(number, 0) - 1;
  column_ = -1;
  if (row_ < 0 || row_ >= kMaxRows) RefuseCell();
  // A row's own style holds where the row says so.
  if (!IsYes(attributes.Value("customFormat"))) return;
  if (!IsMarkedBy(static_cast<std::size_t>(WholeNumber(attributes.Value("s"), 0)), 0)) return;
  Widen(sheet_.marked_rows, {row_, 0, row_, 0});
}

void SheetPart::StartCell(XmlAttributes attributes) {
  ++column_;
  style_ = 0;
  std::size_t style = 0;
  is_marked_ = false;
  type_ = 'n';
  in_cell_ = true;
  value_.clear();
  inline_.Clear();
  XmlAttributes::Attribute each;
  while (attributes.Next(each)) {
    if (each.name == "r") {
      const auto place = ParseCell(each.value);
      if (!place) RefuseCell();
      row_ = place->row;
      column_ = place->column;
    } else if (each.name == "s") {
      // A style that the file does not know is the plain one: the value counts more.
      style = static_cast<std::size_t>(WholeNumber(each.value, 0));
      // A style that the file does not know is the plain one: the value counts more.
      style_ = styles_.StyleOf(style);
    } else if (each.name == "t") {
      type_ = TypeCode(each.value);
    }
  }
  if (row_ < 0 || column_ >= kMaxColumns) RefuseCell();
  is_marked_ = IsMarkedBy(style, column_);
}

// A cell that is drawn as the whole of its column is one of a million, and not used by that.
bool SheetPart::IsMarkedBy(std::size_t style, long column) const {
  const StylesPart::Drawing drawing = styles_.DrawingOf(style);
  const auto at = static_cast<std::size_t>(column);
  return drawing.is_seen && (at >= drawn_columns_.size() || drawn_columns_[at] != drawing);
}

void SheetPart::EndCell() {
  in_cell_ = false;
  in_value_ = false;
  const bool has_value = !value_.empty() || (type_ == 'i' && !inline_.Bytes().empty());
  if (!has_value && is_marked_) MarkCell();
  // Nothing to keep; files of some programs name every cell of their used area.
  if (!has_value && style_ == 0) return;
  if (cell_room_ == 0) Fail(_T("工作簿中的单元格太多。"));
  --cell_room_;
  Cell& cell = sheet_.cells.At(row_, column_);
  cell.SetStyle(style_);
  cell.SetEmpty();
  if (has_value) PutWritten(cell);
}

void SheetPart::MarkCell() {
  Widen(sheet_.marked, {row_, column_, row_, column_});
}

void SheetPart::PutShared(Cell& cell) {
  // A wrong number here would show another cell's text: the file is refused.
  const long index = WholeNumber(Trimmed(value_), -1);
  if (index < 0 || index >= static_cast<long>(shared_.Ids().size())) {
    Fail(_T("工作簿文件已损坏：缺少单元格的文字。"));
  }
  const std::uint32_t text = shared_.Ids()[static_cast<std::size_t>(index)];
  if (book_.texts.At(text).empty()) return MarkCell();
  cell.SetWord(CellKind::kText, text);
}

void SheetPart::PutWritten(Cell& cell) {
  double number = 0;
  const auto put_text = [&](CellKind kind, std::string_view bytes) {
    cell.SetWord(kind, book_.texts.Add(DocumentText(bytes)));
  };
  switch (type_) {
    case 's':
      return PutShared(cell);
    case 'b':
      return cell.SetWord(CellKind::kBool, IsYes(Trimmed(value_)) ? 1 : 0);
    case 'e':
      return put_text(CellKind::kError, value_);
    case 't':
      return put_text(CellKind::kText, value_);
    case 'i':
      return put_text(CellKind::kText, inline_.Bytes());
    case 'd':
      // "2024-03-07T12:30:00"
      if (const std::size_t t = value_.find('T'); t != std::string::npos) value_[t] = ' ';
      // Written out it is the same day in every workbook; as a number it counts by the workbook's system.
      if (TextToOleDate(DocumentText(value_), number))
        return cell.SetNumber(number - (book_.dates_of_1904 ? kDaysTo1904 : 0));
      return put_text(CellKind::kText, value_);
    default:
      if (IsPlainNumberText(Trimmed(value_), number)) return cell.SetNumber(number);
      // What is no number after all is kept as it is written.
      return put_text(CellKind::kText, value_);
  }
}

void SheetPart::TakeColumns(XmlAttributes attributes) {
  const long first = WholeNumber(attributes.Value("min"), 0);
  // Files describe columns up to the last of a sheet at once; some go further.
  const long last = std::min(WholeNumber(attributes.Value("max"), 0), kMaxColumns);
  if (first < 1 || last < first) return;
  ColumnShape shape;
  const std::string_view width = attributes.Value("width");
  if (!width.empty()) shape.width = ReadReal(AttributeText(width));
  // The file's width has the margins of a cell in it: five pixels of a character's seven.
  constexpr double kMargin = 5.0 / 7.0;
  // What no program can show is brought to what they can: "1e999" is a number without end.
  shape.width = std::clamp(shape.width - (width.empty() ? 0 : kMargin), 0.0, kMaxSheetColumnWidth);
  shape.hidden = IsYes(attributes.Value("hidden")) || shape.width == 0;
  sheet_.columns.Set(first - 1, last - 1, shape);
  const auto style = static_cast<std::size_t>(WholeNumber(attributes.Value("style"), 0));
  if (!styles_.DrawingOf(style).is_seen) return;
  const auto end = static_cast<std::size_t>(last);
  if (drawn_columns_.size() < end) drawn_columns_.resize(end);
  std::fill(drawn_columns_.begin() + (first - 1), drawn_columns_.begin() + last, styles_.DrawingOf(style));
}

void SheetPart::TakeMerge(XmlAttributes attributes) {
  const auto area = ParseArea(attributes.Value("ref"));
  // A merged area that is damaged costs the reader nothing but the merging.
  if (!area) return;
  if (merges_.size() >= kMaxMerges) Fail(_T("工作表中的合并区域太多。"));
  merges_.push_back(*area);
}

}  // namespace lorv::engine
