#include "tools/lorv-desk/sample_grid.h"

#include <iterator>

#include "grid/items/button_item.h"
#include "grid/items/check_item_ex.h"
#include "grid/items/color_item_ex.h"
#include "grid/items/multi_line_row.h"
#include "grid/items/presentation_item.h"
#include "tools/lorv-desk/sample_grid_table.h"

// A grid with a cell of every kind, as an estimator's table of members has them. Tests of the grid's looks
// use it on every desktop.

namespace lorv::tool {
namespace {

enum Column { kName, kGrade, kWidth, kHeight, kFormula, kRemark, kActions, kChecked, kColour, kClass };

constexpr int kWidths[kSampleColumns] = {88, 76, 56, 56, 160, 136, 110, 62, 62, 86};
constexpr int kTallRow = 1;      // its remark has two lines
constexpr int kHiddenRow = 3;    // a member that is left out
constexpr int kReadOnlyRow = 8;  // the total
constexpr int kFirstSelected = 4;
constexpr int kLastSelected = 6;

void AddColumns(CBCGPBasicGridCtrl& grid, const SampleWords& words) {
  for (int column = 0; column < kSampleColumns; ++column) {
    const int align = column == kChecked ? static_cast<int>(DT_CENTER) : -1;
    // Widths are given at 96 dots per inch, as all sizes of the sample.
    grid.InsertColumn(column, words.columns[column], grid.Scaled(kWidths[column]), align, FALSE);
  }
  grid.EnableMultiLineHeader();
  grid.SetHeaderLineCount(2);
  CArray<int, int> columns;
  columns.Add(kWidth);
  columns.Add(kHeight);
  CArray<int, int> lines;
  lines.Add(0);
  grid.AddHeaderItem(&columns, &lines, nullptr, words.section, DT_CENTER, 0);
}

std::unique_ptr<CBCGPGridPresentationItem> TextCell(LPCTSTR text, bool bold) {
  auto item = std::make_unique<CBCGPGridPresentationItem>(_variant_t(text));
  item->SetBold(bold ? 1 : 0);
  return item;
}

// A slab has no width: its cell is empty and not 0.
_variant_t Length(double metres) {
  return metres > 0 ? _variant_t(metres) : _variant_t();
}

void PutCells(CBCGPBasicGridCtrl& grid, int row, const SampleWords& words) {
  const SampleWords::Row& source = words.rows[row];
  // The total is shown and not edited: no list, no buttons.
  const bool total = row == kReadOnlyRow;
  const auto put = [&](int column, CBCGPGridItem* item) { grid.ReplaceItem(row, column, item, FALSE); };
  put(kName, TextCell(source.name, row == 0 || total).release());
  auto grade = TextCell(source.grade, false);
  if (!total) grade->SetPresentationStyle(kListCell);
  for (const LPCTSTR option : words.grades) {
    if (!total) grade->AddOption(option);
  }
  put(kGrade, grade.release());
  put(kWidth, new CBCGPGridItem(Length(source.width)));
  put(kHeight, new CBCGPGridItem(Length(source.height)));
  put(kFormula, total ? TextCell(source.formula, true).release()
                      : new CBCGPGridButtonItem(_variant_t(source.formula), kItemHasButton));
  auto remark = TextCell(source.remark, false);
  if (row == kTallRow) remark->SetMultiLineItem(TRUE);
  put(kRemark, remark.release());
  if (total) return;
  auto buttons = std::make_unique<CBCGPGridButtonItem>(_variant_t(), 0);
  for (const LPCTSTR name : words.buttons) buttons->AppendButton(name);
  put(kActions, buttons.release());
  auto check = std::make_unique<CBCGPGridCheckItemEx>(source.checked != 0);
  check->EnableNotAllSelIcon(source.checked == 2);
  put(kChecked, check.release());
  put(kColour, new CBCGPGridColorItemEx(source.colour, nullptr));
}

}  // namespace

std::vector<SampleGrid> SampleGrids() {
  return {{"grid-zh", "a grid with every kind of cell, in Chinese", true},
          {"grid-en", "a grid with every kind of cell, in English", false}};
}

void FillSampleGrid(CBCGPBasicGridCtrl& grid, const SampleGrid& sample) {
  const SampleWords& words = sample.chinese ? kChineseSample : kEnglishSample;
  AddColumns(grid, words);
  for (int row = 0; row < kSampleRows; ++row) {
    if (row == kTallRow)
      grid.AddMultiLineRow(2, 2);
    else
      grid.AddRow(FALSE);
    PutCells(grid, row, words);
  }
  grid.SetValue(0, kClass, _variant_t(words.all_floors), FALSE);
  // Over all rows but the total, which has no class.
  grid.MergeRange({kClass, 0, kClass, kReadOnlyRow - 1});
  grid.SetRowReadOnly(kReadOnlyRow, true);
  grid.SetRowVisible(kHiddenRow, false);
  grid.AdjustLayout();
  grid.SelectRange({kName, kFirstSelected, kHeight, kLastSelected}, FALSE);
}

}  // namespace lorv::tool
