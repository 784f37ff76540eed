#pragma once

#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/table/CellRangeAddress.hpp>
#include <com/sun/star/table/XCellRange.hpp>
#include <functional>
#include <vector>

#include "spreadsheet/servers/office/office_port.h"

// Merged areas of a sheet. All of it may be called in the body of UnoConnection::Call only.
namespace lorv::office {

using SheetRef = com::sun::star::uno::Reference<com::sun::star::sheet::XSpreadsheet>;

com::sun::star::uno::Reference<com::sun::star::table::XCellRange> RangeOf(const SheetRef& from,
                                                                          const Area& area);
Area AreaOf(const com::sun::star::table::CellRangeAddress& address);
// Whether the cells of a group of one format are corners of merged areas.
bool AreCorners(const SheetRef& from,
                const com::sun::star::uno::Sequence<com::sun::star::table::CellRangeAddress>& group);
// The smallest area around one that cuts through no merged area.
Area WithMerges(const SheetRef& from, const Area& area);
// Passes on the merged area of each of the corners.
void ForEachMerge(const SheetRef& from, const Area& corners, const std::function<void(const Area&)>& take);
// All of a sheet, in the order of their corners.
std::vector<Area> MergesOf(const SheetRef& from);

}  // namespace lorv::office
