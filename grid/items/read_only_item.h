#pragma once

#include "gridcore/items/grid_item.h"

// A grey cell that cannot be edited. As its base.
class COMM_LORV_API CBCGPGridReadOnlyItem : public CBCGPGridItem {
  DECLARE_DYNCREATE(CBCGPGridReadOnlyItem)
 public:
  explicit CBCGPGridReadOnlyItem(const _variant_t& value);

 protected:
  CBCGPGridReadOnlyItem();
};
