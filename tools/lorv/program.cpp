#include "tools/lorv/program.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <ostream>

#include "tools/lorv/argument_fault.h"
#include "tools/lorv/command/verb_syntax.h"
#include "tools/lorv/command/verbs_table.h"
#include "tools/lorv/command_words.h"
#include "tools/lorv/describe/help_layout.h"
#include "tools/lorv/describe/program_words.h"
#include "tools/lorv/describe/spoken_help.h"
#include "tools/lorv/guarded_run.h"
#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/screen/colours.h"
#include "tools/lorv/session/session.h"
#include "tools/lorv/text/nearest_word.h"

// The program from its words to its exit code: language, verb, arguments, work. Everything that can go wrong
// leaves as an exception of one kind and is reported at one place, so a script finds the same three exit
// codes whatever it asked for.

namespace lorv::tool {
namespace {

struct Program {
  CLI::App app{AboutProgram(), "lorv"};
  const Verb* verb = nullptr;  // the one that is asked for; null where it is the program itself
  Work work;
};

const Verb* VerbNamed(const std::string& name) {
  for (const VerbGroup& group : AllVerbs()) {
    for (const Verb& verb : group.verbs) {
      if (name == verb.name) return &verb;
    }
  }
  return nullptr;
}

void DeclareVerb(Program& program, const Verb& verb) {
  CLI::App* sub = program.app.add_subcommand(verb.name, Say(verb.summary));
  sub->allow_windows_style_options(false);
  program.verb = &verb;
  VerbSyntax syntax(*sub);
  program.work = verb.declare(syntax);
  SpeakHelp(*sub, verb.name);
  UnshieldValues(*sub);
}

// Scripts start the program for every formula, and declaring the arguments of twenty verbs takes longer than
// evaluating one formula: only those of the verb that is asked for are declared. The program's own help
// lists names.
void Declare(Program& program, const std::string& asked) {
  program.app.formatter(HelpLayout());
  program.app.allow_windows_style_options(false);
  program.app.set_version_flag("-V,--version", "lorv " LORV_VERSION, "print the version and end");
  program.app.get_option("--help")->description("print this help and end; also behind a verb");
  program.app.require_subcommand(1);
  program.app.add_option("--lang")->description(
      "the language of messages, en or zh; else that of the locale");
  program.app.footer(ProgramExamples());
  SpeakHelp(program.app, "examples");
  if (const Verb* const verb = VerbNamed(asked)) return DeclareVerb(program, *verb);
  for (const VerbGroup& group : AllVerbs()) {
    for (const Verb& verb : group.verbs) program.app.add_subcommand(verb.name, Say(verb.summary));
  }
}

// `lorv help calc` is `lorv calc --help`.
std::vector<std::string> HelpWords(const std::vector<std::string>& words) {
  if (words.empty()) return {"--help"};
  if (words[0] != "help") return words;
  if (words.size() == 1) return {"--help"};
  return {words[1], "--help"};
}

std::vector<std::string> NamesOfVerbs() {
  std::vector<std::string> names;
  for (const VerbGroup& group : AllVerbs()) {
    for (const Verb& verb : group.verbs) names.push_back(verb.name);
  }
  return names;
}

[[noreturn]] void RefuseWord(const std::string& word) {
  // Before the verb is searched for: no verb begins with a dash.
  if (word.size() > 1 && word[0] == '-') {
    throw BadInput(Say("there is no option \"{}\"; `lorv --help` lists them", {word}));
  }
  const std::string nearest = NearestWord(word, NamesOfVerbs());
  throw BadInput(Say("there is no verb \"{}\"", {word}) + (nearest.empty()
                                                               ? Say("; `lorv --help` lists them")
                                                               : Say("; did you mean {}?", {nearest})));
}

void Parse(Program& program, std::vector<std::string> words) {
  // Asked here and not by the library, which knows no word that was nearly typed.
  if (program.verb == nullptr && program.app.get_option_no_throw(words[0]) == nullptr) RefuseWord(words[0]);
  if (program.verb != nullptr) {
    std::vector<std::string> rest(words.begin() + 1, words.end());
    rest = ShieldWords(rest, *program.app.get_subcommand(words[0]), program.verb->takes_formulas);
    words.resize(1);
    words.insert(words.end(), rest.begin(), rest.end());
  }
  // The argument library wants them last first.
  std::reverse(words.begin(), words.end());
  program.app.parse(words);
}

// --lang holds for the whole program and may stand anywhere in front of "--".
void TakeLanguage(std::vector<std::string>& words, const Console& console) {
  // The language of the user first, as a fault of --lang itself has to be reported in some language.
  SpeakLanguage(LanguageByName(console.locale));
  for (std::size_t i = 0; i < words.size() && words[i] != "--"; ++i) {
    const bool joined = words[i].starts_with("--lang=");
    if (!joined && words[i] != "--lang") continue;
    if (!joined && i + 1 == words.size()) throw BadInput(Say("--lang takes en or zh"));
    const std::string name = joined ? words[i].substr(7) : words[i + 1];
    if (name != "en" && name != "zh") throw BadInput(Say("--lang takes en or zh"));
    SpeakLanguage(LanguageByName(name));
    const auto first = words.begin() + static_cast<std::ptrdiff_t>(i);
    words.erase(first, first + (joined ? 1 : 2));
    return;
  }
}

int Run(std::vector<std::string> words, Console& console) {
  // Before anything is written on the error stream.
  UseColours(console.colours);
  TakeLanguage(words, console);
  // With a pipe in front of it no session is meant: the help says what a script forgot.
  if (words.empty() && console.in_is_terminal) return RunSession(console);
  const std::vector<std::string> asked = HelpWords(words);
  Program program;
  Declare(program, asked[0]);
  try {
    Parse(program, asked);
  } catch (const CLI::Success& answer) {  // --help, --version
    program.app.exit(answer, console.out, console.err);
    return kFine;
  } catch (const CLI::ParseError& wrong) {
    throw BadInput(ArgumentFault(wrong, *program.app.get_subcommand(asked[0])) + "\n" +
                   Say("`lorv {} --help` shows what it takes", {asked[0]}));
  }
  return program.work(console);
}

}  // namespace

int RunProgram(const std::vector<std::string>& words, Console& console) {
  return GuardedRun("lorv", console, [&] { return Run(words, console); });
}

}  // namespace lorv::tool
