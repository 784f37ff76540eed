#include "tools/lorv/formula/formula_digits.h"

#include <charconv>
#include <cmath>
#include <string>

// Numbers as a formula can hold them, for texts in which values stand in place of names.

namespace lorv::tool {

CString Digits(double value) {
  // The shortest digits that give the number back; 400 units hold any of them written out.
  char text[400];
  const auto end = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed).ptr;
  return CString::FromUtf8(std::string(text, end));
}

CString Literal(double value) {
  return _T("(") + Digits(value) + _T(")");
}

}  // namespace lorv::tool
