#pragma once

#include "framework/cstring.h"
#include "framework/window_types.h"

class QAbstractItemModel;

namespace lorv {

// The items of a list or drop-down list, kept in the widget's own model. Answers are those of the LB_ and CB_
// messages, -1 for what is not there. Texts compare without regard to the case of letters.
class QtItems {
 public:
  QtItems(QAbstractItemModel& model, bool sorted) : model_(model), sorted_(sorted) {}

  int Count() const;
  bool Has(int index) const { return index >= 0 && index < Count(); }
  CString Text(int index) const;
  int Add(LPCTSTR text);
  int Insert(int index, LPCTSTR text);  // -1: at the end
  int Delete(int index);
  void Clear();
  // From behind `after` around to it; `whole`: equal, else beginning with it.
  int Find(int after, LPCTSTR text, bool whole) const;
  LRESULT Length(int index) const;
  LRESULT Copy(int index, LPTSTR target) const;
  LRESULT Data(int index) const;
  LRESULT SetData(int index, LPARAM data);

  int chosen = -1;

 private:
  int Put(int index, LPCTSTR text);

  QAbstractItemModel& model_;
  bool sorted_;
};

}  // namespace lorv
