#include <set>

#include "comm/AdLorvComm.h"
#include "framework/text/number_text.h"

// Which names users may give, and new names from old ones. The rules are those of stored projects, odd cases
// included.

namespace {

// What a name may not hold, and what is taken out when it does. A blank is only noticed; its row takes out
// the quotes, and users' files rely on blanks that stay.
constexpr struct {
  TCHAR found;
  TCHAR removed;
} kCleaning[] = {
    {'\\', '\\'}, {' ', '\''}, {'\'', '\''}, {'"', '"'}, {'%', '%'}, {'/', '/'},
};

bool SameHead(const CString& head, LPCTSTR other) {
  return head.CompareNoCase(other) == 0;
}

// The number that a name's end stands for; none where it is no number at all.
void AddUsedNumber(CString end_number, std::set<int>& used) {
  // All zeros, or no digits at all: both are the number 0.
  if (end_number.SpanIncluding(_T("0")) == end_number) {
    used.insert(0);
  } else if (CAdLorvComm::isValidNumberStr(end_number)) {
    used.insert(_wtoi(end_number));
  }
}

std::set<int> UsedNumbers(LPCTSTR head, const CStringArray& names) {
  std::set<int> used;
  for (const CString& name : names) {
    CString name_head;
    CString end_number;
    const bool parted = CAdLorvComm::DivideBHByEndNumber(name, name_head, end_number);
    if (parted && SameHead(name_head, head)) AddUsedNumber(end_number, used);
  }
  return used;
}

// The first number behind the run of used ones that begins at 1, or below it.
int FreeNumber(const std::set<int>& used) {
  // Asked only where some number is used.
  int candidate = *used.begin() < 2 ? *used.begin() : 1;
  for (const int number : used) {
    if (number != candidate) break;
    ++candidate;
  }
  return candidate;
}

}  // namespace

CAdLorvComm::emStrError CAdLorvComm::IsValidStr(LPCTSTR text, int limit, bool blanks_allowed) {
  if (text == nullptr) return emStrValid;
  const lorv::TextView units(text);
  // The limit is a buffer's, terminator included.
  if (limit <= 0 || units.size() >= static_cast<std::size_t>(limit)) return emStrTooLong;
  for (const TCHAR c : units) {
    if (c == '\'' || c == '\\' || c == '"' || c == '%') return emStrIllegalChar;
    if (c == ' ' && !blanks_allowed) return emStrHasBlank;
  }
  return emStrValid;
}

LPCTSTR CAdLorvComm::GetErrorInfo(emStrError error) {
  switch (error) {
    case emStrValid:
      return _T("正确表达式");
    case emStrIllegalChar:
      return _T("包含非法字符");
    case emStrTooLong:
      return _T("表达式太长");
    case emStrHasBlank:
      return _T("包含空格");
  }
  return _T("");
}

bool CAdLorvComm::RemoveInvaildChar(CString& text) {
  bool found = false;
  for (const auto& row : kCleaning) {
    if (text.Find(row.found) < 0) continue;
    found = true;
    text.Remove(row.removed);
  }
  return found;
}

bool CAdLorvComm::GetValidNewNamebyHead(LPCTSTR head, const CStringArray& names, CString& result,
                                        bool always_number) {
  const CString kept_head(head);
  const std::set<int> used = UsedNumbers(kept_head, names);
  if (!used.empty()) {
    result.Format(_T("%s%d"), kept_head, FreeNumber(used));
  } else if (always_number) {
    result.Format(_T("%s%d"), kept_head, 1);
  } else {
    result = kept_head;
  }
  return true;
}

bool CAdLorvComm::LessTStringByLenth(const CString& a, const CString& b) {
  // No order in the strict sense: of two texts each may come before the other. It must not be given to a sort
  // that asks for a strict order.
  return a.GetLength() > b.GetLength() || a.Compare(b) > 0;
}

bool CAdLorvComm::MoreTStringByLenth(const CString& a, const CString& b) {
  return !LessTStringByLenth(a, b);
}
