#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

#include "gridcore/control/table/grid_restore.h"

class CBCGPBasicGridCtrl;

namespace lorv {

class SelectionColour;

// What one step changed in a table, in the form that takes it back and then makes it again.
//
// Cells are named by their row and by the number that their column had before the step: columns may be moved
// in it. Rows stay the same objects, also while they are out of the table, when the step owns them; their
// cells then keep the order that the columns had when they went. Each note holds the state on the other side
// of the step; applying the step swaps it with the table's. One thread: that of the user interface.
class RecordedStep {
 public:
  // While a step is applied: false where the table, or what applies the step, is gone or another one.
  using StillThere = std::function<bool()>;

  // A change that was taken back within the step: all cells that it names have their first values, rows that
  // came are gone.
  bool ChangesNothing() const;
  std::size_t Bytes() const { return bytes_; }

  void NoteValue(CBCGPGridItem& item, _variant_t& before);
  // The looks that it is about to lose.
  void NoteLooks(CBCGPGridItem& item, const ItemLooks& looks);
  void NoteInserted(CBCGPGridRow& row);
  // Owns the row from now on. A row that this step made, and nothing else since, leaves no note: it stays the
  // caller's.
  void NoteRemoved(const RowPlace& place, std::unique_ptr<CBCGPGridRow>& row);
  void NoteMoving(RowArrangement& now);
  void NoteMerged(const std::vector<CBCGPGridRange>& now);
  void NoteColumn(int from, int to);

  // Takes the step back, or makes it again. False: the table does not fit the notes, or is gone. What a
  // cell raises while its value is set is raised at the end, when all others have theirs.
  bool Apply(CBCGPBasicGridCtrl& grid, bool back, const StillThere& still_there);
  // Called while the step is applied: what a cell had, and a row that it takes out.
  void TakeFormer(_variant_t& before);
  bool TakeRow(const RowPlace& place, std::unique_ptr<CBCGPGridRow>& row);

  // The cells or rows that it changed, as they stand now, with the step taken back or made again; null where
  // they are gone.
  CBCGPGridRange Touched() const;
  void EachRow(const std::function<void(CBCGPGridRow&)>& visit) const;

 private:
  struct Value {
    CBCGPGridRow* row;
    int column;
    _variant_t other;
  };
  struct Looks {
    CBCGPGridRow* row;
    int column;
    ItemLooks other;
  };
  // A row that came or went, another order of all, or a column that was moved.
  struct Turn {
    CBCGPGridRow* row = nullptr;
    bool inserted = false;
    RowPlace place;                       // of a row that is out
    std::unique_ptr<CBCGPGridRow> owned;  // while it is out
    std::unique_ptr<RowArrangement> order;
    int from = -1;  // a column that was moved
    int to = -1;
  };

  // By rows that are out of the table: the number of the turn that took them.
  using RowsOut = std::unordered_map<const CBCGPGridRow*, std::size_t>;

  bool MovesColumns() const { return !moves_.empty(); }
  int ColumnBefore(int column) const;
  int ColumnAfter(int column, std::size_t turns) const;
  int ColumnNow(const CBCGPGridRow& row, int column, const RowsOut& out) const;
  RowsOut FindRowsOut() const;
  bool KeepsRows() const;
  bool KeepsValues() const;
  static void SwapLooks(const SelectionColour& selection, CBCGPGridItem* item, Looks& looks);
  bool ApplyTurn(GridRestore& restore, Turn& turn, bool back);
  bool ApplyTurns(CBCGPBasicGridCtrl& grid, bool back);
  bool ApplyCells(const CBCGPBasicGridCtrl& grid, bool back, const StillThere& still_there);

  std::vector<Value> values_;
  std::vector<Looks> looks_;
  std::vector<Turn> turns_;
  std::vector<std::size_t> moves_;  // the turns that move columns
  bool taken_back_ = false;
  std::optional<std::vector<CBCGPGridRange>> merged_;
  std::size_t bytes_ = 0;
  Turn* taking_ = nullptr;
  std::optional<_variant_t> former_;
};

}  // namespace lorv
