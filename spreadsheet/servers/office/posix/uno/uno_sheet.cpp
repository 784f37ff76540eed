#include "spreadsheet/servers/office/posix/uno/uno_sheet.h"

#include <algorithm>

#include <com/sun/star/container/XNamed.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XSheetCellCursor.hpp>
#include <com/sun/star/sheet/XUsedAreaCursor.hpp>
#include <com/sun/star/table/CellHoriJustify.hpp>
#include <com/sun/star/table/XColumnRowRange.hpp>
#include <com/sun/star/text/XText.hpp>
#include <com/sun/star/util/XMergeable.hpp>

#include "spreadsheet/servers/office/posix/uno/uno_merges.h"
#include "spreadsheet/servers/office/posix/uno/uno_text.h"

// A sheet by the office's interfaces. Each object asked for and each question is a call to the other process,
// so what the exchange asks in a row of one cell or column is asked of objects that are kept; and what it
// reads cell by cell is taken in blocks of rows, which grow while the reading goes on.

namespace lorv::office {
namespace {

namespace uno = com::sun::star::uno;
namespace sheet = com::sun::star::sheet;
namespace table = com::sun::star::table;

// Cells of a block at the most: a message to this process holds them all.
constexpr long kBlockCells = 16384;

sal_Int32 Int(long value) {
  return static_cast<sal_Int32>(value);
}

}  // namespace

// Counted before the body, which may fail half done.
template <class Body>
void UnoSheet::Change(Body&& body) {
  book_->connection->Call([&] {
    ++book_->changes;
    std::forward<Body>(body)();
  });
}

Text UnoSheet::Name() {
  return book_->connection->Call([&] {
    const uno::Reference<com::sun::star::container::XNamed> named(sheet_, uno::UNO_QUERY_THROW);
    return FromUno(named->getName());
  });
}

bool UnoSheet::Rename(const Text& name) {
  return book_->connection->Call([&] {
    const uno::Reference<com::sun::star::container::XNamed> named(sheet_, uno::UNO_QUERY_THROW);
    named->setName(ToUno(name));
    // A name that it does not take is passed over without a word.
    return named->getName() == ToUno(name);
  });
}

Area UnoSheet::Used() {
  const uno::Reference<sheet::XSheetCellCursor> cursor = sheet_->createCursor();
  const uno::Reference<sheet::XUsedAreaCursor> used(cursor, uno::UNO_QUERY_THROW);
  // The cursor is moved to the first corner and then drawn out to the last one.
  used->gotoStartOfUsedArea(false);
  used->gotoEndOfUsedArea(true);
  const uno::Reference<sheet::XCellRangeAddressable> place(cursor, uno::UNO_QUERY_THROW);
  const table::CellRangeAddress address = place->getRangeAddress();
  return {address.StartRow, address.StartColumn, address.EndRow, address.EndColumn};
}

Area UnoSheet::UsedArea() {
  return book_->connection->Call([&] { return Used(); });
}

std::vector<Area> UnoSheet::MergedAreas() {
  return book_->connection->Call([&] { return MergesOf(sheet_); });
}

const UnoBlock& UnoSheet::BlockAt(long row, long column) {
  if (block_changes_ != book_->changes || !block_.Holds(row, column)) {
    const bool goes_on = block_changes_ == book_->changes && block_.Holds(row - 1, block_.Taken().left);
    // Who writes between two readings gets small blocks, who only reads gets large ones.
    next_rows_ = goes_on ? next_rows_ * 4 : 1;
    if (!goes_on) used_ = expected_.Contains(row, column) ? expected_ : Used();
    Area area = {row, column, row, column};
    if (used_.Contains(row, column)) {
      next_rows_ = std::clamp(kBlockCells / used_.Columns(), 1L, next_rows_);
      area = {row, used_.left, std::min(used_.bottom, row + next_rows_ - 1), used_.right};
    }
    block_ = UnoBlock(sheet_, area);
    block_changes_ = book_->changes;
  }
  return block_;
}

OfficeCell UnoSheet::Cell(long row, long column) {
  return book_->connection->Call([&] { return BlockAt(row, column).Cell(row, column); });
}

OfficeFormat UnoSheet::Format(long row, long column) {
  return book_->connection->Call(
      [&] { return book_->formats.OfKey(BlockAt(row, column).FormatKey(row, column)); });
}

Area UnoSheet::MergedArea(long row, long column) {
  return book_->connection->Call([&] { return BlockAt(row, column).MergedArea(row, column); });
}

// Of a cell its format, its value and its alignment are put one after the other: it is asked for once.
const UnoSheet::CellRef& UnoSheet::CellAt(long row, long column) {
  if (row != row_ || column != column_ || !cell_.is()) {
    cell_ = sheet_->getCellByPosition(Int(column), Int(row));
    cell_look_.clear();
    row_ = row;
    column_ = column;
  }
  return cell_;
}

UnoSheet::PropertyRef UnoSheet::LookOf(const Area& area) {
  if (area.Rows() == 1 && area.Columns() == 1) {
    const CellRef& cell = CellAt(area.top, area.left);
    if (!cell_look_.is()) cell_look_.set(cell, uno::UNO_QUERY_THROW);
    return cell_look_;
  }
  return {sheet_->getCellRangeByPosition(Int(area.left), Int(area.top), Int(area.right), Int(area.bottom)),
          uno::UNO_QUERY_THROW};
}

const UnoSheet::PropertyRef& UnoSheet::ColumnAt(long column) {
  PropertyRef& known = columns_[column];
  if (!known.is()) {
    const uno::Reference<table::XColumnRowRange> both(sheet_, uno::UNO_QUERY_THROW);
    known.set(both->getColumns()->getByIndex(Int(column)), uno::UNO_QUERY_THROW);
  }
  return known;
}

OfficeWidth UnoSheet::Width(long column) {
  return book_->connection->Call([&] {
    const PropertyRef& look = ColumnAt(column);
    sal_Int32 width = 0;
    bool visible = true;
    look->getPropertyValue(ToUno("Width")) >>= width;
    look->getPropertyValue(ToUno("IsVisible")) >>= visible;
    return OfficeWidth{width, !visible};
  });
}

void UnoSheet::PutNumber(long row, long column, double number) {
  Change([&] { CellAt(row, column)->setValue(number); });
}

void UnoSheet::PutText(long row, long column, const Text& text) {
  Change([&] {
    // As a text, so that "=1+1" and "007" stay what they are.
    const uno::Reference<com::sun::star::text::XText> words(CellAt(row, column), uno::UNO_QUERY_THROW);
    words->setString(ToUno(text));
  });
}

void UnoSheet::Clear(long row, long column) {
  // There is no call that takes a value away; an empty formula does.
  Change([&] { CellAt(row, column)->setFormula({}); });
}

void UnoSheet::PutFormat(const Area& area, const Text& text) {
  Change(
      [&] { LookOf(area)->setPropertyValue(ToUno("NumberFormat"), uno::Any(book_->formats.KeyOf(text))); });
}

void UnoSheet::PutFontSize(const Area& area, double points) {
  Change([&] {
    const PropertyRef look = LookOf(area);
    const uno::Any size(static_cast<float>(points));
    // Each kind of writing has a font of its own.
    for (const char* name : {"CharHeight", "CharHeightAsian", "CharHeightComplex"}) {
      look->setPropertyValue(ToUno(name), size);
    }
  });
}

void UnoSheet::PutAlignment(const Area& area, int justify) {
  Change([&] {
    LookOf(area)->setPropertyValue(ToUno("HoriJustify"),
                                   uno::Any(static_cast<table::CellHoriJustify>(justify)));
  });
}

void UnoSheet::PutWidth(long first, long last, long hundredths) {
  Change([&] {
    for (long column = first; column <= last; ++column) {
      const PropertyRef& look = ColumnAt(column);
      // Hidden by its own property, as the office passes over a width of 0; so it keeps its width.
      look->setPropertyValue(ToUno("IsVisible"), uno::Any(hundredths != 0));
      if (hundredths != 0) look->setPropertyValue(ToUno("Width"), uno::Any(Int(hundredths)));
    }
  });
}

void UnoSheet::Merge(const Area& area, bool merged) {
  Change([&] {
    const uno::Reference<com::sun::star::util::XMergeable> range(
        sheet_->getCellRangeByPosition(Int(area.left), Int(area.top), Int(area.right), Int(area.bottom)),
        uno::UNO_QUERY_THROW);
    range->merge(merged);
  });
}

}  // namespace lorv::office
