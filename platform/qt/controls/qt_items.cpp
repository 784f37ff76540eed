#include "platform/qt/controls/qt_items.h"

#include <QAbstractItemModel>

#include "platform/qt/desktop/qt_text.h"

// Where lists and combo boxes keep their items: the widget's own model, so that there is one list of texts
// and nothing to bring into line. The number of an item stands beside its text as user data.

namespace lorv {

int QtItemStore::Count() const {
  return model_.rowCount();
}

CString QtItemStore::Text(int index) const {
  return FromQt(model_.index(index, 0).data(Qt::DisplayRole).toString());
}

void QtItemStore::Put(int index, const CString& text) {
  // Two steps: the widgets' models take no text with a row.
  model_.insertRow(index);
  model_.setData(model_.index(index, 0), ToQt(text.View()), Qt::DisplayRole);
}

void QtItemStore::Remove(int index) {
  model_.removeRow(index);
}

void QtItemStore::Clear() {
  model_.removeRows(0, Count());
}

LPARAM QtItemStore::Data(int index) const {
  return static_cast<LPARAM>(model_.index(index, 0).data(Qt::UserRole).toLongLong());
}

void QtItemStore::SetData(int index, LPARAM data) {
  model_.setData(model_.index(index, 0), static_cast<qlonglong>(data), Qt::UserRole);
}

}  // namespace lorv
