#include "tools/lorv/describe/spoken_help.h"

#include <CLI/CLI.hpp>

#include "tools/lorv/describe/help_table.h"
#include "tools/lorv/language/spoken_language.h"

// Changes a declared verb's help into the language that is spoken. Declarations stay in English and are
// translated once they are whole: a verb need not know of languages.

namespace lorv::tool {

std::string HelpText(std::string_view name, const std::string& english) {
  const std::string_view chinese = ChineseHelpOf(name);
  return SpokenLanguage() == Language::kChinese && !chinese.empty() ? std::string(chinese) : english;
}

void SpeakHelp(CLI::App& verb, std::string_view name) {
  verb.footer(HelpText(name, verb.get_footer()));
  for (CLI::Option* option : verb.get_options()) {
    option->description(Say(option->get_description()));
    option->group(Say(option->get_group()));
  }
}

}  // namespace lorv::tool
