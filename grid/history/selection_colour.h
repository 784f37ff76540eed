#pragma once

#include "gridcore/items/grid_item.h"

class CBCGPBasicGridCtrl;

namespace lorv {

// The colour by which a grid shows the row of a cell that is selected: no part of the table, though cells
// have it as their own meanwhile. The grid must live as long.
// One thread: that of the user interface.
class SelectionColour {
 public:
  explicit SelectionColour(const CBCGPBasicGridCtrl& grid) : grid_(grid) {}

  // What the cell looks like without being selected.
  ItemLooks Without(const CBCGPGridItem& item) const;
  // Those looks as the cell shows them now.
  ItemLooks With(ItemLooks looks, const CBCGPGridItem& item) const;

 private:
  bool Colours(const CBCGPGridItem& item) const;

  const CBCGPBasicGridCtrl& grid_;
};

}  // namespace lorv
