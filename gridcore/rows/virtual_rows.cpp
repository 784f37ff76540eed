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
  std::shared_ptr<CBCGPGridRow> row = make_(index);
  if (row == nullptr) return nullptr;
  row->list_place = {this, static_cast<std::size_t>(index)};
  asked_.push_front(index);
  made_[index] = {row, asked_.begin()};
  if (made_.size() > kMostVirtualRows) Trim();
  return row.get();
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
