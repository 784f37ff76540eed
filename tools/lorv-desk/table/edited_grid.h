#pragma once

#include "grid/basic/basic_grid.h"

namespace lorv::tool {

// A grid that knows whether it was changed since it was marked as unchanged, and that takes part in the
// exchange with spreadsheets.
class EditedGrid : public CBCGPBasicGridCtrl {
 public:
  bool IsChanged() const { return changed_; }
  void MarkChanged(bool changed) { changed_ = changed; }

  // Return and the arrow keys go on as in a spreadsheet; a row is added below the last one.
  void InitGridSetting() override;
  void SetValue(int row, int column, const _variant_t& value, BOOL redraw = TRUE) override;
  int AddRow(CBCGPGridRow* row, int relayout) override;
  int AddRow(int relayout) override;
  int RemoveRow(int row, int relayout) override;
  bool ToExcel(int mode) override;
  bool FromExcel(int mode) override;

 protected:
  void OnItemChanged(CBCGPGridItem* item, int row, int column) override;

 private:
  bool changed_ = false;
};

}  // namespace lorv::tool
