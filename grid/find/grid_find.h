#pragma once

#include <memory>
#include <vector>

#include "framework/text/cstring.h"
#include "gridcore/cell_range.h"
#include "gridcore/life_token.h"

class CBCGPGridCtrl;

namespace lorv {

class GridCommands;

struct FindOptions {
  CString text;
  bool whole_cell = false;
  bool match_case = false;
  bool backwards = false;
  // In the cells that were selected when the options were set; in all of them where that was one cell.
  bool selection_only = false;
  bool wrap = true;           // on at the other end, once
  bool hidden_cells = false;  // in rows and columns that are out of sight too
  bool pattern = false;       // the text is a regular expression (text_pattern.h)
};

// What a replacement did. Every cell that holds the text is counted once.
struct ReplaceCount {
  int changed = 0;  // cells
  int places = 0;   // occurrences in them
  int kept = 0;     // cells that are read-only, or whose row is a virtual one
  int refused = 0;  // cells whose host took the former value back
};

// Finds and replaces texts in the cells of a grid, without a window of its own.
//
// What is compared is the text that a cell shows. The order is that of reading: row by row, in each from the
//   first column; of merged cells only the first one counts. Rows of a virtual table are asked for one after
//   the other and none is kept.
// Edges: nothing is found for an empty text, or once the grid is gone. Rows and columns that come or go after
//   the options were set are not followed by the selection that is searched.
// Replacing: a cell becomes current before it changes and is reported as if the user had typed the text, so
//   hosts check and refuse as always. All of one call is one step to those who observe the grid.
// The grid may end before the object and after it, handlers may end both. One thread: that of the user
// interface.
//
//   GridFind find(grid);  find.SetOptions({_T("C30")});  find.FindNext();  find.ReplaceAll(_T("C35"))
class COMM_LORV_API GridFind {
 public:
  explicit GridFind(CBCGPGridCtrl& grid);
  GridFind(const GridFind&) = delete;
  GridFind& operator=(const GridFind&) = delete;

  CBCGPGridCtrl* Grid() const { return grid_life_.expired() ? nullptr : grid_; }
  void SetOptions(const FindOptions& options);
  const FindOptions& Options() const { return options_; }
  // False: the text is asked for as a pattern, and is none; nothing is found then.
  bool IsPatternValid() const;

  // The next cell behind that one in the direction, the null id: none. From the null id: the first, or
  // backwards the last one.
  CBCGPGridItemID FindFrom(const CBCGPGridItemID& from, bool backwards) const;
  int Count() const;  // cells

  // From the current cell on; what was found becomes current and is shown. An edit ends before. False: there
  // is none.
  bool FindNext() { return Go(options_.backwards); }
  bool FindPrevious() { return Go(!options_.backwards); }

  // The current cell where it holds the text, and on to the next one.
  ReplaceCount ReplaceNext(const CString& by);
  // All of them, from the first one; the current cell and the first selected range are as before at the end.
  ReplaceCount ReplaceAll(const CString& by);

  // The commands find_next and find_previous are this object's, which must outlive them.
  void Bind(GridCommands& commands);

 private:
  bool Go(bool backwards);
  bool EndsEdit();
  bool ReplaceCell(const CBCGPGridItemID& id, const CString& by, ReplaceCount& count);

  CBCGPGridCtrl* grid_;
  std::weak_ptr<int> grid_life_;
  LifeToken life_;
  FindOptions options_;
  std::vector<CBCGPGridRange> scope_;  // empty: all cells
};

}  // namespace lorv
