#include "platform/headless/headless_items.h"

#include <algorithm>

namespace lorv {

int HeadlessItems::Put(int index, LPCTSTR text) {
  items_.insert(items_.begin() + index, {CString(text), 0, false});
  if (chosen >= index) ++chosen;
  return index;
}

int HeadlessItems::Add(LPCTSTR text) {
  int index = Count();
  if (sorted_)
    for (index = 0; index < Count() && At(index).text.CompareNoCase(text) <= 0;) ++index;
  return Put(index, text);
}

int HeadlessItems::Insert(int index, LPCTSTR text) {
  if (index < -1 || index > Count()) return -1;
  return Put(index == -1 ? Count() : index, text);
}

int HeadlessItems::Delete(int index) {
  if (!Has(index)) return -1;
  items_.erase(items_.begin() + index);
  if (chosen == index)
    chosen = -1;
  else if (chosen > index)
    --chosen;
  return Count();
}

void HeadlessItems::Clear() {
  items_.clear();
  chosen = -1;
}

int HeadlessItems::Find(int after, LPCTSTR text, bool whole) const {
  const CString wanted(text);
  const int count = Count();
  const int start = Has(after) ? after + 1 : 0;
  for (int i = 0; i < count; ++i) {
    const int index = (start + i) % count;
    const CString& known = At(index).text;
    if ((whole ? known : known.Left(wanted.GetLength())).CompareNoCase(wanted) == 0) return index;
  }
  return -1;
}

LRESULT HeadlessItems::Length(int index) const {
  return Has(index) ? At(index).text.GetLength() : -1;
}

LRESULT HeadlessItems::Copy(int index, LPTSTR target) const {
  if (!Has(index) || target == nullptr) return -1;
  const CString& text = At(index).text;
  std::copy_n(text.GetString(), text.GetLength() + 1, target);
  return text.GetLength();
}

}  // namespace lorv
