#include <algorithm>

#include "comm/AdLorvComm.h"
#include "comm/list_access.h"

// Lists of texts: parted, joined, searched, for both list classes of the interface by one template each. A
// text given may be an element of the list that is changed, so whatever is still needed then is copied before
// the list is touched.

namespace {

using lorv::CountOf;
using lorv::ElementOf;
using lorv::TextView;

// Stands for a separator while a joined text is trimmed at its ends.
constexpr LPCTSTR kSeparatorMark = _T("#$%&#");
constexpr LPCTSTR kTrimmedWithMark = _T("#$%&");

// Writes into an element that may have storage from before.
void Store(CString& element, TextView text) {
  element.Empty();
  element.Append(text);
}

template <class List>
int Parse(const CString& text, List& list, TCHAR separator) {
  if (text.IsEmpty()) return 0;
  if (lorv::IsElement(list, text)) return Parse(CString(text), list, separator);
  const TextView view = text.View();
  const auto separators = std::count(view.begin(), view.end(), separator);
  // Counted first: the elements are written into storage that a list filled before still has.
  const int count = static_cast<int>(separators) + (view.back() == separator ? 0 : 1);
  lorv::Resize(list, count);
  std::size_t start = 0;
  for (int i = 0; i < count; ++i) {
    const std::size_t end = std::min(view.find(separator, start), view.size());
    Store(ElementOf(list, i), view.substr(start, end - start));
    start = end + 1;
  }
  return count;
}

// Calls `take` for every piece that is not empty.
template <class Take>
void WalkPieces(TextView text, TextView separator, Take take) {
  std::size_t start = 0;
  while (start < text.size()) {
    const std::size_t end = std::min(text.find(separator, start), text.size());
    if (end > start) take(text.substr(start, end - start));
    start = end + separator.size();
  }
}

template <class List>
int Divide(const CString& text, const CString& separator, List& list) {
  // A separator of one unit keeps empty pieces and replaces the list; longer ones leave them out and append.
  if (separator.GetLength() == 1) return Parse(text, list, separator[0]);
  if (text.IsEmpty()) return 0;
  if (lorv::IsElement(list, text) || lorv::IsElement(list, separator)) {
    return Divide(CString(text), CString(separator), list);
  }
  const int before = CountOf(list);
  if (separator.IsEmpty()) {
    lorv::Resize(list, before + 1);
    Store(ElementOf(list, before), text.View());
    return 1;
  }
  int count = 0;
  WalkPieces(text.View(), separator.View(), [&](TextView) { ++count; });
  lorv::Resize(list, before + count);
  int next = before;
  WalkPieces(text.View(), separator.View(), [&](TextView piece) { Store(ElementOf(list, next++), piece); });
  return count;
}

template <class List>
int Connect(CString& text, const CString& separator, const List& list) {
  CString joined;
  for (int i = 0; i < CountOf(list); ++i) {
    CString element = ElementOf(list, i);
    joined += element.Trim();
    joined += separator;
  }
  text = std::move(joined);
  return CountOf(list);
}

template <class List>
bool Assemble(CString& text, LPCTSTR separator, const List& list) {
  const CString between(separator);
  CString joined;
  for (int i = 0; i < CountOf(list); ++i) {
    joined += between;
    joined += ElementOf(list, i);
  }
  // Separators at both ends go, however many; so do the mark's own characters there, which callers know.
  joined.Replace(between, kSeparatorMark);
  joined.Trim(kTrimmedWithMark);
  joined.Replace(kSeparatorMark, between);
  text = std::move(joined);
  return true;
}

template <class List>
bool Find(const CString& text, const List& list, int& index, bool case_sensitive) {
  index = -1;
  for (int i = 0; i < CountOf(list); ++i) {
    const CString& element = ElementOf(list, i);
    if ((case_sensitive ? element.Compare(text) : element.CompareNoCase(text)) != 0) continue;
    index = i;
    return true;
  }
  return false;
}

template <class List>
bool Modify(const CString& text, List& list, bool remove_found, bool add_missing, bool case_sensitive) {
  int index = -1;
  const bool found = Find(text, list, index, case_sensitive);
  if (found && remove_found) lorv::RemoveElement(list, index);
  if (!found && add_missing) list.Add(text);
  return found;
}

}  // namespace

int CAdLorvComm::ParseStringToArray(const CString& text, CStringArray& list, TCHAR separator) {
  return Parse(text, list, separator);
}

int CAdLorvComm::ParseStringToArray(const CString& text, TextList& list, TCHAR separator) {
  return Parse(text, list, separator);
}

int CAdLorvComm::DivideString(const CString& text, const CString& separator, CStringArray& list) {
  return Divide(text, separator, list);
}

int CAdLorvComm::DivideString(const CString& text, const CString& separator, TextList& list) {
  return Divide(text, separator, list);
}

int CAdLorvComm::ConnectString(CString& text, const CString& separator, const CStringArray& list) {
  return Connect(text, separator, list);
}

int CAdLorvComm::ConnectString(CString& text, const CString& separator, const TextList& list) {
  return Connect(text, separator, list);
}

bool CAdLorvComm::AssembleStringArr(CString& text, LPCTSTR separator, const CStringArray& list) {
  return Assemble(text, separator, list);
}

bool CAdLorvComm::AssembleStringArr(CString& text, LPCTSTR separator, const TextList& list) {
  return Assemble(text, separator, list);
}

CString CAdLorvComm::GetFirstDiviedString(const CString& text, const CString& separator) {
  CStringArray pieces;
  return DivideString(text, separator, pieces) == 0 ? CString() : pieces.GetAt(0);
}

int CAdLorvComm::ReplaceStringInArr(const CString& new_text, const CString& old_text, CStringArray& list,
                                    int first) {
  // Copies, as either may be an element that the loop changes.
  const CString fresh(new_text.View());
  const CString old(old_text.View());
  int changed = 0;
  for (int i = std::max(first, 0); i < list.GetSize(); ++i) {
    if (list.GetAt(i) != old) continue;
    list.SetAt(i, fresh);
    ++changed;
  }
  return changed;
}

bool CAdLorvComm::IsStringInArray(const CString& text, const CStringArray& list, int& index,
                                  bool case_sensitive) {
  return Find(text, list, index, case_sensitive);
}

bool CAdLorvComm::IsStringInArray(const CString& text, const TextList& list, int& index,
                                  bool case_sensitive) {
  return Find(text, list, index, case_sensitive);
}

bool CAdLorvComm::ModifyIsStringInArray(const CString& text, CStringArray& list, bool remove_found,
                                        bool add_missing, bool case_sensitive) {
  return Modify(text, list, remove_found, add_missing, case_sensitive);
}

bool CAdLorvComm::ModifyIsStringInArray(const CString& text, TextList& list, bool remove_found,
                                        bool add_missing, bool case_sensitive) {
  return Modify(text, list, remove_found, add_missing, case_sensitive);
}

void CAdLorvComm::ReverseStrArray(CStringArray& list) {
  std::reverse(list.begin(), list.end());
}
