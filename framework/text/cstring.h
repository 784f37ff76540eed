#pragma once

#include <compare>
#include <concepts>
#include <string>
#include <string_view>
#include <utility>

#include "framework/native/export.h"
#include "framework/native/native_types.h"
#include "framework/text/format.h"
#include "framework/text/text_compare.h"
#include "framework/text/utf8.h"

// A text of 16-bit units held by value, with the operations and names of the application framework.
//
// Units: positions and lengths count 16-bit units, from 0. "Not found" is -1.
// Edges: a null pointer counts as the empty text. Counts and positions outside the text are brought to
//   its ends, except where a line below says otherwise. Letter case folds for A to Z only.
// Result: no operation fails but for lack of memory (std::bad_alloc).
// A pointer handed out (GetString, the conversion, GetBuffer) is valid until the text is next changed. An
// object belongs to one thread at a time; separate objects are independent.
//
//   CString s(_T(" KL12 "));  s.Trim();  s.Left(2)  gives _T("KL")
class COMM_LORV_API CString {
 public:
  CString() = default;
  CString(LPCTSTR text) : text_(text == nullptr ? _T("") : text) {}   // NOLINT(google-explicit-constructor)
  CString(lorv::TextView text) : text_(text) {}                       // NOLINT(google-explicit-constructor)
  CString(std::basic_string<TCHAR> text) : text_(std::move(text)) {}  // NOLINT(google-explicit-constructor)
  CString(LPCTSTR text, int length);
  explicit CString(TCHAR c, int count = 1);

  // Text from and to UTF-8; see framework/text/utf8.h for what becomes of broken bytes.
  static CString FromUtf8(std::string_view bytes) { return CString(lorv::Utf8ToText(bytes)); }
  std::string ToUtf8() const { return lorv::TextToUtf8(text_); }

  CString& operator=(LPCTSTR text);
  CString& operator=(TCHAR c);

  int GetLength() const { return static_cast<int>(text_.size()); }
  bool IsEmpty() const { return text_.empty(); }
  void Empty() { text_.clear(); }
  void SetString(LPCTSTR text) { *this = text; }
  void SetString(LPCTSTR text, int length) { *this = CString(text, length); }
  // Cuts the text to the length; a longer one changes nothing.
  void Truncate(int length);
  // Reserves room in advance; the text does not change.
  void Preallocate(int length);
  LPCTSTR GetString() const { return text_.c_str(); }
  operator LPCTSTR() const { return text_.c_str(); }  // NOLINT(google-explicit-constructor)
  lorv::TextView View() const { return text_; }

  // The unit at a position; 0 outside the text (the position of the terminator included).
  TCHAR GetAt(int index) const;
  TCHAR operator[](int index) const { return GetAt(index); }
  // Does nothing outside the text.
  void SetAt(int index, TCHAR c);

  // Room for at least `length` units and a terminator, to be written by the caller and closed by
  // ReleaseBuffer; -1 there means "up to the terminator". In between the text is as long as its room.
  LPTSTR GetBuffer(int length = 0);
  LPTSTR GetBufferSetLength(int length);
  void ReleaseBuffer(int length = -1);
  // A copy for automation, the caller's to free with SysFreeString; null where memory is lacking.
  BSTR AllocSysString() const;

  CString& operator+=(const CString& other) { return Append(other.View()); }
  CString& operator+=(LPCTSTR text) { return Append(text); }
  CString& operator+=(TCHAR c) { return AppendChar(c); }
  CString& Append(LPCTSTR text);
  // Exactly a CString, its zero units included: texts of other types keep to the forms around.
  template <std::same_as<CString> Text>
  CString& Append(const Text& text) {
    return Append(text.View());
  }
  CString& Append(lorv::TextView text);
  CString& Append(LPCTSTR text, int length);
  CString& AppendChar(TCHAR c);

  CString Left(int count) const;
  CString Right(int count) const;
  CString Mid(int first) const;
  CString Mid(int first, int count) const;
  // The longest beginning made of units of `set`, and of units not in it.
  CString SpanIncluding(LPCTSTR set) const;
  CString SpanExcluding(LPCTSTR set) const;
  // The next piece between separators of `set`, from `start` on; empty pieces are passed over. At the end
  // the result is empty and `start` is -1.
  CString Tokenize(LPCTSTR set, int& start) const;

  int Find(TCHAR c, int start = 0) const;
  // The empty text is found wherever the search starts, up to the end.
  int Find(LPCTSTR text, int start = 0) const;
  int FindOneOf(LPCTSTR set) const;
  int ReverseFind(TCHAR c) const;

  // Of the texts up to their first zero unit; the operators below compare whole texts.
  int Compare(LPCTSTR other) const;
  int CompareNoCase(LPCTSTR other) const;

  CString& MakeUpper();
  CString& MakeLower();
  CString& MakeReverse();

  // Without arguments: blanks, tabs and line ends at the end or ends named.
  CString& Trim() { return TrimRight().TrimLeft(); }
  CString& Trim(TCHAR c) { return TrimRight(c).TrimLeft(c); }
  CString& Trim(LPCTSTR set) { return TrimRight(set).TrimLeft(set); }
  CString& TrimLeft();
  CString& TrimLeft(TCHAR c);
  CString& TrimLeft(LPCTSTR set);
  CString& TrimRight();
  CString& TrimRight(TCHAR c);
  CString& TrimRight(LPCTSTR set);

  // The number of places changed; an empty `old` changes nothing. What is put in is not searched again.
  int Replace(TCHAR old, TCHAR fresh);
  int Replace(LPCTSTR old, LPCTSTR fresh);
  int Remove(TCHAR c);
  // The length afterwards. A position behind the end appends; a negative one inserts at the front.
  int Insert(int index, TCHAR c);
  int Insert(int index, LPCTSTR text);
  int Delete(int index, int count = 1);

  // printf's formats; see framework/text/format.h. Arguments carry their own types: a wrong letter cannot
  // read wrong memory, and a CString may stand where a text is wanted.
  template <class... Args>
  void Format(LPCTSTR format, const Args&... args) {
    text_ = lorv::FormatText(format, {lorv::FormatArg(args)...});
  }
  template <class... Args>
  void AppendFormat(LPCTSTR format, const Args&... args) {
    text_ += lorv::FormatText(format, {lorv::FormatArg(args)...});
  }

  friend CString operator+(const CString& a, const CString& b) { return Joined(a.View(), b.View()); }
  friend CString operator+(const CString& a, LPCTSTR b) { return Joined(a.View(), ViewOf(b)); }
  friend CString operator+(LPCTSTR a, const CString& b) { return Joined(ViewOf(a), b.View()); }
  friend CString operator+(const CString& a, TCHAR b) { return Joined(a.View(), {&b, 1}); }
  friend CString operator+(TCHAR a, const CString& b) { return Joined({&a, 1}, b.View()); }

  friend bool operator==(const CString& a, const CString& b) { return a.text_ == b.text_; }
  friend bool operator==(const CString& a, LPCTSTR b) { return a.View() == ViewOf(b); }
  friend std::strong_ordering operator<=>(const CString& a, const CString& b) {
    return lorv::CompareExact(a.View(), b.View()) <=> 0;
  }
  friend std::strong_ordering operator<=>(const CString& a, LPCTSTR b) {
    return lorv::CompareExact(a.View(), ViewOf(b)) <=> 0;
  }

 private:
  static lorv::TextView ViewOf(LPCTSTR text) { return text == nullptr ? lorv::TextView() : text; }
  static CString Joined(lorv::TextView a, lorv::TextView b);

  std::basic_string<TCHAR> text_;
};

namespace lorv {

inline FormatArg::FormatArg(const CString& text) : FormatArg(text.View()) {}

}  // namespace lorv
