#pragma once

#include <algorithm>

namespace lorv {

// Takes the element out of a list and puts it in again, so that it has the number `to`. Both are numbers of
// the list.
template <class List>
void MoveElement(List& list, int from, int to) {
  const auto first = list.begin() + std::min(from, to);
  const auto end = list.begin() + std::max(from, to) + 1;
  std::rotate(first, from < to ? first + 1 : end - 1, end);
}

}  // namespace lorv
