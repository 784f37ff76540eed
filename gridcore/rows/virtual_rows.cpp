#include "gridcore/rows/virtual_rows.h"

#include <algorithm>
#include <utility>

// Rows that are made as they are asked for. Those asked for last are kept, by a list in the order of asking;
// a row in use is passed over when one has to go.

namespace lorv {

VirtualRows::VirtualRows(Maker make, Asked in_use, Leave leave)
    : make_(std::move(make)), in_use_(std::move(in_use)), leave_(std::move(leave)) {}

void VirtualRows::Resize(int size) {
  Forget();
  size_ = std::max(0, size);
}

CBCGPGridRow* VirtualRows::At(int index) {
  if (index < 0 || index >= size_) return nullptr;
  const auto found = made_.find(index);
  if (found != made_.end()) {
    asked_.splice(asked_.begin(), asked_, found->second.asked);
    return found->second.row.get();
  }
  // The host's call-back fills it, and may ask for other rows meanwhile, or for this one.
  std::shared_ptr<CBCGPGridRow> row = Make(index);
  if (row == nullptr) return nullptr;
  const auto made_within = made_.find(index);
  if (made_within != made_.end() || index >= size_) {
    leave_(*row);
    return made_within == made_.end() ? nullptr : made_within->second.row.get();
  }
  row->list_place = {this, static_cast<std::size_t>(index)};
  asked_.push_front(index);
  made_[index] = {row, asked_.begin()};
  if (made_.size() > kMostVirtualRows) Trim();
  return row.get();
}

std::shared_ptr<CBCGPGridRow> VirtualRows::Make(int index) {
  // A call-back may throw.
  struct Within {
    int& depth;
    ~Within() { --depth; }
  };
  const Within within{++making_};
  return make_(index);
}

int VirtualRows::IndexOf(const CBCGPGridRow& row) const {
  return row.list_place.block == this ? static_cast<int>(row.list_place.slot) : -1;
}

std::shared_ptr<CBCGPGridRow> VirtualRows::Hold(const CBCGPGridRow& row) const {
  const auto found = made_.find(IndexOf(row));
  return found == made_.end() ? nullptr : found->second.row;
}

void VirtualRows::LetGo(int index) {
  const auto found = made_.find(index);
  const std::shared_ptr<CBCGPGridRow> row = found->second.row;
  // Off the lists before it is let go: that notifies the host, who may ask for the same row again.
  asked_.erase(found->second.asked);
  made_.erase(found);
  row->list_place = {};
  leave_(*row);
}

void VirtualRows::Trim() {
  // The one that was asked for last stays in any case.
  for (auto next = std::prev(asked_.end()); next != asked_.begin();) {
    const int index = *next;
    --next;
    if (in_use_(*made_[index].row)) continue;
    LetGo(index);
    return;
  }
}

void VirtualRows::Forget() {
  while (!asked_.empty()) LetGo(asked_.back());
}

}  // namespace lorv
