#pragma once

#include <cstddef>
#include <vector>

#include "platform/models/controls/items.h"

namespace lorv {

// Where lists and combo boxes in memory keep their items, as Items (platform/models/controls/items.h) asks
// for it: each with its text, the caller's number and whether it is selected. Indices are those of items that
// are there.
class HeadlessItemStore {
 public:
  int Count() const { return static_cast<int>(items_.size()); }
  const CString& Text(int index) const { return At(index).text; }
  void Put(int index, const CString& text) { items_.insert(items_.begin() + index, {text, 0, false}); }
  void Remove(int index) { items_.erase(items_.begin() + index); }
  void Clear() { items_.clear(); }
  LPARAM Data(int index) const { return At(index).data; }
  void SetData(int index, LPARAM data) { At(index).data = data; }
  bool IsSelected(int index) const { return At(index).selected; }
  void SetSelected(int index, bool on) { At(index).selected = on; }

 private:
  struct Item {
    CString text;
    LPARAM data = 0;
    bool selected = false;
  };

  Item& At(int index) { return items_[static_cast<std::size_t>(index)]; }
  const Item& At(int index) const { return items_[static_cast<std::size_t>(index)]; }

  std::vector<Item> items_;
};

using HeadlessItems = Items<HeadlessItemStore>;

}  // namespace lorv
