#include "framework/text/cstring.h"

#include <algorithm>

#include "framework/text/char_class.h"

// The framework's text class over a standard string of 16-bit units. Negative positions and counts are taken
// as 0 and those behind the end as the end, wherever the framework would assert; null pointers are empty
// texts. Searching and cutting see units, so a surrogate pair counts two.

namespace {

using lorv::TextView;

constexpr auto kNone = TextView::npos;

std::size_t Count(int value) {
  return value < 0 ? 0 : static_cast<std::size_t>(value);
}

int Position(std::size_t found) {
  return found == kNone ? -1 : static_cast<int>(found);
}

// The interface takes null pointers for empty texts everywhere.
TextView Safe(LPCTSTR text) {
  return text == nullptr ? TextView() : TextView(text);
}

bool Holds(TextView set, TCHAR c) {
  return set.find(c) != kNone;
}

template <class Test>
std::size_t FirstWhere(TextView text, Test test) {
  return static_cast<std::size_t>(std::find_if(text.begin(), text.end(), test) - text.begin());
}

template <class Test>
void DropLeft(std::basic_string<TCHAR>& text, Test test) {
  text.erase(0, FirstWhere(text, [&](TCHAR c) { return !test(c); }));
}

template <class Test>
void DropRight(std::basic_string<TCHAR>& text, Test test) {
  while (!text.empty() && test(text.back())) text.pop_back();
}

}  // namespace

CString::CString(LPCTSTR text, int length) {
  if (text != nullptr) text_.assign(text, Count(length));
}

CString::CString(TCHAR c, int count) : text_(Count(count), c) {}

CString& CString::operator=(LPCTSTR text) {
  // By a copy, as the argument may point into this very text.
  text_ = std::basic_string<TCHAR>(Safe(text));
  return *this;
}

void CString::Truncate(int length) {
  if (Count(length) < text_.size()) text_.resize(Count(length));
}

void CString::Preallocate(int length) {
  text_.reserve(Count(length));
}

BSTR CString::AllocSysString() const {
  return SysAllocStringLen(text_.data(), static_cast<UINT>(text_.size()));
}

CString& CString::operator=(TCHAR c) {
  text_.assign(1, c);
  return *this;
}

// Outside the text the framework is undefined; callers walk to the terminator, so 0 it is.
TCHAR CString::GetAt(int index) const {
  return index >= 0 && index < GetLength() ? text_[static_cast<std::size_t>(index)] : TCHAR{0};
}

void CString::SetAt(int index, TCHAR c) {
  if (index >= 0 && index < GetLength()) text_[static_cast<std::size_t>(index)] = c;
}

LPTSTR CString::GetBuffer(int length) {
  if (length > GetLength()) {
    // The old text stays readable up to its own terminator, as a caller of the framework expects.
    text_.resize(Count(length), TCHAR{0});
  }
  return text_.data();
}

LPTSTR CString::GetBufferSetLength(int length) {
  text_.resize(Count(length), TCHAR{0});
  return text_.data();
}

void CString::ReleaseBuffer(int length) {
  // Below 0 the caller has written a text that ends with a zero unit, and its length is counted.
  text_.resize(length < 0 ? lorv::TextLength(text_.c_str()) : Count(length), TCHAR{0});
}

CString& CString::Append(LPCTSTR text) {
  return Append(Safe(text));
}

CString& CString::Append(TextView text) {
  text_.append(text);
  return *this;
}

CString& CString::Append(LPCTSTR text, int length) {
  return Append(text == nullptr ? TextView() : TextView(text, Count(length)));
}

CString& CString::AppendChar(TCHAR c) {
  text_.push_back(c);
  return *this;
}

CString CString::Left(int count) const {
  return CString(View().substr(0, Count(count)));
}

CString CString::Right(int count) const {
  return CString(View().substr(text_.size() - std::min(Count(count), text_.size())));
}

CString CString::Mid(int first) const {
  return Mid(first, GetLength());
}

CString CString::Mid(int first, int count) const {
  // A standard text throws for a place behind its end.
  return CString(View().substr(std::min(Count(first), text_.size()), Count(count)));
}

CString CString::SpanIncluding(LPCTSTR set) const {
  const TextView units = Safe(set);
  return CString(View().substr(0, FirstWhere(text_, [&](TCHAR c) { return !Holds(units, c); })));
}

CString CString::SpanExcluding(LPCTSTR set) const {
  const TextView units = Safe(set);
  return CString(View().substr(0, FirstWhere(text_, [&](TCHAR c) { return Holds(units, c); })));
}

CString CString::Tokenize(LPCTSTR set, int& start) const {
  const TextView units = Safe(set);
  const std::size_t first = start < 0 ? kNone : View().find_first_not_of(units, Count(start));
  // -1 marks the end, and a call with it gives the end again.
  if (first == kNone) {
    start = -1;
    return {};
  }
  const std::size_t end = std::min(View().find_first_of(units, first), text_.size());
  // Behind the separator; at the end of the text the next call finds nothing and gives -1.
  start = static_cast<int>(std::min(end + 1, text_.size()));
  return CString(View().substr(first, end - first));
}

int CString::Find(TCHAR c, int start) const {
  return Position(text_.find(c, Count(start)));
}

int CString::Find(LPCTSTR text, int start) const {
  return Position(View().find(Safe(text), Count(start)));
}

int CString::FindOneOf(LPCTSTR set) const {
  return Position(View().find_first_of(Safe(set)));
}

int CString::ReverseFind(TCHAR c) const {
  return Position(text_.rfind(c));
}

int CString::Compare(LPCTSTR other) const {
  return lorv::CompareExact(text_.c_str(), other == nullptr ? _T("") : other);
}

int CString::CompareNoCase(LPCTSTR other) const {
  return lorv::CompareWithoutCase(text_.c_str(), other == nullptr ? _T("") : other);
}

CString& CString::MakeUpper() {
  std::transform(text_.begin(), text_.end(), text_.begin(), lorv::ToUpper);
  return *this;
}

CString& CString::MakeLower() {
  std::transform(text_.begin(), text_.end(), text_.begin(), lorv::ToLower);
  return *this;
}

CString& CString::MakeReverse() {
  std::reverse(text_.begin(), text_.end());
  return *this;
}

CString& CString::TrimLeft() {
  DropLeft(text_, lorv::IsBlank);
  return *this;
}

CString& CString::TrimLeft(TCHAR c) {
  DropLeft(text_, [c](TCHAR unit) { return unit == c; });
  return *this;
}

CString& CString::TrimLeft(LPCTSTR set) {
  DropLeft(text_, [units = Safe(set)](TCHAR unit) { return Holds(units, unit); });
  return *this;
}

CString& CString::TrimRight() {
  DropRight(text_, lorv::IsBlank);
  return *this;
}

CString& CString::TrimRight(TCHAR c) {
  DropRight(text_, [c](TCHAR unit) { return unit == c; });
  return *this;
}

CString& CString::TrimRight(LPCTSTR set) {
  DropRight(text_, [units = Safe(set)](TCHAR unit) { return Holds(units, unit); });
  return *this;
}

int CString::Replace(TCHAR old, TCHAR fresh) {
  // Nothing changes, so nothing is counted.
  if (old == fresh) return 0;
  const auto count = std::count(text_.begin(), text_.end(), old);
  std::replace(text_.begin(), text_.end(), old, fresh);
  return static_cast<int>(count);
}

int CString::Replace(LPCTSTR old, LPCTSTR fresh) {
  const TextView from = Safe(old);
  const TextView to = Safe(fresh);
  if (from.empty()) return 0;
  std::basic_string<TCHAR> out;
  int count = 0;
  std::size_t at = 0;
  for (std::size_t hit = View().find(from); hit != kNone; hit = View().find(from, at), ++count) {
    out.append(text_, at, hit - at).append(to);
    at = hit + from.size();
  }
  if (count != 0) text_ = out.append(text_, at);
  return count;
}

int CString::Remove(TCHAR c) {
  return static_cast<int>(std::erase(text_, c));
}

int CString::Insert(int index, TCHAR c) {
  text_.insert(std::min(Count(index), text_.size()), 1, c);
  return GetLength();
}

int CString::Insert(int index, LPCTSTR text) {
  // By a copy, as the text may be part of this one.
  text_.insert(std::min(Count(index), text_.size()), std::basic_string<TCHAR>(Safe(text)));
  return GetLength();
}

int CString::Delete(int index, int count) {
  const std::size_t first = Count(index);
  if (first < text_.size()) text_.erase(first, Count(count));
  return GetLength();
}

CString CString::Joined(TextView a, TextView b) {
  CString out;
  out.text_.reserve(a.size() + b.size());
  out.text_.append(a).append(b);
  return out;
}
