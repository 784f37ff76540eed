#include "tools/lorv/csv/workbook_words.h"

#include <optional>
#include <vector>

#include "tools/lorv/language/messages_table.h"
#include "tools/lorv/language/spoken_language.h"

// Finds the English words for what the library says of a workbook. Its texts are fixed by its interface and
// hold values such as names of sheets, so they are compared with the messages piece by piece.

namespace lorv::tool {
namespace {

constexpr std::string_view kPlace = "{}";

// The values that stand at the places of a message in a text; nothing if it is no such text.
std::optional<std::vector<std::string>> ValuesIn(std::string_view text, std::string_view message) {
  std::vector<std::string> values;
  while (true) {
    const std::size_t place = message.find(kPlace);
    if (!text.starts_with(message.substr(0, place))) return std::nullopt;
    if (place == std::string_view::npos) {
      return text.size() == message.size() ? std::optional(values) : std::nullopt;
    }
    text.remove_prefix(place);
    message.remove_prefix(place + kPlace.size());
    const std::string_view next = message.substr(0, message.find(kPlace));
    // A place at the end of a message takes all that is left.
    const std::size_t end = next.empty() ? text.size() : text.find(next);
    if (end == std::string_view::npos) return std::nullopt;
    values.emplace_back(text.substr(0, end));
    text.remove_prefix(end);
  }
}

std::string Said(const Message& message, const std::vector<std::string>& values) {
  switch (values.size()) {
    case 0:
      return Say(message.english);
    case 1:
      return Say(message.english, {values[0]});
    default:
      return Say(message.english, {values[0], values[1]});
  }
}

}  // namespace

std::string WorkbookWords(const CString& chinese) {
  std::string text = chinese.ToUtf8();
  // They are Chinese as they come.
  if (SpokenLanguage() == Language::kChinese) return text;
  for (const Message& message : Messages()) {
    if (const auto values = ValuesIn(text, message.chinese)) return Said(message, *values);
  }
  return text;
}

}  // namespace lorv::tool
