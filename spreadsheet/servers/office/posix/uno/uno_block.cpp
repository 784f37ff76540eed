#include "spreadsheet/servers/office/posix/uno/uno_block.h"

#include <algorithm>

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/sheet/XSheetCellCursor.hpp>
#include <com/sun/star/sheet/XSheetCellRange.hpp>
#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <com/sun/star/sheet/XUniqueCellFormatRangesSupplier.hpp>
#include <com/sun/star/util/XMergeable.hpp>

#include "spreadsheet/servers/office/posix/uno/uno_text.h"

// A merged area is known to the office by its corner alone, as a property of the corner's format. So the
// corners are found among the groups of cells of one format, and each is asked how far its area reaches.

namespace lorv::office {
namespace {

namespace uno = com::sun::star::uno;
namespace sheet = com::sun::star::sheet;
using com::sun::star::table::CellRangeAddress;
using com::sun::star::table::XCellRange;
using SheetRef = uno::Reference<sheet::XSpreadsheet>;

uno::Reference<XCellRange> RangeOf(const SheetRef& from, const Area& area) {
  return from->getCellRangeByPosition(static_cast<sal_Int32>(area.left), static_cast<sal_Int32>(area.top),
                                      static_cast<sal_Int32>(area.right),
                                      static_cast<sal_Int32>(area.bottom));
}

Area AreaOf(const CellRangeAddress& address) {
  return {address.StartRow, address.StartColumn, address.EndRow, address.EndColumn};
}

// Whether the first cell of a group is the corner of a merged area, and all of the group with it.
bool IsCorner(const SheetRef& from, const CellRangeAddress& group) {
  const uno::Reference<com::sun::star::util::XMergeable> cell(
      from->getCellByPosition(group.StartColumn, group.StartRow), uno::UNO_QUERY_THROW);
  return cell->getIsMerged();
}

// The smallest area around one that cuts through no merged area.
Area WithMerges(const SheetRef& from, const Area& area) {
  const uno::Reference<sheet::XSheetCellRange> range(RangeOf(from, area), uno::UNO_QUERY_THROW);
  const uno::Reference<sheet::XSheetCellCursor> cursor = from->createCursorByRange(range);
  cursor->collapseToMergedArea();
  const uno::Reference<sheet::XCellRangeAddressable> place(cursor, uno::UNO_QUERY_THROW);
  return AreaOf(place->getRangeAddress());
}

}  // namespace

UnoBlock::UnoBlock(const SheetRef& from, const Area& area) : empty_(false), area_(area) {
  const uno::Reference<sheet::XCellRangeData> data(RangeOf(from, area), uno::UNO_QUERY_THROW);
  values_ = data->getDataArray();
  keys_.resize(static_cast<std::size_t>(area.Rows()) * static_cast<std::size_t>(area.Columns()));
  // The corner of an area that reaches into the block may lie outside.
  TakeFormats(from, WithMerges(from, area));
}

void UnoBlock::TakeFormats(const SheetRef& from, const Area& around) {
  const uno::Reference<sheet::XUniqueCellFormatRangesSupplier> supplier(RangeOf(from, around),
                                                                        uno::UNO_QUERY_THROW);
  const auto groups = supplier->getUniqueCellFormatRanges();
  const sal_Int32 count = groups->getCount();
  for (sal_Int32 i = 0; i < count; ++i) {
    TakeGroup(from, {groups->getByIndex(i), uno::UNO_QUERY_THROW});
  }
}

void UnoBlock::TakeGroup(const SheetRef& from, const uno::Reference<sheet::XSheetCellRanges>& group) {
  const uno::Reference<com::sun::star::beans::XPropertySet> look(group, uno::UNO_QUERY_THROW);
  sal_Int32 key = 0;
  look->getPropertyValue(ToUno("NumberFormat")) >>= key;
  const auto addresses = group->getRangeAddresses();
  const bool merged = addresses.getLength() > 0 && IsCorner(from, addresses[0]);
  for (sal_Int32 at = 0; at < addresses.getLength(); ++at) {
    const Area each = AreaOf(addresses[at]);
    if (merged) TakeMerges(from, each);
    PutKeys(each, key);
  }
}

void UnoBlock::PutKeys(const Area& area, sal_Int32 key) {
  for (long row = std::max(area.top, area_.top); row <= std::min(area.bottom, area_.bottom); ++row) {
    for (long column = std::max(area.left, area_.left); column <= std::min(area.right, area_.right);
         ++column) {
      keys_[At(row, column)] = key;
    }
  }
}

void UnoBlock::TakeMerges(const SheetRef& from, const Area& corners) {
  for (long row = corners.top; row <= corners.bottom; ++row) {
    for (long column = corners.left; column <= corners.right; ++column) {
      const Area whole = WithMerges(from, {row, column, row, column});
      if (whole.Meets(area_)) merges_.push_back(whole);
    }
  }
}

OfficeCell UnoBlock::Cell(long row, long column) const {
  const uno::Any& value =
      values_[static_cast<sal_Int32>(row - area_.top)][static_cast<sal_Int32>(column - area_.left)];
  OfficeCell cell;
  rtl::OUString text;
  if (value >>= cell.number) {
    cell.kind = CellKind::kNumber;
  } else if (value >>= text) {
    // A formula whose text is empty shows what an empty cell does.
    cell.kind = text.isEmpty() ? CellKind::kEmpty : CellKind::kText;
    cell.text = FromUno(text);
  } else {
    cell.kind = CellKind::kError;
  }
  return cell;
}

sal_Int32 UnoBlock::FormatKey(long row, long column) const {
  return keys_[At(row, column)];
}

Area UnoBlock::MergedArea(long row, long column) const {
  const auto found = std::find_if(merges_.begin(), merges_.end(),
                                  [&](const Area& each) { return each.Contains(row, column); });
  return found == merges_.end() ? Area{row, column, row, column} : *found;
}

}  // namespace lorv::office
