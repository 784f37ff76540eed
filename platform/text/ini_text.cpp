#include "platform/text/ini_text.h"

#include <algorithm>
#include <cstdint>

#include "framework/text/char_class.h"
#include "framework/text/utf8.h"

// Reads values from the text of an ini file as Windows' own functions do: the first section and key of a name
// count, letter case aside; quotes around a value go; numbers wrap at 32 bits. A file may be in UTF-16, UTF-8
// with a mark, or the code page.

namespace lorv {
namespace {

TextView Trimmed(TextView text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

TextView Unquoted(TextView text) {
  const bool quoted = text.size() >= 2 && text.front() == text.back() &&
                      (text.front() == TCHAR('"') || text.front() == TCHAR('\''));
  return quoted ? text.substr(1, text.size() - 2) : text;
}

bool IsLineEnd(TCHAR c) {
  return c == '\n' || c == '\r';
}

// The next line of a text, which is taken off it.
TextView TakeLine(TextView& text) {
  const auto end = std::find_if(text.begin(), text.end(), IsLineEnd);
  const auto length = static_cast<std::size_t>(end - text.begin());
  // CR LF gives an empty line in between, which means nothing in these files.
  const TextView line = text.substr(0, length);
  text.remove_prefix(std::min(length + 1, text.size()));
  return Trimmed(line);
}

bool IsSection(TextView line, TextView section) {
  const TextView name = line.substr(1, std::min(line.find(TCHAR(']')), line.size()) - 1);
  return CompareWithoutCase(Trimmed(name), section) == 0;
}

bool IsKey(TextView line, TextView key) {
  const std::size_t equals = line.find(TCHAR('='));
  return equals != TextView::npos && CompareWithoutCase(Trimmed(line.substr(0, equals)), key) == 0;
}

int DigitOf(TCHAR c) {
  if (IsDigit(c)) return c - '0';
  const TCHAR lower = ToLower(c);
  return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : 16;
}

int ReadNumber(TextView text) {
  const bool negative = !text.empty() && text.front() == '-';
  if (!text.empty() && (negative || text.front() == '+')) text.remove_prefix(1);
  const bool hexadecimal = text.size() > 1 && text[0] == '0' && ToLower(text[1]) == 'x';
  if (hexadecimal) text.remove_prefix(2);
  const int base = hexadecimal ? 16 : 10;
  std::uint32_t value = 0;
  for (const TCHAR c : text) {
    const int digit = DigitOf(c);
    if (digit >= base) break;
    value = value * static_cast<std::uint32_t>(base) + static_cast<std::uint32_t>(digit);
  }
  return static_cast<int>(negative ? 0 - value : value);
}

}  // namespace

CString IniTextOf(std::string_view bytes, const CodePage& code_page) {
  constexpr std::string_view kUtf16Mark = "\xFF\xFE";
  constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
  if (bytes.starts_with(kUtf8Mark)) return Utf8ToText(bytes.substr(kUtf8Mark.size()));
  if (!bytes.starts_with(kUtf16Mark)) return code_page.ToText(bytes);
  std::basic_string<TCHAR> text;
  for (std::size_t at = kUtf16Mark.size(); at + 1 < bytes.size(); at += 2) {
    const auto low = static_cast<unsigned char>(bytes[at]);
    const auto high = static_cast<unsigned char>(bytes[at + 1]);
    text += static_cast<TCHAR>(high << 8 | low);
  }
  return text;
}

CString IniValue(TextView text, TextView section, TextView key) {
  bool inside = false;
  while (!text.empty()) {
    const TextView line = TakeLine(text);
    if (line.empty() || line.front() == ';') continue;
    if (line.front() == '[') {
      // A second section of the name is not looked at.
      if (inside) break;
      inside = IsSection(line, section);
    } else if (inside && IsKey(line, key)) {
      return CString(Unquoted(Trimmed(line.substr(line.find(TCHAR('=')) + 1))));
    }
  }
  return {};
}

int IniInteger(TextView text, TextView section, TextView key, int fallback) {
  const CString value = IniValue(text, section, key);
  return value.IsEmpty() ? fallback : ReadNumber(value.View());
}

}  // namespace lorv
