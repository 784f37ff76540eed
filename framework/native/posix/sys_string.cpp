#include <algorithm>
#include <cstdlib>
#include <string>

#include "framework/native/native_types.h"

// Automation texts off Windows, with the memory that Windows gives them: length in bytes in front, a zero
// unit behind. So code that reads the length in front of the pointer, or goes to the terminator, works on
// both systems.

namespace {

// The length stands right in front of the units, in a head of its own size: tables hold millions of short
// texts, and four bytes more would put many of them into blocks of the next size.
constexpr std::size_t kHead = sizeof(std::uint32_t);

std::uint32_t& LengthOf(BSTR text) {
  return reinterpret_cast<std::uint32_t*>(text)[-1];
}

}  // namespace

BSTR SysAllocStringLen(const char16_t* text, UINT length) {
  constexpr UINT kMost = 0x7FFFFFFF - 16;
  // The length must fit the 32 bits in front, the head and the terminator the sum of all.
  if (length > kMost / sizeof(char16_t)) return nullptr;
  const std::size_t bytes = length * sizeof(char16_t);
  auto* block = static_cast<char*>(std::malloc(kHead + bytes + sizeof(char16_t)));
  if (block == nullptr) return nullptr;
  auto* units = reinterpret_cast<BSTR>(block + kHead);
  LengthOf(units) = static_cast<std::uint32_t>(bytes);
  if (text != nullptr) {
    std::copy_n(text, length, units);
  } else {
    std::fill_n(units, length, u'\0');
  }
  units[length] = 0;
  return units;
}

BSTR SysAllocString(const char16_t* text) {
  if (text == nullptr) return nullptr;
  return SysAllocStringLen(text, static_cast<UINT>(std::char_traits<char16_t>::length(text)));
}

void SysFreeString(BSTR text) {
  if (text != nullptr) std::free(reinterpret_cast<char*>(text) - kHead);
}

UINT SysStringByteLen(BSTR text) {
  return text == nullptr ? 0 : LengthOf(text);
}

UINT SysStringLen(BSTR text) {
  return SysStringByteLen(text) / static_cast<UINT>(sizeof(char16_t));
}
