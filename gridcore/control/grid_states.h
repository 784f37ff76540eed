#pragma once

#include <memory>
#include <vector>

#include "framework/windows/controls.h"
#include "gridcore/control/grid_options.h"
#include "gridcore/geometry/column_panes.h"

namespace lorv {

class ColumnTaker;

// What a grid keeps between two messages, one record for each subject.

struct FilterState {
  bool on = false;
  std::vector<FilterText> texts;  // by column
  std::unique_ptr<CEdit> editor;
  int column = -1;  // whose text the editor has
};

// How the editor that is open came to be.
struct EditorOpening {
  TCHAR first = 0;     // the character that opens it
  bool empty = false;  // for an input method
  CString text;        // what stood in the editor when it was shown
  bool by_character = false;
};

struct FrozenState {
  int columns = 0;
  ColumnPane drawn = ColumnPane::kBoth;
};

struct SortState {
  int column = -1;
  bool ascending = true;
  unsigned items_gone = 0;  // how many cells the table lost, for who holds some while rows are compared
};

struct HeightNotes {
  int tall_rows = 0;     // of more than one line
  bool trusted = false;  // the rows' heights stand, whatever the filter would say
  bool known = false;    // and are those of all rows
};

// A header that the mouse went down on, and whose column may follow it.
struct HeaderPress {
  ColumnTaker* taker = nullptr;  // null: headers are clicked, and nothing follows
  bool on = false;
  bool moves = false;  // further than a press that trembles
  int column = -1;
  UINT flags = 0;
  POINT at = {0, 0};
};

}  // namespace lorv
