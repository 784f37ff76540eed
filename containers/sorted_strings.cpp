#include "containers/sorted_strings.h"

bool CSortCStringVector::SortAdd(const CString& text) {
  size_type at = 0;
  for (; at < size(); ++at) {
    const int order = strcompare(text, (*this)[at], -1);
    if (order == 0) return false;
    if (order < 0) break;
  }
  CString copy(text);
  Grow();
  insert(begin() + static_cast<difference_type>(at), std::move(copy));
  return true;
}
