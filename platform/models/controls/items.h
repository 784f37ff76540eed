#pragma once

#include <cstddef>
#include <optional>
#include <utility>

#include "platform/models/message_values.h"

namespace lorv {

// The numbers under which a kind of control is asked for its items.
struct ItemMessages {
  UINT add, insert, remove, clear, count, text, length, find, find_whole, data, set_data;
};
inline constexpr ItemMessages kListItems = {
    LB_ADDSTRING,  LB_INSERTSTRING, LB_DELETESTRING,    LB_RESETCONTENT, LB_GETCOUNT,   LB_GETTEXT,
    LB_GETTEXTLEN, LB_FINDSTRING,   LB_FINDSTRINGEXACT, LB_GETITEMDATA,  LB_SETITEMDATA};
inline constexpr ItemMessages kComboItems = {
    CB_ADDSTRING,    CB_INSERTSTRING, CB_DELETESTRING,    CB_RESETCONTENT, CB_GETCOUNT,   CB_GETLBTEXT,
    CB_GETLBTEXTLEN, CB_FINDSTRING,   CB_FINDSTRINGEXACT, CB_GETITEMDATA,  CB_SETITEMDATA};

// The items of a list or drop-down list: texts with a number each, and which one is chosen. Answers are those
// of the LB_ and CB_ messages, -1 for what is not there. Texts compare without regard to the case of letters.
//
// `Store` keeps them where the peer wants them: Count(), Text(i), Put(i, text), Remove(i), Clear(), Data(i)
// and SetData(i, data), all of items that are there.
template <class Store>
class Items {
 public:
  Items(bool sorted, Store store) : sorted_(sorted), store_(std::move(store)) {}

  int Count() const { return store_.Count(); }
  bool Has(int index) const { return index >= 0 && index < Count(); }
  CString Text(int index) const { return store_.Text(index); }
  Store& Kept() { return store_; }
  const Store& Kept() const { return store_; }

  int Add(LPCTSTR text) {
    int index = Count();
    if (sorted_)
      for (index = 0; index < Count() && Text(index).CompareNoCase(text) <= 0;) ++index;
    return Put(index, text);
  }
  // -1: at the end.
  int Insert(int index, LPCTSTR text) {
    if (index < -1 || index > Count()) return -1;
    return Put(index == -1 ? Count() : index, text);
  }
  int Delete(int index) {
    if (!Has(index)) return -1;
    store_.Remove(index);
    if (chosen == index)
      chosen = -1;
    else if (chosen > index)
      --chosen;
    return Count();
  }
  void Clear() {
    store_.Clear();
    chosen = -1;
  }

  // From behind `after` around to it; `whole`: equal, else beginning with it.
  int Find(int after, LPCTSTR text, bool whole) const {
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
  LRESULT Length(int index) const { return Has(index) ? Text(index).GetLength() : -1; }
  LRESULT Copy(int index, LPTSTR target) const {
    if (!Has(index) || target == nullptr) return -1;
    const CString text = Text(index);
    return CopyOut(text, target, static_cast<std::size_t>(text.GetLength()) + 1);
  }
  LRESULT Data(int index) const { return Has(index) ? store_.Data(index) : -1; }
  LRESULT SetData(int index, LPARAM data) {
    if (!Has(index)) return -1;
    store_.SetData(index, data);
    return 0;
  }

  int chosen = -1;

  // The answer to a message of those numbers, nothing for another one. After one that changes the items
  // TakeChanged is true once.
  std::optional<LRESULT> Answer(const ItemMessages& numbers, UINT message, WPARAM w, LPARAM l) {
    const int index = static_cast<int>(static_cast<LONG_PTR>(w));
    const auto text = reinterpret_cast<LPCTSTR>(l);
    if (message == numbers.count) return Count();
    if (message == numbers.text) return Copy(index, reinterpret_cast<LPTSTR>(l));
    if (message == numbers.length) return Length(index);
    if (message == numbers.find || message == numbers.find_whole)
      return Find(index, text, message == numbers.find_whole);
    if (message == numbers.data) return Data(index);
    if (message == numbers.set_data) return SetData(index, l);
    if (message == numbers.add) return Changed(Add(text));
    if (message == numbers.insert) return Changed(Insert(index, text));
    if (message == numbers.remove) return Changed(Delete(index));
    if (message != numbers.clear) return std::nullopt;
    Clear();
    return Changed(0);
  }
  bool TakeChanged() { return std::exchange(changed_, false); }

 private:
  LRESULT Changed(int answer) {
    changed_ = true;
    return answer;
  }

  int Put(int index, LPCTSTR text) {
    store_.Put(index, CString(text));
    if (chosen >= index) ++chosen;
    return index;
  }

  bool sorted_;
  bool changed_ = false;
  Store store_;
};

}  // namespace lorv
