#include "platform/qt/qt_items.h"

#include <QAbstractItemModel>

#include "platform/qt/qt_text.h"

namespace lorv {

int QtItems::Count() const {
  return model_.rowCount();
}

CString QtItems::Text(int index) const {
  return FromQt(model_.index(index, 0).data(Qt::DisplayRole).toString());
}

int QtItems::Put(int index, LPCTSTR text) {
  const int former = chosen;
  model_.insertRow(index);
  model_.setData(model_.index(index, 0), ToQt(CString(text).View()), Qt::DisplayRole);
  chosen = former >= index ? former + 1 : former;
  return index;
}

int QtItems::Add(LPCTSTR text) {
  int index = Count();
  if (sorted_)
    for (index = 0; index < Count() && Text(index).CompareNoCase(text) <= 0;) ++index;
  return Put(index, text);
}

int QtItems::Insert(int index, LPCTSTR text) {
  if (index < -1 || index > Count()) return -1;
  return Put(index == -1 ? Count() : index, text);
}

int QtItems::Delete(int index) {
  if (!Has(index)) return -1;
  const int former = chosen;
  model_.removeRow(index);
  chosen = former > index ? former - 1 : former;
  if (former == index) chosen = -1;
  return Count();
}

void QtItems::Clear() {
  model_.removeRows(0, Count());
  chosen = -1;
}

int QtItems::Find(int after, LPCTSTR text, bool whole) const {
  const CString wanted(text);
  const int count = Count();
  const int start = Has(after) ? after + 1 : 0;
  for (int i = 0; i < count; ++i) {
    const int index = (start + i) % count;
    const CString known = Text(index);
    if ((whole ? known : known.Left(wanted.GetLength())).CompareNoCase(wanted) == 0) return index;
  }
  return -1;
}

LRESULT QtItems::Length(int index) const {
  return Has(index) ? Text(index).GetLength() : -1;
}

LRESULT QtItems::Copy(int index, LPTSTR target) const {
  if (!Has(index) || target == nullptr) return -1;
  const CString text = Text(index);
  return CopyOut(text, target, static_cast<std::size_t>(text.GetLength()) + 1);
}

LRESULT QtItems::Data(int index) const {
  return Has(index) ? static_cast<LRESULT>(model_.index(index, 0).data(Qt::UserRole).toLongLong()) : -1;
}

LRESULT QtItems::SetData(int index, LPARAM data) {
  if (!Has(index)) return -1;
  model_.setData(model_.index(index, 0), static_cast<qlonglong>(data), Qt::UserRole);
  return 0;
}

}  // namespace lorv
