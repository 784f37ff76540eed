#include "containers/sorted_strings.h"

// A sorted list of texts without doubles, letter case aside. It is searched from the front: the lists of the
// suite are short and filled once.

bool CSortCStringVector::SortAdd(const CString& text) {
  size_type at = 0;
  for (; at < size(); ++at) {
    const int order = strcompare(text, (*this)[at], -1);
    if (order == 0) return false;
    if (order < 0) break;
  }
  // The text may be an element that moves when the list grows.
  CString copy(text);
  Grow();
  insert(begin() + static_cast<difference_type>(at), std::move(copy));
  return true;
}
