#include "tools/lorv/describe/verb_words.h"

#include <CLI/CLI.hpp>

#include "tools/lorv/command/verb_syntax.h"
#include "tools/lorv/command/verbs_table.h"
#include "tools/lorv/describe/spoken_help.h"
#include "tools/lorv/language/spoken_language.h"

// What each verb takes, read back from the argument library. All verbs are declared for it, which takes the
// time of some formulas: it is done for completion and manual only.

namespace lorv::tool {
namespace {

OptionWords WordsOf(const CLI::Option& option) {
  OptionWords words;
  for (const std::string& name : option.get_snames()) words.names.push_back("-" + name);
  for (const std::string& name : option.get_lnames()) words.names.push_back("--" + name);
  words.is_argument = words.names.empty();
  if (words.is_argument) words.names.push_back(option.get_name());
  words.description = option.get_description();
  words.takes_value = !words.is_argument && option.get_items_expected_max() > 0;
  return words;
}

}  // namespace

std::vector<VerbWords> DescribeVerbs() {
  std::vector<VerbWords> verbs;
  for (const VerbGroup& group : AllVerbs()) {
    for (const Verb& verb : group.verbs) {
      CLI::App app;
      VerbSyntax syntax(app);
      verb.declare(syntax);
      SpeakHelp(app, verb.name);
      VerbWords words{verb.name, Say(verb.summary), {}, app.get_footer()};
      for (const CLI::Option* option : app.get_options()) words.options.push_back(WordsOf(*option));
      verbs.push_back(std::move(words));
    }
  }
  return verbs;
}

}  // namespace lorv::tool
