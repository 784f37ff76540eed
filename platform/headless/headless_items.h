#pragma once

#include <vector>

#include "framework/cstring.h"
#include "framework/window_types.h"

namespace lorv {

// The items of a list or drop-down list: texts with a number each, and which one is chosen. Answers are those
// of the LB_ and CB_ messages, -1 for what is not there. Texts compare without regard to the case of letters.
class HeadlessItems {
 public:
  struct Item {
    CString text;
    LPARAM data = 0;
    bool selected = false;
  };

  explicit HeadlessItems(bool sorted) : sorted_(sorted) {}

  int Count() const { return static_cast<int>(items_.size()); }
  int Add(LPCTSTR text);
  int Insert(int index, LPCTSTR text);  // -1: at the end
  int Delete(int index);
  void Clear();
  // From behind `after` around to it; `whole`: equal, else beginning with it.
  int Find(int after, LPCTSTR text, bool whole) const;
  LRESULT Length(int index) const;
  LRESULT Copy(int index, LPTSTR target) const;
  bool Has(int index) const { return index >= 0 && index < Count(); }
  Item& At(int index) { return items_[static_cast<std::size_t>(index)]; }
  const Item& At(int index) const { return items_[static_cast<std::size_t>(index)]; }

  int chosen = -1;

 private:
  int Put(int index, LPCTSTR text);

  bool sorted_;
  std::vector<Item> items_;
};

}  // namespace lorv
