#include "tools/lorv/language/spoken_language.h"

#include <algorithm>

#include "tools/lorv/language/messages_table.h"

// Messages in the language of the user. A message without a line in the table is given in English rather
// than not at all.

namespace lorv::tool {
namespace {

Language spoken = Language::kEnglish;

}  // namespace

Language LanguageByName(std::string_view name) {
  return name.starts_with("zh") ? Language::kChinese : Language::kEnglish;
}

void SpeakLanguage(Language language) {
  spoken = language;
}

Language SpokenLanguage() {
  return spoken;
}

std::string_view ChineseOf(std::string_view english) {
  const auto table = Messages();
  const auto found = std::find_if(table.begin(), table.end(),
                                  [=](const Message& message) { return message.english == english; });
  return found == table.end() ? std::string_view() : found->chinese;
}

std::string Say(std::string_view english, std::initializer_list<std::string_view> values) {
  std::string_view text = english;
  if (spoken == Language::kChinese) text = ChineseOf(english);
  if (text.empty()) text = english;
  std::string said;
  auto value = values.begin();
  for (std::size_t at = 0; at < text.size();) {
    if (text.substr(at, 2) != "{}" || value == values.end()) {
      said += text[at++];
      continue;
    }
    said += *value++;
    at += 2;
  }
  return said;
}

}  // namespace lorv::tool
