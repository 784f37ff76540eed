#include "spreadsheet/servers/office/posix/uno/uno_block.h"

#include <algorithm>

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <com/sun/star/sheet/XUniqueCellFormatRangesSupplier.hpp>

#include "spreadsheet/servers/office/posix/uno/uno_merges.h"
#include "spreadsheet/servers/office/posix/uno/uno_text.h"

// Values come as one table, formats by the groups of cells that share one; merged areas are found on the way.

namespace lorv::office {
namespace {

namespace uno = com::sun::star::uno;
namespace sheet = com::sun::star::sheet;
using SheetRef = uno::Reference<sheet::XSpreadsheet>;

}  // namespace

UnoBlock::UnoBlock(const SheetRef& from, const Area& area) : empty_(false), area_(area) {
  const uno::Reference<sheet::XCellRangeData> data(RangeOf(from, area), uno::UNO_QUERY_THROW);
  // One message for all values; those of single cells would be a message each.
  values_ = data->getDataArray();
  keys_.resize(static_cast<std::size_t>(area.Rows()) * static_cast<std::size_t>(area.Columns()));
  // The corner of an area that reaches into the block may lie outside.
  TakeFormats(from, WithMerges(from, area));
}

void UnoBlock::TakeFormats(const SheetRef& from, const Area& around) {
  const uno::Reference<sheet::XUniqueCellFormatRangesSupplier> supplier(RangeOf(from, around),
                                                                        uno::UNO_QUERY_THROW);
  // A sheet has few formats beside its cells, so there are few groups to be asked for their keys.
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
  const bool merged = AreCorners(from, addresses);
  for (sal_Int32 at = 0; at < addresses.getLength(); ++at) {
    const Area each = AreaOf(addresses[at]);
    if (merged) TakeMerges(from, each);
    PutKeys(each, key);
  }
}

// A group's areas may reach beyond the block, as formats were asked for as far as merged areas go.
void UnoBlock::PutKeys(const Area& area, sal_Int32 key) {
  for (long row = std::max(area.top, area_.top); row <= std::min(area.bottom, area_.bottom); ++row) {
    for (long column = std::max(area.left, area_.left); column <= std::min(area.right, area_.right);
         ++column) {
      keys_[At(row, column)] = key;
    }
  }
}

void UnoBlock::TakeMerges(const SheetRef& from, const Area& corners) {
  ForEachMerge(from, corners, [&](const Area& whole) {
    if (whole.Meets(area_)) merges_.push_back(whole);
  });
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
    // The table of values has nothing at all in the place of an error.
    cell.kind = CellKind::kError;
  }
  return cell;
}

sal_Int32 UnoBlock::FormatKey(long row, long column) const {
  return keys_[At(row, column)];
}

Area UnoBlock::MergedArea(long row, long column) const {
  // Walked through, as blocks hold few merged areas and every one of them once.
  const auto found = std::find_if(merges_.begin(), merges_.end(),
                                  [&](const Area& each) { return each.Contains(row, column); });
  return found == merges_.end() ? Area{row, column, row, column} : *found;
}

}  // namespace lorv::office
