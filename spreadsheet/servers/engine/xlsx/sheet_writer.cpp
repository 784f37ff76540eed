#include "spreadsheet/servers/engine/xlsx/sheet_writer.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <utility>

#include "spreadsheet/servers/engine/areas/cell_reference.h"
#include "spreadsheet/servers/engine/xlsx/escaped_units.h"

// The XML of one worksheet, made as the archive asks for it: a sheet's document is many times its
// cells' memory. Elements stand in the order that the format prescribes, as programs refuse a
// file in which they do not.

namespace lorv::engine {
namespace {

// As much as is made before the archive takes it.
constexpr std::size_t kMadeAhead = 64 * 1024;
// The file's widths have the margins of a cell in them.
constexpr double kMargin = 5.0 / 7.0;

// The shortest digits that read back as the same number, whatever the user's country writes for a point.
template <class Number>
void AppendNumber(Number number, std::string& out) {
  char digits[32];
  const auto end = std::to_chars(digits, digits + sizeof(digits), number).ptr;
  out.append(digits, static_cast<std::size_t>(end - digits));
}

void AppendReference(long row, long column, std::string& out) {
  char letters[4];
  out.append(letters, static_cast<std::size_t>(ColumnLetters(column, letters)));
  AppendNumber(row + 1, out);
}

void AppendArea(const Area& area, std::string& out) {
  AppendReference(area.top, area.left, out);
  out += ':';
  AppendReference(area.bottom, area.right, out);
}

}  // namespace

SheetDocument::SheetDocument(const Book& book, const Sheet& sheet, GoesOn goes_on)
    : book_(book), sheet_(sheet), goes_on_(std::move(goes_on)) {
  // A cell begun below the mark may end above it.
  made_.reserve(kMadeAhead * 2);
}

std::int64_t SheetDocument::Read(void* out, std::size_t size) {
  std::size_t given = 0;
  while (given < size) {
    if (taken_ == made_.size()) {
      if (stage_ == Stage::kEnd) break;
      made_.clear();
      taken_ = 0;
      MakeMore();
      if (goes_on_ && !goes_on_(cells_)) return -1;
    }
    const std::size_t count = std::min(size - given, made_.size() - taken_);
    std::memcpy(static_cast<char*>(out) + given, made_.data() + taken_, count);
    given += count;
    taken_ += count;
  }
  return static_cast<std::int64_t>(given);
}

void SheetDocument::MakeMore() {
  if (stage_ == Stage::kHead) {
    MakeHead();
    stage_ = Stage::kCells;
  }
  const auto& blocks = sheet_.cells.Blocks();
  // The place in the walk is kept in members: the next call goes on behind it.
  for (; block_ < blocks.size(); ++block_, cell_ = 0) {
    for (; cell_ < blocks[block_].size(); ++cell_) {
      if (made_.size() >= kMadeAhead) return;
      MakeCell(blocks[block_][cell_]);
      ++cells_;
    }
  }
  MakeTail();
  stage_ = Stage::kEnd;
}

void SheetDocument::MakeHead() {
  made_ +=
      "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
      "<worksheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\"><dimension ref=\"";
  AppendArea(sheet_.UsedArea(), made_);
  made_ += "\"/><sheetViews><sheetView workbookViewId=\"0\"";
  if (sheet_.frozen_rows > 0) {
    made_ += "><pane ySplit=\"";
    AppendNumber(sheet_.frozen_rows, made_);
    made_ += "\" topLeftCell=\"";
    AppendReference(sheet_.frozen_rows, 0, made_);
    made_ += "\" activePane=\"bottomLeft\" state=\"frozen\"/></sheetView>";
  } else {
    made_ += "/>";
  }
  made_ += "</sheetViews><sheetFormatPr defaultRowHeight=\"15\"";
  int levels = 0;
  // Programs draw the buttons for folding only where the head says how many levels there are.
  for (const auto& [row, level] : sheet_.row_levels) levels = std::max(levels, level);
  if (levels > 0) {
    made_ += " outlineLevelRow=\"";
    AppendNumber(levels, made_);
    made_ += '"';
  }
  made_ += "/>";
  MakeColumns();
  made_ += "<sheetData>";
}

void SheetDocument::MakeColumns() {
  std::string columns;
  const auto& runs = sheet_.columns.Runs();
  for (auto run = runs.begin(); run != runs.end() && run->first < kMaxColumns; ++run) {
    // Columns as all others are have no entry.
    if (run->second == ColumnShape()) continue;
    const auto next = std::next(run);
    columns += "<col min=\"";
    AppendNumber(run->first + 1, columns);
    columns += "\" max=\"";
    AppendNumber(next == runs.end() ? kMaxColumns : next->first, columns);
    columns += "\" width=\"";
    AppendNumber(run->second.width + kMargin, columns);
    columns += run->second.hidden ? "\" hidden=\"1\" customWidth=\"1\"/>" : "\" customWidth=\"1\"/>";
  }
  // An empty element here is a damaged file for some programs.
  if (!columns.empty()) made_ += "<cols>" + columns + "</cols>";
}

// Only rows with cells are written, so the level of an empty row is not.
void SheetDocument::StartRow(long row) {
  if (row_ >= 0) made_ += "</row>";
  row_ = row;
  made_ += "<row r=\"";
  AppendNumber(row + 1, made_);
  const auto level = sheet_.row_levels.find(row);
  if (level != sheet_.row_levels.end() && level->second > 0) {
    made_ += "\" outlineLevel=\"";
    AppendNumber(level->second, made_);
  }
  made_ += "\">";
}

void SheetDocument::MakeCell(const Cell& cell) {
  // A cell whose value was taken away again.
  if (cell.kind() == CellKind::kEmpty && cell.style() == 0) return;
  if (cell.row() != row_) StartRow(cell.row());
  made_ += "<c r=\"";
  AppendReference(cell.row(), cell.column(), made_);
  if (cell.style() != 0) {
    made_ += "\" s=\"";
    AppendNumber(static_cast<unsigned>(cell.style()), made_);
  }
  switch (cell.kind()) {
    case CellKind::kNumber:
      made_ += "\"><v>";
      AppendNumber(cell.number(), made_);
      made_ += "</v></c>";
      break;
    case CellKind::kText:
      // Blanks at the ends of a text would be dropped without the mark for it.
      made_ += "\" t=\"inlineStr\"><is><t xml:space=\"preserve\">";
      AppendEscaped(book_.texts.At(cell.text()), made_);
      made_ += "</t></is></c>";
      break;
    case CellKind::kBool:
      made_ += cell.flag() ? "\" t=\"b\"><v>1</v></c>" : "\" t=\"b\"><v>0</v></c>";
      break;
    case CellKind::kError:
      made_ += "\" t=\"e\"><v>";
      AppendEscaped(book_.texts.At(cell.text()), made_);
      made_ += "</v></c>";
      break;
    default:
      made_ += "\"/>";
  }
}

void SheetDocument::MakeTail() {
  if (row_ >= 0) made_ += "</row>";
  made_ += "</sheetData>";
  // Without an area there is no such element: an empty one is a damaged file for some programs.
  if (sheet_.merges.Size() > 0) {
    made_ += "<mergeCells count=\"";
    AppendNumber(sheet_.merges.Size(), made_);
    made_ += "\">";
    for (const auto& [corner, area] : sheet_.merges.All()) {
      made_ += "<mergeCell ref=\"";
      AppendArea(area, made_);
      made_ += "\"/>";
    }
    made_ += "</mergeCells>";
  }
  made_ += "</worksheet>";
}

}  // namespace lorv::engine
