#pragma once

#include <string>
#include <string_view>

#include "framework/native/export.h"
#include "framework/text/text_compare.h"

// UTF-8 in and out: the edge of the library towards files, terminals and tests.
//
// Units: bytes on one side, 16-bit units on the other.
// Edges: a cut or wrong byte sequence becomes one U+FFFD for each byte that fits nothing; a surrogate
//   without its partner goes out as U+FFFD. A byte order mark is a character like any other.
// Result: always a whole text. No locale, no shared state: any thread.
//
//   Utf8ToText("\xE5\xA2\x99")  gives _T("墙")
namespace lorv {

COMM_LORV_API std::basic_string<TCHAR> Utf8ToText(std::string_view bytes);
COMM_LORV_API std::string TextToUtf8(TextView text);

}  // namespace lorv
