#pragma once

#include "platform/models/controls/items.h"

class QAbstractItemModel;

namespace lorv {

// Items in the widget's own model.
class QtItemStore {
 public:
  explicit QtItemStore(QAbstractItemModel& model) : model_(model) {}

  int Count() const;
  CString Text(int index) const;
  void Put(int index, const CString& text);
  void Remove(int index);
  void Clear();
  LPARAM Data(int index) const;
  void SetData(int index, LPARAM data);

 private:
  QAbstractItemModel& model_;
};

using QtItems = Items<QtItemStore>;

}  // namespace lorv
