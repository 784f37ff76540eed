#pragma once

#include <vector>

#include "framework/text/cstring.h"
#include "gridcore/items/grid_item.h"

// What few cells of a grid have.
struct CBCGPGridItem::Rare {
  std::vector<CString> options;
  CString tip;
  int image = -1;
  DWORD_PTR data = 0;
};
