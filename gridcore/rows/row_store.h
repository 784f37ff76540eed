#pragma once

#include <memory>
#include <vector>

#include "gridcore/rows/virtual_rows.h"

namespace lorv {

// The rows of a grid by their numbers: those that it was given, or those of a virtual table.
//
// Edges: those of BlockedList and VirtualRows. In virtual mode no row comes, goes or moves by itself.
class RowStore {
 public:
  bool IsVirtual() const { return virtual_ != nullptr; }
  VirtualRows* Virtual() const { return virtual_.get(); }
  void SetVirtual(std::unique_ptr<VirtualRows> rows) { virtual_ = std::move(rows); }

  int Size() const { return virtual_ == nullptr ? list_.Size() : virtual_->Size(); }
  CBCGPGridRow* At(int index) const { return virtual_ == nullptr ? list_.At(index) : virtual_->At(index); }
  int IndexOf(const CBCGPGridRow& row) const {
    return virtual_ == nullptr ? list_.IndexOf(row) : virtual_->IndexOf(row);
  }
  // Keeps a row of a virtual table alive; null for others, which stay by themselves.
  std::shared_ptr<CBCGPGridRow> Hold(const CBCGPGridRow& row) const {
    return virtual_ == nullptr ? nullptr : virtual_->Hold(row);
  }

  void Insert(int index, CBCGPGridRow& row) { list_.Insert(index, row); }
  CBCGPGridRow* Take(int index) { return list_.Take(index); }
  void Clear() { list_.Clear(); }
  template <class Function>
  void ForEach(Function function) const {
    list_.ForEach(function);
  }
  void Arrange(const std::vector<CBCGPGridRow*>& order) { list_.Arrange(order); }

 private:
  RowList list_;
  std::unique_ptr<VirtualRows> virtual_;
};

}  // namespace lorv
