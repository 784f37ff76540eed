#pragma once

#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/uno/Sequence.hxx>
#include <vector>

#include "spreadsheet/servers/office/office_port.h"

namespace lorv::office {

// Cells of a sheet as they were when they were taken: values, keys of number formats and merged areas. The
// office gives these for a whole area with a few calls, where single cells cost several each.
class UnoBlock {
 public:
  UnoBlock() = default;
  // Reads the area. To be called in the body of UnoConnection::Call only.
  UnoBlock(const com::sun::star::uno::Reference<com::sun::star::sheet::XSpreadsheet>& sheet,
           const Area& area);

  bool Holds(long row, long column) const { return !empty_ && area_.Contains(row, column); }
  const Area& Taken() const { return area_; }
  // Of a cell that the block holds.
  OfficeCell Cell(long row, long column) const;
  sal_Int32 FormatKey(long row, long column) const;
  Area MergedArea(long row, long column) const;

 private:
  using Sheet = com::sun::star::uno::Reference<com::sun::star::sheet::XSpreadsheet>;
  void TakeFormats(const Sheet& sheet, const Area& around);
  void TakeGroup(const Sheet& sheet,
                 const com::sun::star::uno::Reference<com::sun::star::sheet::XSheetCellRanges>& group);
  void TakeMerges(const Sheet& sheet, const Area& corners);
  void PutKeys(const Area& area, sal_Int32 key);
  std::size_t At(long row, long column) const {
    return static_cast<std::size_t>(row - area_.top) * static_cast<std::size_t>(area_.Columns()) +
           static_cast<std::size_t>(column - area_.left);
  }

  bool empty_ = true;
  Area area_;
  com::sun::star::uno::Sequence<com::sun::star::uno::Sequence<com::sun::star::uno::Any>> values_;
  std::vector<sal_Int32> keys_;
  std::vector<Area> merges_;
};

}  // namespace lorv::office
