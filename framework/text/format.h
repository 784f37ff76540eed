#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <type_traits>

#include "framework/native/export.h"
#include "framework/text/text_compare.h"

class CString;

// Text from a printf format and arguments that know their types.
//
// Formats: flags "-+ #0", width and precision as numbers or "*", length words (h, l, ll, I64, z ...) that are
//   read and ignored, conversions d i u x X o c s S p f F e E g G and "%%".
// Units: width and precision of texts count 16-bit units.
// Edges: a missing argument prints nothing; an argument of another kind than its letter is converted if it
//   is a number and printed as it is otherwise; an unknown letter stands in the result as written. A null
//   text prints "(null)". Widths and precisions above kMaxFormatWidth are cut to it.
// Result: the whole text. Numbers print alike on every system and in every locale.
// No shared state: any thread.
//
//   FormatText(_T("%d%s"), {3, _T("m")})  gives _T("3m")
namespace lorv {

constexpr int kMaxFormatWidth = 4096;

class FormatArg {
 public:
  enum class Kind { kSigned, kUnsigned, kReal, kText, kPointer };

  template <class T>
  requires std::is_integral_v<T> FormatArg(T value)  // NOLINT(google-explicit-constructor)
      : kind_(std::is_signed_v<T> ? Kind::kSigned : Kind::kUnsigned),
        integer_(static_cast<std::uint64_t>(static_cast<std::int64_t>(value))),
        size_(static_cast<int>(sizeof(T))) {}
  template <class T>
  requires std::is_enum_v<T> FormatArg(T value)
      : FormatArg(static_cast<std::underlying_type_t<T>>(value)) {}  // NOLINT
  FormatArg(double value) : kind_(Kind::kReal), real_(value) {}      // NOLINT
  FormatArg(LPCTSTR text)                                            // NOLINT
      : kind_(Kind::kText), text_(text == nullptr ? TextView(_T("(null)")) : TextView(text)) {}
  FormatArg(LPTSTR text) : FormatArg(static_cast<LPCTSTR>(text)) {}  // NOLINT
  FormatArg(TextView text) : kind_(Kind::kText), text_(text) {}      // NOLINT
  FormatArg(const CString& text);                                    // NOLINT
  FormatArg(const void* pointer)                                     // NOLINT
      : kind_(Kind::kPointer), integer_(reinterpret_cast<std::uintptr_t>(pointer)), size_(8) {}

  Kind GetKind() const { return kind_; }
  std::int64_t AsSigned() const;
  // Two's complement as "%u" and "%x" show it: 32 bits for arguments of up to 32, else 64.
  std::uint64_t AsUnsigned() const;
  double AsReal() const;
  TextView AsText() const { return text_; }

 private:
  Kind kind_;
  std::uint64_t integer_ = 0;
  double real_ = 0;
  int size_ = 8;
  TextView text_;
};

COMM_LORV_API std::basic_string<TCHAR> FormatText(LPCTSTR format, std::initializer_list<FormatArg> args);

}  // namespace lorv
