#pragma once

#include <vector>

#include "tests/reference/reference_text.h"

// The two binary searches of the sorted arrays, step for step, over a plain vector and a three-way compare
// (key, element).
namespace lorv::reference {

template <class Key, class T, class Compare>
bool FindPosition(const std::vector<T>& elements, const Key& key, long& position, Compare compare) {
  const long n = static_cast<long>(elements.size());
  const auto at = [&](long i) { return compare(key, elements[static_cast<std::size_t>(i)]); };
  position = -1;
  long lo = 0;
  long hi = n;
  long mid = 0;
  long long c = 0;
  do {
    mid = (lo + hi) / 2;
    if (lo > hi || mid >= n) return false;
    c = at(mid);
    if (c == 0) {
      position = mid;
      return true;
    }
    if (c < 0) {
      hi = mid - 1;
      position = mid;
    } else {
      lo = mid + 1;
    }
    if (lo > hi) return false;
  } while (hi - lo >= 3);
  long i = c > 0 ? mid : lo;
  if (hi < n) ++hi;
  for (; i < hi; ++i) {
    c = at(i);
    if (c == 0) {
      position = i;
      return true;
    }
    if (c < 0) break;
  }
  position = i;
  return false;
}

template <class T, class Compare>
long AddSorted(std::vector<T>& elements, const T& element, Compare compare) {
  long position = -1;
  if (FindPosition(elements, element, position, compare)) return position;
  const long n = static_cast<long>(elements.size());
  if (position >= 0 && position <= n - 1) {
    elements.insert(elements.begin() + position, element);
    return position;
  }
  elements.push_back(element);
  return n;
}

template <class Key, class T, class Compare>
long FindKey(const std::vector<T>& elements, const Key& key, Compare compare) {
  const long n = static_cast<long>(elements.size());
  if (n == 0) return -1;
  long lo = 0;
  long hi = n;
  while (true) {
    const long mid = (lo + hi) / 2;
    if (lo > hi || mid >= n) return -1;
    const long long c = compare(key, elements[static_cast<std::size_t>(mid)]);
    if (c == 0) return mid;
    if (c < 0) {
      hi = mid - 1;
    } else {
      lo = mid + 1;
    }
  }
}

}  // namespace lorv::reference
