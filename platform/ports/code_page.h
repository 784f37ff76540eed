#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "framework/native/export.h"
#include "framework/text/text_compare.h"

// The narrow code page: how texts become bytes in files and for calls that take narrow text.
//
// Edges: what has no code, a lone surrogate and a character beyond the basic plane (one for each half)
//   becomes '?'; so does a byte that begins no character, and the byte behind it is read anew.
// Result: always a whole text. Any thread.
namespace lorv {

// The code page of the suite, on every system.
constexpr unsigned kNarrowCodePage = 936;

class COMM_LORV_API CodePage {
 public:
  CodePage() = default;
  CodePage(const CodePage&) = delete;
  CodePage& operator=(const CodePage&) = delete;
  virtual ~CodePage() = default;

  virtual std::string ToNarrow(TextView text) const = 0;
  virtual std::basic_string<TCHAR> ToText(std::string_view bytes) const = 0;
  // The bytes of the first character, as ToText takes it; 0 for no bytes. A search for a separator in narrow
  // text goes from character to character: a second byte may have the value of "\".
  virtual std::size_t FirstCharacter(std::string_view bytes) const { return bytes.empty() ? 0 : 1; }
};

// Code page 936 by the system's own table; the same bytes on every system.
COMM_LORV_API CodePage& SuiteCodePage();

}  // namespace lorv
