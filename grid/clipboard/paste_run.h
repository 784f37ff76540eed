#pragma once

#include <memory>

#include "grid/clipboard/cell_area.h"
#include "grid/clipboard/grid_clipboard.h"
#include "grid/clipboard/tab_text.h"

namespace lorv {

// One paste: where the cells of a table go, which of them are refused, and back again where all are.
//
// Whatever sets a value may end the grid or rebuild the table: each cell is looked up anew.
class PasteRun {
 public:
  PasteRun(CBCGPBasicGridCtrl& grid, const TextTable& table, PasteOptions options);

  PasteReport Run();

 private:
  struct Former {
    CBCGPGridItemID cell;
    _variant_t value;
  };

  bool FindTarget();
  bool FindRows(std::size_t wanted);
  bool AddsRows() const;
  bool Gone() const { return life_.expired(); }
  CBCGPGridItem* ItemAt(const CBCGPGridItemID& cell) const;
  bool IsCovered(const CBCGPGridItemID& cell) const;
  template <class Take>
  bool EachCell(Take take);
  void Refuse(const CBCGPGridItemID& cell, TextView text, PasteRefusal why);
  bool Check(const CBCGPGridItemID& cell, TextView text);
  bool Set(const CBCGPGridItemID& cell, TextView text);
  bool SetAll();
  void TakeBack();
  void TakeLooks();
  void Finish();

  CBCGPBasicGridCtrl& grid_;
  const TextTable& table_;
  PasteOptions options_;  // a copy: whoever owns them may end in the middle
  std::weak_ptr<int> life_;
  CellArea target_;
  bool merges_ = false;
  std::vector<Former> former_;
  PasteReport report_;
};

}  // namespace lorv
