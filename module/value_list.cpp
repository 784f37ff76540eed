#include "module/value_list.h"

#include <algorithm>
#include <limits>
#include <utility>

// A growing list of 64-bit values with the suite's steps of growth: by as much as it holds, at least a small
// and at most a large step. What is new is 0.

namespace lorv {
namespace {

constexpr std::int64_t kMostItems = std::numeric_limits<int>::max();

}  // namespace

ValueList::ValueList(const ValueList& other) {
  *this = other;
}

ValueList& ValueList::operator=(const ValueList& other) {
  if (this == &other) return *this;
  Reserve(other.size_);
  std::copy_n(other.items_.get(), other.size_, items_.get());
  size_ = other.size_;
  return *this;
}

void ValueList::SetSize(int size) {
  const int wanted = std::max(size, 0);
  Reserve(wanted);
  if (wanted > size_) std::fill(items_.get() + size_, items_.get() + wanted, Item{0});
  size_ = wanted;
}

void ValueList::Reserve(int size) {
  if (size <= capacity_) return;
  const int step = std::max(std::min(capacity_, kLargestStep), kGrowthStep);
  // The step is at most 8192, so only a capacity next to the end of 32 bits could overflow.
  const std::int64_t stepped = std::int64_t{capacity_} + step;
  const int fresh = static_cast<int>(std::clamp(stepped, std::int64_t{size}, kMostItems));
  auto items = std::make_unique<Item[]>(static_cast<std::size_t>(fresh));
  std::copy_n(items_.get(), size_, items.get());
  items_ = std::move(items);
  capacity_ = fresh;
}

}  // namespace lorv
