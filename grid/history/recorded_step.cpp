#include "grid/history/recorded_step.h"

#include <algorithm>
#include <exception>
#include <unordered_set>
#include <utility>

#include "grid/basic/basic_grid.h"
#include "grid/history/selection_colour.h"
#include "gridcore/geometry/line_span.h"
#include "gridcore/table/merged_cells.h"

// The notes of one step. Values and looks are found by rows that live as long as the notes, so it does not
// matter to them where the rows stand, or whether they stand in the table at all; rows that came, went or
// moved and columns that moved are taken back in the opposite order. Then come the values, whose notes count
// columns as before the step: there is one order to count in, whenever a note was made.

namespace lorv {
namespace {

std::size_t BytesOf(const _variant_t& value) {
  return value.vt == VT_BSTR ? 8 + SysStringByteLen(value.bstrVal) : 0;
}

std::size_t BytesOf(const CBCGPGridRow& row) {
  std::size_t bytes = sizeof row;
  CString room;
  for (int column = 0; column < row.GetItemCount(); ++column) {
    bytes += sizeof(CBCGPGridItem);
    if (const CBCGPGridItem* const item = row.FindItem(column))
      bytes += BytesOf(item->GetValue());
    else if (row.GetValueType(column) == VT_BSTR)
      bytes += 8 + row.ShownText(column, room).size() * sizeof(TCHAR);
  }
  for (int below = 0; below < row.GetSubItemsCount(); ++below) bytes += BytesOf(*row.GetSubItem(below));
  return bytes;
}

// Calls `visit` with the elements from first to last, or the other way round, until it answers false.
template <class List, class Visit>
bool EachWay(List& list, bool backwards, Visit visit) {
  const std::size_t count = list.size();
  for (std::size_t i = 0; i < count; ++i)
    if (!visit(list[backwards ? count - 1 - i : i])) return false;
  return true;
}

}  // namespace

// What the column was called before the step, whose moves so far have brought it here.
int RecordedStep::ColumnBefore(int column) const {
  for (auto move = moves_.rbegin(); move != moves_.rend(); ++move)
    column = LineAfterMove(column, turns_[*move].to, turns_[*move].from);
  return column;
}

// Where that column is after so many of the turns.
int RecordedStep::ColumnAfter(int column, std::size_t turns) const {
  for (const std::size_t move : moves_) {
    if (move >= turns) break;
    column = LineAfterMove(column, turns_[move].from, turns_[move].to);
  }
  return column;
}

RecordedStep::RowsOut RecordedStep::FindRowsOut() const {
  RowsOut out;
  for (std::size_t turn = 0; MovesColumns() && turn < turns_.size(); ++turn)
    if (turns_[turn].owned != nullptr) out.emplace(turns_[turn].owned.get(), turn);
  return out;
}

// Which cell of the row it is now. A row that is out has seen the moves up to its own turn, in either
// direction.
int RecordedStep::ColumnNow(const CBCGPGridRow& row, int column, const RowsOut& out) const {
  if (!MovesColumns()) return column;
  const CBCGPGridRow* outermost = &row;
  while (outermost->GetParentRow() != nullptr) outermost = outermost->GetParentRow();
  const auto found = out.find(outermost);
  if (found != out.end()) return ColumnAfter(column, found->second);
  return taken_back_ ? column : ColumnAfter(column, turns_.size());
}

bool RecordedStep::ChangesNothing() const {
  return looks_.empty() && !merged_.has_value() && KeepsRows() && KeepsValues();
}

// Each row that came went again, the last one first.
bool RecordedStep::KeepsRows() const {
  std::vector<const CBCGPGridRow*> came;
  for (const Turn& turn : turns_) {
    if (turn.row != nullptr && turn.inserted) {
      came.push_back(turn.row);
      continue;
    }
    if (turn.row == nullptr || came.empty() || came.back() != turn.row) return false;
    came.pop_back();
  }
  return came.empty();
}

// The first note of a cell is what it had. The first cell of a usual step has changed, which ends both walks.
bool RecordedStep::KeepsValues() const {
  const auto has_it = [](const Value& value) {
    // A row that is the step's own goes with it, with whatever its cells have.
    if (value.row->GetOwnerList() == nullptr) return true;
    const CBCGPGridItem* const item = value.row->GetItem(value.column);
    return item != nullptr && item->GetValue() == value.other;
  };
  if (std::all_of(values_.begin(), values_.end(), has_it)) return true;
  const auto hash = [](const std::pair<const CBCGPGridRow*, int>& cell) {
    return std::hash<const void*>()(cell.first) * 31U + static_cast<std::size_t>(cell.second);
  };
  std::unordered_set<std::pair<const CBCGPGridRow*, int>, decltype(hash)> seen(0, hash);
  return std::all_of(values_.begin(), values_.end(), [&](const Value& value) {
    return !seen.emplace(value.row, value.column).second || has_it(value);
  });
}

void RecordedStep::NoteValue(CBCGPGridItem& item, _variant_t& before) {
  CBCGPGridRow* const row = item.GetParentRow();
  const int column = ColumnBefore(item.GetColumnId());
  // What the cell had in between is nobody's.
  if (!values_.empty() && values_.back().row == row && values_.back().column == column) return;
  bytes_ += sizeof(Value) + BytesOf(before);
  values_.push_back({row, column, std::move(before)});
}

void RecordedStep::NoteLooks(CBCGPGridItem& item, const ItemLooks& looks) {
  CBCGPGridRow* const row = item.GetParentRow();
  const int column = ColumnBefore(item.GetColumnId());
  if (!looks_.empty() && looks_.back().row == row && looks_.back().column == column) return;
  bytes_ += sizeof(Looks);
  looks_.push_back({row, column, looks});
}

void RecordedStep::NoteInserted(CBCGPGridRow& row) {
  Turn turn;
  turn.row = &row;
  turn.inserted = true;
  turns_.push_back(std::move(turn));
  bytes_ += sizeof(Turn);
}

void RecordedStep::NoteRemoved(const RowPlace& place, std::unique_ptr<CBCGPGridRow>& row) {
  const bool came_last = !turns_.empty() && turns_.back().inserted && turns_.back().row == row.get();
  // It came and went within the step.
  if (came_last && values_.empty() && looks_.empty()) {
    turns_.pop_back();
    return;
  }
  Turn turn;
  turn.row = row.get();
  turn.place = place;
  turn.owned = std::move(row);
  bytes_ += sizeof(Turn) + BytesOf(*turn.owned);
  turns_.push_back(std::move(turn));
}

void RecordedStep::NoteMoving(RowArrangement& now) {
  Turn turn;
  turn.order = std::make_unique<RowArrangement>(std::move(now));
  bytes_ += sizeof(Turn) + turn.order->rows.size() * sizeof(void*);
  turns_.push_back(std::move(turn));
}

void RecordedStep::NoteMerged(const std::vector<CBCGPGridRange>& now) {
  if (merged_.has_value()) return;
  // Until now they have only moved along with columns, whose moves are taken off again.
  MergedCells before;
  before.Assign(now);
  for (auto move = moves_.rbegin(); move != moves_.rend(); ++move)
    before.MoveColumn(turns_[*move].to, turns_[*move].from);
  merged_ = before.Blocks();
  bytes_ += now.size() * sizeof(CBCGPGridRange);
}

void RecordedStep::NoteColumn(int from, int to) {
  // Moved back, it was not moved.
  if (!turns_.empty() && turns_.back().from == to && turns_.back().to == from) {
    turns_.pop_back();
    moves_.pop_back();
    bytes_ -= sizeof(Turn);
    return;
  }
  Turn turn;
  turn.from = from;
  turn.to = to;
  moves_.push_back(turns_.size());
  turns_.push_back(std::move(turn));
  bytes_ += sizeof(Turn);
}

void RecordedStep::TakeFormer(_variant_t& before) {
  // The first is what the cell had; a cell that changes its kind on the way has others in between.
  if (!former_.has_value()) former_ = std::move(before);
}

bool RecordedStep::TakeRow(const RowPlace& place, std::unique_ptr<CBCGPGridRow>& row) {
  if (taking_ == nullptr || row == nullptr || taking_->row != row.get()) return false;
  taking_->place = place;
  taking_->owned = std::move(row);
  return true;
}

bool RecordedStep::ApplyTurn(GridRestore& restore, Turn& turn, bool back) {
  if (turn.from >= 0)
    return back ? restore.MoveColumn(turn.to, turn.from) : restore.MoveColumn(turn.from, turn.to);
  if (turn.order != nullptr) {
    RowArrangement now = restore.Arrangement();
    if (!restore.Arrange(*turn.order)) return false;
    *turn.order = std::move(now);
    return true;
  }
  if (turn.inserted != back) return restore.PutRow(turn.place, turn.owned);
  // The row comes by way of the observer, which is notified of all that leaves.
  taking_ = &turn;
  const bool taken = restore.TakeRow(*turn.row);
  taking_ = nullptr;
  return taken && turn.owned != nullptr;
}

bool RecordedStep::ApplyTurns(CBCGPBasicGridCtrl& grid, bool back) {
  GridRestore restore(grid);
  // Rows that come and go move merged cells along, so these are set when all rows stand where they should.
  std::vector<CBCGPGridRange> merged;
  if (merged_.has_value()) merged = restore.Merged();
  // Those of one end of the step would refuse moves that were made in the middle of it.
  if (merged_.has_value() && MovesColumns()) restore.SetMerged({});
  if (!EachWay(turns_, back, [&](Turn& turn) { return ApplyTurn(restore, turn, back); })) return false;
  if (!merged_.has_value()) return true;
  restore.SetMerged(*merged_);
  merged_ = std::move(merged);
  return true;
}

void RecordedStep::SwapLooks(const SelectionColour& selection, CBCGPGridItem* item, Looks& looks) {
  if (item == nullptr) return;
  const ItemLooks now = selection.Without(*item);
  item->SetLooks(selection.With(looks.other, *item), FALSE);
  looks.other = now;
}

bool RecordedStep::ApplyCells(const CBCGPBasicGridCtrl& grid, bool back, const StillThere& still_there) {
  std::exception_ptr raised;
  const RowsOut out = FindRowsOut();
  const auto swap = [&](Value& value) {
    CBCGPGridItem* const item = value.row->GetItem(ColumnNow(*value.row, value.column, out));
    if (item == nullptr) return true;
    former_.reset();
    // A row outside the table has no observers: its value is kept by hand.
    const bool reported = value.row->GetOwnerList() != nullptr;
    std::optional<_variant_t> kept;
    if (!reported) kept = item->GetValue();
    try {
      item->SetValue(value.other, FALSE);
    } catch (...) {
      if (raised == nullptr) raised = std::current_exception();
    }
    if (!still_there()) return false;
    std::optional<_variant_t>& former = reported ? former_ : kept;
    if (!former.has_value()) return true;
    // Texts of another length: the limit of memory counts what is kept now.
    bytes_ -= std::min(bytes_, BytesOf(value.other));
    bytes_ += BytesOf(*former);
    value.other = std::move(*former);
    return true;
  };
  const bool whole = EachWay(values_, back, swap);
  former_.reset();
  if (whole) {
    const SelectionColour selection(grid);
    EachWay(looks_, back, [&](Looks& looks) {
      SwapLooks(selection, looks.row->GetItem(ColumnNow(*looks.row, looks.column, out)), looks);
      return true;
    });
  }
  if (raised != nullptr) std::rethrow_exception(raised);
  return whole;
}

bool RecordedStep::Apply(CBCGPBasicGridCtrl& grid, bool back, const StillThere& still_there) {
  taken_back_ = back;
  return ApplyTurns(grid, back) && ApplyCells(grid, back, still_there);
}

CBCGPGridRange RecordedStep::Touched() const {
  const auto cell = [this](const CBCGPGridRow* row, int column) {
    const int id = row->GetRowId();
    return id < 0 ? CBCGPGridRange() : CBCGPGridRange(CBCGPGridItemID(id, ColumnNow(*row, column, {})));
  };
  if (!values_.empty()) {
    const CBCGPGridRange first = cell(values_.front().row, values_.front().column);
    const CBCGPGridRange last = cell(values_.back().row, values_.back().column);
    return first.IsValid() && last.IsValid() ? first.JoinWith(last) : CBCGPGridRange();
  }
  if (!looks_.empty()) return cell(looks_.front().row, looks_.front().column);
  for (const Turn& turn : turns_)
    if (turn.row != nullptr && turn.owned == nullptr) return cell(turn.row, 0);
  return {};
}

void RecordedStep::EachRow(const std::function<void(CBCGPGridRow&)>& visit) const {
  const CBCGPGridRow* last = nullptr;
  for (const Value& value : values_) {
    if (value.row != last && value.row->GetOwnerList() != nullptr) visit(*value.row);
    last = value.row;
  }
}

}  // namespace lorv
