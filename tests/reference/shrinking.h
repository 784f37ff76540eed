#pragma once

#include <functional>
#include <vector>

#include "tests/reference/reference_text.h"

// Makes a failing case smaller, piece by piece, as long as it still fails.
namespace lorv::test {

// Cuts runs of units, long ones first.
void ShrinkText(reference::Text& text, const std::function<bool()>& fails);
// Puts a simpler number in its place.
void ShrinkNumber(double& number, const std::function<bool()>& fails);

template <class T>
void ShrinkList(std::vector<T>& list, const std::function<bool()>& fails) {
  for (std::size_t at = 0; at < list.size();) {
    const std::vector<T> whole = list;
    list.erase(list.begin() + static_cast<std::ptrdiff_t>(at));
    if (fails()) continue;
    list = whole;
    ++at;
  }
}

}  // namespace lorv::test
