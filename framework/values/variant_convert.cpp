#include "framework/values/variant_convert.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <utility>

#include "framework/text/char_class.h"
#include "framework/text/number_text.h"
#include "framework/values/ole_date.h"

// Conversion between the kinds of tagged values, written once and never asked of the system but for objects
// and arrays: the system goes by the user's locale. Whole numbers go from kind to kind in 64 bits without a
// double between, which would lose digits; a target changes only when all has succeeded.

namespace lorv {
namespace {

constexpr double kMoneyScale = 10000.0;
constexpr double kTwoTo63 = 9223372036854775808.0;

// A number on its way from one kind to another: whole ones keep all 64 bits.
struct Number {
  enum class Kind { kSigned, kUnsigned, kReal };
  Kind kind = Kind::kSigned;
  std::int64_t whole = 0;  // the bits of an unsigned one
  double real = 0;

  static Number Signed(std::int64_t value) { return {Kind::kSigned, value, 0}; }
  static Number Unsigned(std::uint64_t value) {
    return {Kind::kUnsigned, static_cast<std::int64_t>(value), 0};
  }
  static Number Real(double value) { return {Kind::kReal, 0, value}; }

  double AsReal() const {
    if (kind == Kind::kReal) return real;
    return kind == Kind::kSigned ? static_cast<double>(whole)
                                 : static_cast<double>(static_cast<std::uint64_t>(whole));
  }
};

// Not by the processor's mode, which a host may have changed.
double RoundedToEven(double value) {
  const double below = std::floor(value);
  const double rest = value - below;
  if (rest < 0.5) return below;
  if (rest > 0.5) return below + 1;
  return std::fmod(below, 2.0) == 0 ? below : below + 1;
}

// Money as the nearest whole number, without the detour through a double that has too few bits.
std::int64_t WholeMoney(std::int64_t tenthousandths) {
  const std::int64_t whole = tenthousandths / 10000;
  const std::int64_t rest = std::abs(tenthousandths % 10000);
  const bool away = rest > 5000 || (rest == 5000 && whole % 2 != 0);
  return away ? whole + (tenthousandths < 0 ? -1 : 1) : whole;
}

TextView TextOf(const VARIANT& value) {
  return value.bstrVal == nullptr ? TextView() : TextView(value.bstrVal, SysStringLen(value.bstrVal));
}

TextView Trimmed(TextView text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

// Without the commas between the whole digits; a comma elsewhere stays and spoils the number.
std::basic_string<TCHAR> WithoutCommas(TextView text) {
  std::basic_string<TCHAR> out;
  const std::size_t point = std::min(text.find_first_of(_T(".eE")), text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool passed = text[i] == ',' && i < point && i > 0 && IsDigit(text[i - 1]);
    if (!passed) out.push_back(text[i]);
  }
  return out;
}

// The number that plain digits are. False for what is not digits alone or needs more than 64 bits.
bool WholeOfText(TextView digits, Number& number) {
  const bool negative = digits.front() == '-';
  if (negative || digits.front() == '+') digits.remove_prefix(1);
  constexpr auto kMost = std::numeric_limits<std::uint64_t>::max();
  constexpr auto kMostSigned = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
  std::uint64_t whole = 0;
  for (const TCHAR unit : digits) {
    if (!IsDigit(unit)) return false;
    const auto digit = static_cast<std::uint64_t>(unit - '0');
    if (whole > (kMost - digit) / 10) return false;
    whole = whole * 10 + digit;
  }
  if (negative && whole > kMostSigned + 1) return false;
  if (negative) {
    number = Number::Signed(static_cast<std::int64_t>(0 - whole));
  } else if (whole <= kMostSigned) {
    number = Number::Signed(static_cast<std::int64_t>(whole));
  } else {
    number = Number::Unsigned(whole);
  }
  return true;
}

HRESULT NumberOfText(TextView text, Number& number) {
  const std::basic_string<TCHAR> digits = WithoutCommas(Trimmed(text));
  std::size_t used = 0;
  const double real = ReadReal(digits, &used);
  if (used == 0 || used != digits.size()) return DISP_E_TYPEMISMATCH;
  if (!std::isfinite(real)) return DISP_E_OVERFLOW;
  // The text of every 64-bit number reads back as it was, where a double keeps only 15 digits for certain.
  if (!WholeOfText(digits, number)) number = Number::Real(real);
  return S_OK;
}

HRESULT NumberOf(const VARIANT& value, Number& number) {
  switch (value.vt) {
    case VT_EMPTY:
      number = Number::Signed(0);
      return S_OK;
    case VT_I1:
      number = Number::Signed(static_cast<signed char>(value.cVal));
      return S_OK;
    case VT_I2:
      number = Number::Signed(value.iVal);
      return S_OK;
    case VT_I4:
    case VT_INT:
      number = Number::Signed(value.lVal);
      return S_OK;
    case VT_I8:
      number = Number::Signed(value.llVal);
      return S_OK;
    case VT_UI1:
      number = Number::Unsigned(value.bVal);
      return S_OK;
    case VT_UI2:
      number = Number::Unsigned(value.uiVal);
      return S_OK;
    case VT_UI4:
    case VT_UINT:
      number = Number::Unsigned(value.ulVal);
      return S_OK;
    case VT_UI8:
      number = Number::Unsigned(value.ullVal);
      return S_OK;
    case VT_BOOL:
      number = Number::Signed(value.boolVal);
      return S_OK;
    case VT_R4:
      number = Number::Real(static_cast<double>(value.fltVal));
      return S_OK;
    case VT_R8:
    case VT_DATE:
      number = Number::Real(value.dblVal);
      return S_OK;
    case VT_CY:
      number = Number::Real(static_cast<double>(value.cyVal.int64) / kMoneyScale);
      return S_OK;
    case VT_BSTR:
      return NumberOfText(TextOf(value), number);
    default:
      return DISP_E_TYPEMISMATCH;
  }
}

template <class T>
HRESULT FitWhole(const Number& number, T& out) {
  using Limits = std::numeric_limits<T>;
  if (number.kind == Number::Kind::kReal) {
    const double rounded = RoundedToEven(number.real);
    const double behind = std::ldexp(1.0, Limits::digits);
    if (!(rounded >= static_cast<double>(Limits::min()) && rounded < behind)) return DISP_E_OVERFLOW;
    out = static_cast<T>(rounded);
    return S_OK;
  }
  const bool fits = number.kind == Number::Kind::kSigned
                        ? std::in_range<T>(number.whole)
                        : std::in_range<T>(static_cast<std::uint64_t>(number.whole));
  if (!fits) return DISP_E_OVERFLOW;
  out = static_cast<T>(number.whole);
  return S_OK;
}

HRESULT FitFloat(double value, float& out) {
  if (std::isfinite(value) && std::fabs(value) > static_cast<double>(std::numeric_limits<float>::max())) {
    return DISP_E_OVERFLOW;
  }
  out = static_cast<float>(value);
  return S_OK;
}

HRESULT FitMoney(const Number& number, CY& out) {
  constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max() / 10000;
  if (number.kind == Number::Kind::kSigned && number.whole >= -kMost && number.whole <= kMost) {
    out.int64 = number.whole * 10000;
    return S_OK;
  }
  const double scaled = RoundedToEven(number.AsReal() * kMoneyScale);
  if (!(scaled >= -kTwoTo63 && scaled < kTwoTo63)) return DISP_E_OVERFLOW;
  out.int64 = static_cast<std::int64_t>(scaled);
  return S_OK;
}

HRESULT FitDate(double value, DATE& out) {
  SYSTEMTIME unused{};
  if (!SplitOleDate(value, unused)) return DISP_E_OVERFLOW;
  out = value;
  return S_OK;
}

HRESULT PutNumber(const Number& number, VARTYPE type, VARIANT& out) {
  switch (type) {
    case VT_I1: {
      signed char small = 0;
      const HRESULT result = FitWhole(number, small);
      std::memcpy(&out.cVal, &small, 1);
      return result;
    }
    case VT_I2:
      return FitWhole(number, out.iVal);
    case VT_I4:
    case VT_INT:
      return FitWhole(number, out.lVal);
    case VT_I8:
      return FitWhole(number, out.llVal);
    case VT_UI1:
      return FitWhole(number, out.bVal);
    case VT_UI2:
      return FitWhole(number, out.uiVal);
    case VT_UI4:
    case VT_UINT:
      return FitWhole(number, out.ulVal);
    case VT_UI8:
      return FitWhole(number, out.ullVal);
    case VT_R4:
      return FitFloat(number.AsReal(), out.fltVal);
    case VT_R8:
      out.dblVal = number.AsReal();
      return S_OK;
    case VT_CY:
      return FitMoney(number, out.cyVal);
    case VT_DATE:
      return FitDate(number.AsReal(), out.date);
    case VT_BOOL:
      out.boolVal = number.AsReal() != 0 ? VARIANT_TRUE : VARIANT_FALSE;
      return S_OK;
    default:
      return DISP_E_TYPEMISMATCH;
  }
}

CString Widened(const std::string& narrow) {
  return CString(std::basic_string<TCHAR>(narrow.begin(), narrow.end()));
}

CString RealText(double value, int digits) {
  if (value == 0) return _T("0");
  if (std::isnan(value)) return std::signbit(value) ? _T("-1.#IND") : _T("1.#QNAN");
  if (std::isinf(value)) return value > 0 ? _T("1.#INF") : _T("-1.#INF");
  return Widened(RealToText(value, 'G', digits));
}

CString MoneyText(std::int64_t tenthousandths) {
  const bool negative = tenthousandths < 0;
  const auto size =
      negative ? 0 - static_cast<std::uint64_t>(tenthousandths) : static_cast<std::uint64_t>(tenthousandths);
  CString text;
  // As an unsigned number: the smallest money has no positive counterpart.
  text.Format(_T("%s%llu.%04llu"), negative ? _T("-") : _T(""), size / 10000, size % 10000);
  return text.TrimRight('0').TrimRight('.');
}

HRESULT PutText(TextView text, VARIANT& out) {
  if (text.size() > std::numeric_limits<UINT>::max()) return E_OUTOFMEMORY;
  out.bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
  return out.bstrVal == nullptr ? E_OUTOFMEMORY : S_OK;
}

HRESULT ToText(const VARIANT& source, VARIANT& out) {
  switch (source.vt) {
    case VT_EMPTY:
      return PutText(_T(""), out);
    case VT_R4:
      return PutText(RealText(static_cast<double>(source.fltVal), 7).View(), out);
    case VT_R8:
      return PutText(RealText(source.dblVal, 15).View(), out);
    case VT_CY:
      return PutText(MoneyText(source.cyVal.int64).View(), out);
    case VT_DATE:
      return PutText(OleDateToText(source.date).View(), out);
    default: {
      Number number;
      const HRESULT result = NumberOf(source, number);
      if (FAILED(result)) return result;
      CString text;
      text.Format(number.kind == Number::Kind::kSigned ? _T("%lld") : _T("%llu"), number.whole);
      return PutText(text.View(), out);
    }
  }
}

HRESULT FromText(const VARIANT& source, VARTYPE type, VARIANT& out) {
  const TextView text = Trimmed(TextOf(source));
  if (type == VT_BOOL) {
    const bool is_true = CompareWithoutCase(text, TextView(_T("true"))) == 0;
    if (is_true || CompareWithoutCase(text, TextView(_T("false"))) == 0) {
      out.boolVal = is_true ? VARIANT_TRUE : VARIANT_FALSE;
      return S_OK;
    }
  }
  // A text that is no date may still be the number of one.
  if (type == VT_DATE && TextToOleDate(text, out.date)) return S_OK;
  Number number;
  const HRESULT result = NumberOfText(text, number);
  return FAILED(result) ? result : PutNumber(number, type, out);
}

// The kinds that the conversions above know.
bool IsValueType(VARTYPE type) {
  return type != VT_NULL && type != VT_ERROR && (IsPlainType(type) || type == VT_BSTR);
}

bool IsUnsigned(VARTYPE type) {
  return (type >= VT_UI1 && type <= VT_UI4) || type == VT_UI8 || type == VT_UINT;
}

HRESULT Converted(const VARIANT& source, VARTYPE type, VARIANT& out) {
  if (type == VT_BSTR) return ToText(source, out);
  if (source.vt == VT_BSTR) return FromText(source, type, out);
  // Whole kinds get whole money; the others take it as the number it is.
  if (source.vt == VT_CY && type != VT_R4 && type != VT_R8 && type != VT_DATE && type != VT_BOOL) {
    return PutNumber(Number::Signed(WholeMoney(source.cyVal.int64)), type, out);
  }
  if (source.vt == VT_BOOL && IsUnsigned(type)) {
    // "True" is all bits set, whatever the sign.
    out.llVal = source.boolVal;
    return S_OK;
  }
  Number number;
  const HRESULT result = NumberOf(source, number);
  return FAILED(result) ? result : PutNumber(number, type, out);
}

}  // namespace

CString RealValueToText(double value) {
  return RealText(value, 15);
}

HRESULT FollowReference(const VARIANT& source, VARIANT& shared) {
  shared = source;
  if ((source.vt & VT_BYREF) == 0) return S_OK;
  const auto type = static_cast<VARTYPE>(source.vt & ~VT_BYREF);
  if (source.byref == nullptr) return E_INVALIDARG;
  if (type == VT_VARIANT) {
    // A reference to a reference is followed once; a chain could go on for ever. From a copy, as `shared` is
    // written while the reference is read.
    const VARIANT inner = *source.pvarVal;
    if ((inner.vt & VT_BYREF) != 0 && inner.vt == source.vt) return E_INVALIDARG;
    return FollowReference(inner, shared);
  }
  const bool one_byte = type == VT_I1 || type == VT_UI1;
  const bool two_bytes = type == VT_I2 || type == VT_UI2 || type == VT_BOOL;
  const bool four_bytes = type == VT_I4 || type == VT_UI4 || type == VT_INT || type == VT_UINT ||
                          type == VT_R4 || type == VT_ERROR;
  const std::size_t size = one_byte ? 1 : two_bytes ? 2 : four_bytes ? 4 : 8;
  if (!IsValueType(type) && type != VT_ERROR && type != VT_DISPATCH && type != VT_UNKNOWN) {
    return DISP_E_BADVARTYPE;
  }
  shared.llVal = 0;
  std::memcpy(&shared.llVal, source.byref, size);
  shared.vt = type;
  return S_OK;
}

HRESULT ChangeValueType(VARIANT& target, const VARIANT& source, VARTYPE type) {
  VARIANT shared{};
  HRESULT result = FollowReference(source, shared);
  if (FAILED(result)) return result;
  VARIANT fresh{};
  if (shared.vt == type) {
    result = VariantCopy(&fresh, &shared);
  } else if (IsValueType(shared.vt) && IsValueType(type) && type != VT_EMPTY) {
    fresh.vt = VT_EMPTY;
    result = Converted(shared, type, fresh);
    if (SUCCEEDED(result)) fresh.vt = type;
  } else if (shared.vt == VT_NULL || shared.vt == VT_ERROR) {
    result = DISP_E_TYPEMISMATCH;
  } else {
    result = ChangeSystemType(fresh, shared, type);
  }
  if (FAILED(result)) return result;
  // Cleared when all has succeeded, and after the reading: the source may be the target.
  VariantClear(&target);
  target = fresh;
  return S_OK;
}

}  // namespace lorv
