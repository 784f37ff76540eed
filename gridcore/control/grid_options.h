#pragma once

#include "framework/native/native_types.h"

// Modes, switches, sizes and limits of grids.

namespace lorv {

class GridCells;

// How SetCurSel takes a cell.
enum SelectMode : UINT {
  kSelectClear = 0,             // with the null id: nothing is selected, nothing current
  kSelectOnly = 136,            // the cell alone
  kSelectFirstCorner = 160,     // the cell alone, as the first corner of a range
  kSelectOppositeCorner = 320,  // the range from the first corner to the cell; its top left cell is current
  kSelectAdd = 544              // the cell too
};

// What EnableHeader allows; bits.
enum HeaderFlag : UINT { kHeaderMovesColumns = 1, kHeaderSorts = 2, kHeaderHides = 4, kHeaderSelects = 8 };

constexpr UINT kEditorId = 1;              // of every editor of a grid
constexpr UINT kFilterEditorId = 2;        // of the editor in the filter bar
constexpr int kDividerReach = 4;           // pixels to both sides of a column's edge
constexpr int kRowHeaderWidth = 30;        // pixels
constexpr int kMaxVirtualTable = 1 << 28;  // rows; as high as all of them can be scrolled over
constexpr int kMostEditorCloses = 8;       // of editors that handlers open while rows go

}  // namespace lorv
