#pragma once

#include <cstring>

#include "framework/native/window_types.h"
#include "framework/text/cstring.h"

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

constexpr UINT kEditorId = 1;        // of every editor of a grid
constexpr UINT kFilterEditorId = 2;  // of the editor in the filter bar
// Pixels at 96 dots an inch.
constexpr int kDragStart = 4;             // from a press on: before them it only trembles
constexpr int kDropMarkWidth = 2;         // to both sides of where a dragged column would come
constexpr int kDividerReach = 4;          // to both sides of a column's edge
constexpr int kLeastScrollingWidth = 48;  // what frozen columns leave to the others
constexpr int kRowHeaderWidth = 30;
constexpr int kMaxVirtualTable = 1 << 28;  // rows; as high as all of them can be scrolled over
constexpr int kMostEditorCloses = 8;       // of editors that handlers open while rows go

// What a grid shows and allows, as its switches of those names say.
struct GridSwitches {
  bool header = true;
  UINT header_flags = 0;
  bool row_header = false;
  int row_header_width = kRowHeaderWidth;
  bool line_numbers = false;
  bool marks_sorted = true;
  bool columns_spread = false;
  bool ctrl_inverts = false;
  bool shows_drag_context = true;
  bool read_only = false;
  bool whole_rows = false;
  bool tips = true;
  bool keeps_last_row = false;
};

// Releases of the left button: how many, and how many there were when the press that is being handled began.
// Its handlers may work the queue, and with it the release, which may go to another window.
struct PressWatch {
  unsigned releases = 0;
  unsigned releases_before = 0;
  bool held = false;      // the button was really down at the press
  POINT at = {0, 0};      // where the mouse went down
  bool on_frame = false;  // on the frame of the selection, and has not moved since
  bool freeing = false;   // the mouse is being given back
  int turned = 0;         // of the wheel, less than a notch
};

// A text of the filter bar.
struct FilterText {
  CString text;
  CString folded;  // as the rows are compared with it
};

// The height of a line of text, and of which font it is.
struct MeasuredFont {
  int height = 0;  // 0: not measured yet
  LOGFONT face = {};

  bool IsOf(const LOGFONT& other) const { return height > 0 && std::memcmp(&face, &other, sizeof face) == 0; }
};

}  // namespace lorv
