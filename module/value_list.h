#pragma once

#include <cstdint>
#include <memory>

#include "framework/native/export.h"

// A list of values of eight bytes with a fixed rule of growth.
//
// Growth: a new size above the capacity adds a step to it, which is the capacity itself, but 8192 once that
//   is reached, and at least 8; or the new size where that is greater still.
// Edges: a negative size counts as 0. A smaller size keeps the capacity. An index outside the list is the
//   caller's fault.
// Assignment grows the target only when it must, and copies the items.
//
//   ValueList list;  list.SetSize(1);  list.GetCapacity()  gives 8
namespace lorv {

class COMM_LORV_API ValueList {
 public:
  using Item = std::int64_t;
  static constexpr int kGrowthStep = 8;
  static constexpr int kLargestStep = 8192;

  ValueList() = default;
  ValueList(const ValueList& other);
  ValueList& operator=(const ValueList& other);
  ~ValueList() = default;

  int GetSize() const { return size_; }
  int GetCapacity() const { return capacity_; }
  // New items are 0.
  void SetSize(int size);

  Item& operator[](int index) { return items_[static_cast<std::size_t>(index)]; }
  const Item& operator[](int index) const { return items_[static_cast<std::size_t>(index)]; }

 private:
  void Reserve(int size);

  std::unique_ptr<Item[]> items_;  // NOLINT(modernize-avoid-c-arrays): capacity and size are told apart
  int capacity_ = 0;
  int size_ = 0;
};

}  // namespace lorv
