#include "spreadsheet/servers/engine/xlsx/escaped_units.h"

#include <cstdint>

#include "framework/text/utf8_bytes.h"

// Between text of 16-bit units and the UTF-8 of a workbook's XML. Texts of users hold units that XML
// forbids, pasted control characters above all; the programs write them as "_x0007_", so the engine does,
// and such a text survives both ways.

namespace lorv::engine {
namespace {

constexpr std::size_t kEscapeUnits = 7;

int HexDigit(TCHAR c) {
  if (IsDigit(c)) return c - '0';
  const TCHAR low = ToLower(c);
  return low >= 'a' && low <= 'f' ? low - 'a' + 10 : -1;
}

// The unit that an escape at a place stands for; -1 where none begins.
int EscapeAt(TextView text, std::size_t at) {
  // Only a small "x" begins one, but its digits may be of either case.
  if (text.size() - at < kEscapeUnits || text[at] != '_' || text[at + 1] != 'x' || text[at + 6] != '_') {
    return -1;
  }
  int unit = 0;
  for (std::size_t i = at + 2; i < at + 6; ++i) {
    const int digit = HexDigit(text[i]);
    if (digit < 0) return -1;
    unit = unit * 16 + digit;
  }
  return unit;
}

void AppendEscape(std::uint32_t unit, std::string& out) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  out += "_x";
  for (int shift = 12; shift >= 0; shift -= 4) out += kDigits[unit >> shift & 0xF];
  out += '_';
}

// A whole character that lies beyond ASCII; gives how many units it took.
std::size_t AppendWide(TextView text, std::size_t at, std::string& out) {
  const std::uint32_t unit = text[at];
  const bool half = (unit & 0xF800) == 0xD800;
  if (!half) {
    // No characters for XML: a reader would refuse the whole file for one of them.
    if (unit >= 0xFFFE)
      AppendEscape(unit, out);
    else
      AppendUtf8(out, unit);
    return 1;
  }
  // A half without its partner has no form in UTF-8.
  const bool paired = (unit & 0x400) == 0 && at + 1 < text.size() && (text[at + 1] & 0xFC00) == 0xDC00;
  if (!paired) {
    AppendEscape(unit, out);
    return 1;
  }
  AppendUtf8(out, 0x10000 + ((unit & 0x3FF) << 10) + (text[at + 1] & 0x3FFU));
  return 2;
}

void AppendAscii(TextView text, std::size_t at, std::string& out) {
  const TCHAR c = text[at];
  if (c == '&') {
    out += "&amp;";
  } else if (c == '<') {
    out += "&lt;";
  } else if (c == '>') {
    out += "&gt;";
  } else if (c == '"') {
    out += "&quot;";
  } else if ((c < ' ' && c != '\t' && c != '\n') || (c == '_' && EscapeAt(text, at) >= 0)) {
    // A carriage return is escaped, too: XML makes a line feed of it. And what looks like an escape has its
    // underscore escaped, so that it comes back as it was written.
    AppendEscape(c, out);
  } else {
    out += static_cast<char>(c);
  }
}

}  // namespace

std::basic_string<TCHAR> ResolveEscapedUnits(std::basic_string<TCHAR> text) {
  const TextView view(text);
  std::size_t at = view.find(TextView(_T("_x")));
  if (at == TextView::npos) return text;
  std::basic_string<TCHAR> out(view.substr(0, at));
  while (at < view.size()) {
    const int unit = EscapeAt(view, at);
    out += unit < 0 ? view[at] : static_cast<TCHAR>(unit);
    at += unit < 0 ? 1 : kEscapeUnits;
  }
  return out;
}

void AppendEscaped(TextView text, std::string& out) {
  for (std::size_t at = 0; at < text.size();) {
    if (text[at] < 0x80) {
      AppendAscii(text, at++, out);
    } else {
      at += AppendWide(text, at, out);
    }
  }
}

}  // namespace lorv::engine
