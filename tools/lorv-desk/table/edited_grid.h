#pragma once

#include "grid/basic/basic_grid.h"
#include "gridcore/control/grid_observer.h"

namespace lorv::tool {

// A grid that knows whether its table was changed since it was marked as unchanged, whoever changed it, and
// that takes part in the exchange with spreadsheets. Colours and widths are no part of the table.
class EditedGrid : public CBCGPBasicGridCtrl, private GridObserver {
 public:
  EditedGrid() { Changes().Add(*this); }
  EditedGrid(const EditedGrid&) = delete;
  EditedGrid& operator=(const EditedGrid&) = delete;
  ~EditedGrid() override { Changes().Remove(*this); }

  bool IsChanged() const { return changed_; }
  void MarkChanged(bool changed) { changed_ = changed; }

  // Return and the arrow keys go on as in a spreadsheet; a row is added below the last one.
  void InitGridSetting() override;
  bool ToExcel(int mode) override;
  bool FromExcel(int mode) override;

 private:
  void OnValueChanged(CBCGPGridItem& /*item*/, _variant_t& /*before*/, ChangeBy /*by*/) override {
    changed_ = true;
  }
  void OnRowInserted(const RowPlace& /*place*/, CBCGPGridRow& /*row*/) override { changed_ = true; }
  void OnRowRemoved(const RowPlace& /*place*/, std::unique_ptr<CBCGPGridRow>& /*row*/) override {
    changed_ = true;
  }
  // Another order of the rows or columns is another file.
  void OnRowsMoving(RowArrangement& /*now*/) override { changed_ = true; }
  void OnColumnMoving(int /*from*/, int /*to*/) override { changed_ = true; }
  void OnTableReplaced() override { changed_ = true; }

  bool changed_ = false;
};

}  // namespace lorv::tool
