#include "grid/items/read_only_item.h"

#include "grid/basic/basic_grid.h"

// A cell that shows that it cannot be typed into.

IMPLEMENT_DYNCREATE(CBCGPGridReadOnlyItem, CBCGPGridItem)

CBCGPGridReadOnlyItem::CBCGPGridReadOnlyItem() : CBCGPGridReadOnlyItem(_variant_t()) {}

CBCGPGridReadOnlyItem::CBCGPGridReadOnlyItem(const _variant_t& value) : CBCGPGridItem(value) {
  SetReadOnly(TRUE);
  SetBackgroundColor(lorv::kReadOnlyColour);
}
