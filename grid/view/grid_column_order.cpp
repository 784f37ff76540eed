#include "grid/view/grid_column_order.h"

#include <algorithm>
#include <numeric>

#include "grid/commands/grid_commands.h"

// The moves are the grid's; here is who may make them, and the order as a whole.

namespace lorv {

GridColumnOrder::GridColumnOrder(CBCGPGridCtrl& grid) : grid_(&grid), grid_life_(grid.Watch()) {
  grid.SetColumnTaker(this);
}

GridColumnOrder::~GridColumnOrder() {
  if (!grid_life_.expired() && grid_->GetColumnTaker() == this) grid_->SetColumnTaker(nullptr);
}

bool GridColumnOrder::Move(int place, int to) {
  if (grid_life_.expired() || place == to || !grid_->CanMoveColumn(place, to)) return false;
  const auto life = life_.Watch();
  const auto grid_life = grid_life_;
  // Copies: both may be replaced, or end with the object, while they run.
  const Question question = question_;
  if (question != nullptr && !question(place, to)) return false;
  if (life.expired() || grid_life.expired()) return false;
  {
    const auto user = grid_->Changes().ByUser();
    if (grid_->MoveColumn(place, to) == FALSE) return false;
  }
  if (life.expired() || grid_life.expired()) return true;
  const Listener listener = listener_;
  if (listener != nullptr) listener(place, to);
  return true;
}

bool GridColumnOrder::MoveCurrent(bool right) {
  if (grid_life_.expired()) return false;
  const int column = grid_->GetCurSelItemID().m_nColumn;
  const int next = grid_->GetColumnsInfo().GetNextVisibleColumn(column, right ? TRUE : FALSE);
  return column >= 0 && next >= 0 && Move(column, next);
}

int GridColumnOrder::PlaceOf(int number) const {
  return grid_life_.expired() ? -1 : grid_->GetColumnsInfo().FindUnmovedColumn(number);
}

int GridColumnOrder::NumberOf(int place) const {
  return grid_life_.expired() ? -1 : grid_->GetColumnsInfo().GetUnmovedColumn(place);
}

std::vector<int> GridColumnOrder::Order() const {
  std::vector<int> order;
  const int count = grid_life_.expired() ? 0 : grid_->GetColumnCount();
  order.reserve(static_cast<std::size_t>(count));
  for (int place = 0; place < count; ++place) order.push_back(NumberOf(place));
  return order;
}

bool GridColumnOrder::IsOrder(const std::vector<int>& order) const {
  std::vector<int> sorted = order;
  std::sort(sorted.begin(), sorted.end());
  std::vector<int> all(static_cast<std::size_t>(grid_->GetColumnCount()));
  std::iota(all.begin(), all.end(), 0);
  return sorted == all;
}

// From the left, each column to its place; what stands there already is not touched any more.
bool GridColumnOrder::Arrange(const std::vector<int>& order, std::vector<Step>& done) {
  const auto life = life_.Watch();
  const auto grid_life = grid_life_;
  for (int place = 0; place < static_cast<int>(order.size()); ++place) {
    const int from = PlaceOf(order[static_cast<std::size_t>(place)]);
    if (from == place) continue;
    if (!Move(from, place) || life.expired() || grid_life.expired()) return false;
    done.push_back({from, place});
  }
  return true;
}

bool GridColumnOrder::SetOrder(const std::vector<int>& order) {
  if (grid_life_.expired() || !IsOrder(order)) return false;
  const auto life = life_.Watch();
  const auto grid_life = grid_life_;
  CBCGPGridCtrl& grid = *grid_;
  std::vector<Step> done;
  const StepScope step(grid.Changes());
  if (Arrange(order, done)) return true;
  if (life.expired() || grid_life.expired()) return false;
  // Moves that were allowed are taken back without asking again.
  for (auto at = done.rbegin(); at != done.rend() && !grid_life.expired(); ++at)
    grid.MoveColumn(at->to, at->from);
  return false;
}

bool GridColumnOrder::TakesColumn(int column) {
  return grid_->GetColumnsInfo().GetVisibleColumnCount() > 1 && grid_->GetColumnVisible(column) != FALSE;
}

void GridColumnOrder::OnColumnDropped(int column, int to) {
  Move(column, to);
}

void GridColumnOrder::Bind(GridCommands& commands) {
  commands.Bind(_T("move_column_left"), [this](CBCGPGridCtrl&) { return MoveCurrent(false); });
  commands.Bind(_T("move_column_right"), [this](CBCGPGridCtrl&) { return MoveCurrent(true); });
  commands.Bind(
      _T("restore_columns"),
      [this](CBCGPGridCtrl&) {
        std::vector<int> all(Order().size());
        std::iota(all.begin(), all.end(), 0);
        return SetOrder(all);
      },
      [](const CBCGPGridCtrl& grid) { return grid.GetColumnsInfo().AreColumnsMoved(); });
}

}  // namespace lorv
