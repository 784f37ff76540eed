#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "gridcore/control/column_taker.h"
#include "gridcore/control/grid_control.h"
#include "gridcore/life_token.h"

namespace lorv {

class GridCommands;

// Lets the user move the columns of a grid: by dragging a header to another place, where a mark shows, and by
// commands. Escape ends a drag without a result.
//
// Units: columns count from 0. A place is where a column stands, a number what it would be if none had been
//   moved.
// Edges: a moved column has the number of its new place from then on, in every call and event of the grid, as
//   a moved column of a spreadsheet has another letter; its cells and all that the grid keeps by number go
//   with it. A host that names columns asks PlaceOf and NumberOf, or moves none. Virtual tables are filled,
//   and records are bound, by the numbers. Not moved: what would tear merged cells or a cell of the header
//   that stands over several columns, and what the question refuses. Of frozen columns as many stay frozen as
//   before. Dragged past the last column that is seen, a column stays in front of hidden ones behind it.
//   While the object lives, a header is clicked when the button goes up over it, not when it goes down.
// Each move is one step of the history. The listener is told of moves by this object, behind the layout. Both
// functions may end the object and the grid.
// The grid may end before the object and after it; the columns stay as they stand. Of several objects on one
// grid the last one drags. One thread: that of the user interface.
//
//   GridColumnOrder order(grid);  order.Move(2, 0);  order.PlaceOf(0)  gives 1, order.NumberOf(0)  2
class COMM_LORV_API GridColumnOrder : private ColumnTaker {
 public:
  explicit GridColumnOrder(CBCGPGridCtrl& grid);
  GridColumnOrder(const GridColumnOrder&) = delete;
  GridColumnOrder& operator=(const GridColumnOrder&) = delete;
  ~GridColumnOrder() override;

  // False, and nothing is moved: refused, or the column stands there already.
  bool Move(int place, int to);
  // The column of the current cell past the next one that is seen.
  bool MoveCurrent(bool right);
  int PlaceOf(int number) const;  // -1: there is none, as below
  int NumberOf(int place) const;
  // The numbers from the left: what a host keeps for the next time.
  std::vector<int> Order() const;
  // True: the columns stand so. False, and they stand as before: not each number once, or a move is refused.
  bool SetOrder(const std::vector<int>& order);

  // Asked before each move; true allows it.
  using Question = std::function<bool(int place, int to)>;
  using Listener = std::function<void(int place, int to)>;
  void SetQuestion(Question question) { question_ = std::move(question); }
  void SetListener(Listener listener) { listener_ = std::move(listener); }

  // The commands move_column_left, move_column_right and restore_columns. They end with the object or before.
  void Bind(GridCommands& commands);

 private:
  bool TakesColumn(int column) override;
  void OnColumnDropped(int column, int to) override;
  bool IsOrder(const std::vector<int>& order) const;
  struct Step {
    int from = 0;
    int to = 0;
  };
  bool Arrange(const std::vector<int>& order, std::vector<Step>& done);

  CBCGPGridCtrl* grid_;
  std::weak_ptr<int> grid_life_;
  LifeToken life_;
  Question question_;
  Listener listener_;
};

}  // namespace lorv
