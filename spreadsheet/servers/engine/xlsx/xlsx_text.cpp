#include "spreadsheet/servers/engine/xlsx/xlsx_text.h"

#include <charconv>

#include "framework/text/utf8.h"
#include "spreadsheet/servers/engine/xlsx/escaped_units.h"
#include "spreadsheet/servers/engine/xlsx/xml_feed.h"

// How attributes and texts of a workbook's XML become values and texts of the suite: entities first, then
// UTF-8, then escaped units, in the order in which they were put on, backwards.

namespace lorv::engine {

long WholeNumber(std::string_view text, long fallback) {
  long value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  // "12abc" and numbers beyond the range are no numbers: a damaged place must not become another one.
  return error == std::errc() && end == text.data() + text.size() ? value : fallback;
}

std::basic_string<TCHAR> AttributeText(std::string_view raw) {
  std::string bytes;
  AppendXmlText(raw, false, bytes);
  return DocumentText(bytes);
}

std::basic_string<TCHAR> DocumentText(std::string_view bytes) {
  return ResolveEscapedUnits(Utf8ToText(bytes));
}

}  // namespace lorv::engine
