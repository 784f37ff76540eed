#include "tools/lorv/screen/harmless_text.h"

#include <array>
#include <cstdio>

#include "framework/text/cstring.h"

// Names from archives and files as a terminal may show them. A name can hold escapes that clear the screen or
// marks that turn its letters round, so that it reads as another name; it is shown with these spelt out.

namespace lorv::tool {
namespace {

bool IsHarmful(unsigned unit) {
  const bool control = unit < 0x20 || (unit >= 0x7F && unit < 0xA0);
  const bool line_end = unit == 0x2028 || unit == 0x2029;
  const bool direction = unit == 0x061C || unit == 0x200E || unit == 0x200F ||
                         (unit >= 0x202A && unit <= 0x202E) || (unit >= 0x2066 && unit <= 0x2069);
  return control || line_end || direction;
}

}  // namespace

std::string Harmless(std::string_view utf8) {
  const CString text = CString::FromUtf8(utf8);
  CString shown;
  for (const TCHAR unit : text.View()) {
    if (!IsHarmful(unit)) {
      shown += unit;
      continue;
    }
    std::array<char, 8> code{};
    std::snprintf(code.data(), code.size(), unit < 0x100 ? "\\x%02X" : "\\u%04X",
                  static_cast<unsigned>(unit));
    shown += CString::FromUtf8(code.data());
  }
  return shown.ToUtf8();
}

std::string Quoted(std::string_view utf8) {
  return "\"" + Harmless(utf8) + "\"";
}

}  // namespace lorv::tool
