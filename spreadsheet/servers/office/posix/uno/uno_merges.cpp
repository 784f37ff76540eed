#include "spreadsheet/servers/office/posix/uno/uno_merges.h"

#include <algorithm>
#include <tuple>

#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XSheetCellCursor.hpp>
#include <com/sun/star/sheet/XSheetCellRange.hpp>
#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <com/sun/star/sheet/XUniqueCellFormatRangesSupplier.hpp>
#include <com/sun/star/util/XMergeable.hpp>

// A merged area is known to the office by its corner alone, as a property of the corner's format. So the
// corners are found among the groups of cells of one format, and each is asked how far its area reaches.

namespace lorv::office {
namespace {

namespace uno = com::sun::star::uno;
namespace sheet = com::sun::star::sheet;
using com::sun::star::table::CellRangeAddress;

bool IsBefore(const Area& a, const Area& b) {
  return std::tie(a.top, a.left) < std::tie(b.top, b.left);
}

// Of cells of one format.
void ForEachMergeOf(const SheetRef& from, const uno::Sequence<CellRangeAddress>& group,
                    const std::function<void(const Area&)>& take) {
  if (!AreCorners(from, group)) return;
  for (sal_Int32 at = 0; at < group.getLength(); ++at) ForEachMerge(from, AreaOf(group[at]), take);
}

}  // namespace

uno::Reference<com::sun::star::table::XCellRange> RangeOf(const SheetRef& from, const Area& area) {
  return from->getCellRangeByPosition(static_cast<sal_Int32>(area.left), static_cast<sal_Int32>(area.top),
                                      static_cast<sal_Int32>(area.right),
                                      static_cast<sal_Int32>(area.bottom));
}

Area AreaOf(const CellRangeAddress& address) {
  return {address.StartRow, address.StartColumn, address.EndRow, address.EndColumn};
}

bool AreCorners(const SheetRef& from, const uno::Sequence<CellRangeAddress>& group) {
  if (group.getLength() == 0) return false;
  // One speaks for all: how far an area reaches is part of the format.
  const uno::Reference<com::sun::star::util::XMergeable> cell(
      from->getCellByPosition(group[0].StartColumn, group[0].StartRow), uno::UNO_QUERY_THROW);
  return cell->getIsMerged();
}

Area WithMerges(const SheetRef& from, const Area& area) {
  const uno::Reference<sheet::XSheetCellRange> range(RangeOf(from, area), uno::UNO_QUERY_THROW);
  const uno::Reference<sheet::XSheetCellCursor> cursor = from->createCursorByRange(range);
  // Grows to whole merged areas; the property "is merged" is true of a corner alone.
  cursor->collapseToMergedArea();
  const uno::Reference<sheet::XCellRangeAddressable> place(cursor, uno::UNO_QUERY_THROW);
  return AreaOf(place->getRangeAddress());
}

void ForEachMerge(const SheetRef& from, const Area& corners, const std::function<void(const Area&)>& take) {
  for (long row = corners.top; row <= corners.bottom; ++row) {
    for (long column = corners.left; column <= corners.right; ++column) {
      take(WithMerges(from, {row, column, row, column}));
    }
  }
}

std::vector<Area> MergesOf(const SheetRef& from) {
  std::vector<Area> merges;
  const auto take = [&](const Area& whole) { merges.push_back(whole); };
  const uno::Reference<sheet::XUniqueCellFormatRangesSupplier> supplier(from, uno::UNO_QUERY_THROW);
  const auto groups = supplier->getUniqueCellFormatRanges();
  for (sal_Int32 i = 0; i < groups->getCount(); ++i) {
    const uno::Reference<sheet::XSheetCellRanges> group(groups->getByIndex(i), uno::UNO_QUERY_THROW);
    ForEachMergeOf(from, group->getRangeAddresses(), take);
  }
  // Groups come in the order of formats, which says nothing of places.
  std::sort(merges.begin(), merges.end(), IsBefore);
  return merges;
}

}  // namespace lorv::office
