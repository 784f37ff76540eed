#pragma once

#include <memory>
#include <vector>

#include "framework/native/export.h"
#include "gridcore/life_token.h"

class CBCGPGridCtrl;
class CBCGPGridRow;

namespace lorv {

struct SortOptions {
  bool by_sound = true;          // Chinese by pinyin, where the system has that order; else by code
  bool texts_of_numbers = true;  // a text that is a number as a whole counts as that number
  bool empty_last = true;        // in both directions
};

// The order of rows as users of spreadsheets know it, for every sort of a grid: by a click on a header (with
// lorv::kHeaderSorts), by its commands and by the program.
//
// Numbers stand before texts, numbers by size, texts unit by unit, without regard to the case of ASCII
//   letters; what is no number at all stands in front. Equal ones stay as they stood, in both directions.
//   Rows that are nested are put in order within theirs.
// Edges: a virtual table is not sorted by the grid. A grid has one such object: the last one counts, and
//   with its end the grid has its own order again.
// The grid may end before the object and after it. One thread: that of the user interface.
//
//   GridSort sort(grid);  grid.Sort(0)
class COMM_LORV_API GridSort {
 public:
  explicit GridSort(CBCGPGridCtrl& grid, const SortOptions& options = {});
  GridSort(const GridSort&) = delete;
  GridSort& operator=(const GridSort&) = delete;
  ~GridSort();

  // What takes effect with the next sort.
  void SetOptions(const SortOptions& options) { *options_ = options; }

 private:
  CBCGPGridCtrl* grid_;
  std::weak_ptr<int> grid_life_;
  std::shared_ptr<SortOptions> options_;  // the grid's sorter knows them too
};

// The places of the rows in the order of the column: the row that stood at order[0] comes first.
COMM_LORV_API std::vector<int> SortedOrder(const std::vector<CBCGPGridRow*>& rows, int column, bool ascending,
                                           const SortOptions& options);

}  // namespace lorv
