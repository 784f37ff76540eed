#include "grid/history/selection_colour.h"

#include <algorithm>

#include "grid/basic/basic_grid.h"

// A step that was recorded while a row was selected must not colour it when the user is somewhere else, and
// one that is taken back must leave the row that is selected as it shows.

namespace lorv {

bool SelectionColour::Colours(const CBCGPGridItem& item) const {
  const CBCGPGridRow* const row = item.GetParentRow();
  if (row == nullptr || !grid_.IsSelRowBKColorEnabled()) return false;
  const std::vector<CBCGPGridRange>& selection = grid_.GetSelection();
  const int number = row->GetRowId();
  return std::any_of(selection.begin(), selection.end(), [number](const CBCGPGridRange& range) {
    return range.IsSingle() && range.m_nTop == number;
  });
}

ItemLooks SelectionColour::Without(const CBCGPGridItem& item) const {
  ItemLooks looks = item.GetLooks();
  if (looks.back == grid_.GetSelRowBKColor() && Colours(item)) looks.back = kNoColour;
  return looks;
}

ItemLooks SelectionColour::With(ItemLooks looks, const CBCGPGridItem& item) const {
  if (looks.back == kNoColour && Colours(item)) looks.back = grid_.GetSelRowBKColor();
  return looks;
}

}  // namespace lorv
