#include "tools/lorv/text/typed_number.h"

#include <algorithm>
#include <cmath>

#include "framework/text/cstring.h"
#include "framework/text/number_text.h"
#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/text/folded_text.h"

// Reads numbers as people type them, strictly: what could be meant in two ways is no number but a question to
// who typed it. A wrong guess would go into a bill unseen.

namespace lorv::tool {
namespace {

bool IsDigitByte(char c) {
  return c >= '0' && c <= '9';
}

// Full-width signs and digits as plain ones.
std::string Plain(std::string_view utf8) {
  CString text = CString::FromUtf8(utf8);
  CString plain;
  for (int i = 0; i < text.GetLength(); ++i) {
    const auto unit = static_cast<unsigned>(text[i]);
    plain.AppendChar(unit > 0xFF00 && unit < 0xFF5F ? static_cast<TCHAR>(unit - 0xFEE0) : text[i]);
  }
  return plain.ToUtf8();
}

// Groups of three digits behind the first: 1,234,567.
bool HasGroups(std::string_view text, char separator) {
  std::size_t at = text.find(separator);
  if (at == std::string_view::npos || at == 0 || at > 4) return false;
  // Nobody writes thousands of nothing: 0,001 is a decimal comma.
  if (text.substr(0, at).find_first_of("123456789") == std::string_view::npos) return false;
  for (; at != std::string_view::npos; at = text.find(separator, at + 1)) {
    const std::size_t digits = text.find_first_not_of("0123456789", at + 1);
    if (std::min(digits, text.size()) != at + 4) return false;
  }
  return true;
}

std::string Without(std::string text, char c) {
  text.erase(std::remove(text.begin(), text.end(), c), text.end());
  return text;
}

std::string WithPoint(std::string text) {
  std::replace(text.begin(), text.end(), ',', '.');
  return text;
}

}  // namespace

std::optional<double> WholeNumber(std::string_view text) {
  // The word for no number and for infinity begin with a letter: only digits, a sign or a point may begin
  // one.
  const std::basic_string<TCHAR> units(text.begin(), text.end());
  if (units.empty() || text.find_first_not_of("0123456789.+-eE") != std::string_view::npos)
    return std::nullopt;
  std::size_t used = 0;
  const double number = ReadReal(units, &used);
  if (used != units.size() || !std::isfinite(number)) return std::nullopt;
  return number;
}

std::string NumberHint(std::string_view cell) {
  const std::string text = Plain(cell);
  if (text != cell && WholeNumber(text)) return Say("; full-width digits? Write {}", {text});
  const auto commas = std::count(text.begin(), text.end(), ',');
  if (HasGroups(text, ',') && WholeNumber(Without(text, ',')) &&
      // A point behind groups, or more than one group, leaves no other reading.
      (commas > 1 || text.find('.') != std::string::npos)) {
    return Say("; a thousands separator? Write {}", {Without(text, ',')});
  }
  if (commas == 1 && WholeNumber(WithPoint(Without(text, '.')))) {
    const std::string point = WithPoint(Without(text, '.'));
    if (!HasGroups(text, ',')) return Say("; a decimal comma? Write {}", {point});
    return Say("; a decimal comma or a thousands separator? Write {} or {}", {point, Without(text, ',')});
  }
  // A blank that is none to the table's reader, such as one within quotes.
  if (const std::string bare = Folded(text); bare != text && WholeNumber(bare))
    return Say("; blanks around it? Write {}", {bare});
  // Blanks as thousands are usual in many countries.
  if (WholeNumber(Without(text, ' '))) return Say("; a thousands separator? Write {}", {Without(text, ' ')});
  const std::size_t end = text.find_first_not_of("0123456789.+-");
  // Of "3,5 m" the 3 alone is nothing that anybody meant.
  if (end != std::string::npos && end > 0 && text[end] != ',' && IsDigitByte(text[end - 1]) &&
      WholeNumber(text.substr(0, end))) {
    return Say("; a unit? Write {} and set a factor in a row of kind \"column\"", {text.substr(0, end)});
  }
  return {};
}

}  // namespace lorv::tool
