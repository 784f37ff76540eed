#pragma once

#include "framework/native/native_types.h"

// Character classes and letter case of the whole library: by code, independent of any locale. A code from
// 256 upward (a Chinese character, half of a surrogate pair) is never a digit, letter or blank.
namespace lorv {

constexpr bool IsDigit(TCHAR c) {
  return c >= '0' && c <= '9';
}
constexpr bool IsAsciiLetter(TCHAR c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

// Space, tab, line feed, vertical tab, form feed, carriage return.
constexpr bool IsBlank(TCHAR c) {
  return c == ' ' || (c >= 9 && c <= 13);
}

constexpr TCHAR ToUpper(TCHAR c) {
  return c >= 'a' && c <= 'z' ? static_cast<TCHAR>(c - 32) : c;
}
constexpr TCHAR ToLower(TCHAR c) {
  return c >= 'A' && c <= 'Z' ? static_cast<TCHAR>(c + 32) : c;
}

// The framework's name for "letter, digit or underscore": what may continue a variable's name.
constexpr bool IsNameChar(TCHAR c) {
  return IsAsciiLetter(c) || IsDigit(c) || c == '_';
}

}  // namespace lorv
