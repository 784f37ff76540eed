#pragma once

#include <memory>
#include <vector>

#include "gridcore/control/grid_observer.h"
#include "gridcore/control/scope_mark.h"
#include "gridcore/life_token.h"

namespace lorv {

class StepScope;

// Those that hear of what becomes of a grid's table, in the order in which they came.
//
// Edges: one that is added twice hears once; one that is removed in the middle of a call hears nothing more.
// Cost: without an observer a change asks once whether there is one.
// The grid's own part; the observers are the caller's. One thread: that of the user interface.
//
//   const lorv::StepScope step(grid.Changes());  grid.DeleteRows(0, 3)  is one step
class COMM_LORV_API GridChanges {
 public:
  void Add(GridObserver& observer);
  void Remove(GridObserver& observer);
  bool AreWatched() const { return !observers_.empty(); }

  // While what it gives lives, changes are the user's.
  [[nodiscard]] ScopeMark<ChangeBy> ByUser() { return {by_, life_.Watch(), ChangeBy::kUser}; }
  [[nodiscard]] ScopeMark<ChangeBy> BySelection() { return {by_, life_.Watch(), ChangeBy::kSelection}; }
  ChangeBy By() const { return by_; }

  // The item has its new value; the observers may have the old one.
  void ReportValue(CBCGPGridItem& item, _variant_t& before);
  void ReportInserted(const RowPlace& place, CBCGPGridRow& row);
  void ReportRemoved(const RowPlace& place, std::unique_ptr<CBCGPGridRow> row);
  void ReportMoving(RowArrangement now);
  void ReportMerging(const std::vector<CBCGPGridRange>& now);
  void ReportColumnMoving(int from, int to) {
    ForEach([=](GridObserver& observer) { observer.OnColumnMoving(from, to); });
  }
  void ReportReplaced() {
    ForEach([](GridObserver& observer) { observer.OnTableReplaced(); });
  }
  // Calls `notify` with each observer.
  template <class Notify>
  void ForEach(Notify notify);

 private:
  friend class StepScope;
  void Sweep();

  std::vector<GridObserver*> observers_;  // null: removed in the middle of a call
  int reporting_ = 0;
  ChangeBy by_ = ChangeBy::kProgram;
  LifeToken life_;
};

template <class Notify>
void GridChanges::ForEach(Notify notify) {
  ++reporting_;
  for (std::size_t i = 0; i < observers_.size(); ++i)
    if (observers_[i] != nullptr) notify(*observers_[i]);
  if (--reporting_ == 0) Sweep();
}

// What changes while it lives is one step to those that observe the grid when it is made. The grid may end
// before it.
class COMM_LORV_API StepScope {
 public:
  explicit StepScope(GridChanges& changes, const CBCGPGridItem* subject = nullptr,
                     StepKind kind = StepKind::kOwn);
  StepScope(const StepScope&) = delete;
  StepScope& operator=(const StepScope&) = delete;
  ~StepScope();

 private:
  GridChanges& changes_;
  std::weak_ptr<int> life_;
};

}  // namespace lorv
