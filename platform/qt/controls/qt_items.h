#pragma once

#include "platform/models/controls/items.h"

class QAbstractItemModel;

namespace lorv {

// Where lists and combo boxes of Qt keep their items, as Items (platform/models/controls/items.h) asks for
// it: in the widget's own model, the caller's number as user data. The model is the widget's and must live as
// long.
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
