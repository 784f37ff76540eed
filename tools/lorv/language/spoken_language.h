#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace lorv::tool {

// The language that the program speaks to its user.
enum class Language { kEnglish, kChinese };

// "en", "zh", or the name of a locale such as "zh_CN.UTF-8", of which the beginning counts;
// English for any other.
Language LanguageByName(std::string_view name);

// One for the whole program, as there is one user.
void SpeakLanguage(Language language);
Language SpokenLanguage();

// A message in the language that is spoken, with the values in place of its "{}". The English text is the
// name of the message; the Chinese one stands in messages_table.cpp.
//
//   Say("{} cannot be opened", {"a.csv"})  gives "a.csv cannot be opened"
std::string Say(std::string_view english, std::initializer_list<std::string_view> values = {});

// The Chinese text of a message; empty where the table has none.
std::string_view ChineseOf(std::string_view english);

}  // namespace lorv::tool
