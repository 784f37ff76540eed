#pragma once

#include <functional>

#include "containers/ox_array.h"
#include "framework/collections/string_array.h"
#include "framework/text/cstring.h"

// One face for the two kinds of text lists, so that each list operation is written once.
namespace lorv {

using TextArray = OxArray<CString, OxVector<CString>>;

inline int CountOf(const CStringArray& list) {
  return list.GetSize();
}
inline int CountOf(const TextArray& list) {
  return static_cast<int>(list.size());
}

inline void Resize(CStringArray& list, int count) {
  list.SetSize(count);
}
inline void Resize(TextArray& list, int count) {
  list.resize(static_cast<std::size_t>(count));
}

inline CString& ElementOf(CStringArray& list, int index) {
  return list.ElementAt(index);
}
inline CString& ElementOf(TextArray& list, int index) {
  return list[static_cast<std::size_t>(index)];
}
inline const CString& ElementOf(const CStringArray& list, int index) {
  return list.GetAt(index);
}
inline const CString& ElementOf(const TextArray& list, int index) {
  return list[static_cast<std::size_t>(index)];
}

inline void RemoveElement(CStringArray& list, int index) {
  list.RemoveAt(index);
}
inline void RemoveElement(TextArray& list, int index) {
  list.erase(list.begin() + index);
}

inline const CString* FirstOf(const CStringArray& list) {
  return list.GetData();
}
inline const CString* FirstOf(const TextArray& list) {
  return list.data();
}

// Whether a text is an element of the list, so that changing the list would change the text.
template <class List>
bool IsElement(const List& list, const CString& text) {
  const CString* const first = FirstOf(list);
  const std::less<> before;
  return first != nullptr && !before(&text, first) && before(&text, first + CountOf(list));
}

}  // namespace lorv
