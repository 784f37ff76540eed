#include "tools/lorv/describe/help_layout.h"

#include <CLI/CLI.hpp>

#include "tools/lorv/command/verbs_table.h"
#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/screen/display_width.h"

// The layout of --help. It is the argument library's, but for what that has wrong for Chinese (it counts
// bytes) and for a program of many verbs (it lists them in one heap).

namespace lorv::tool {
namespace {

// Wide enough for most options with their values.
constexpr int kOptionColumn = 28;
constexpr int kVerbColumn = 14;

class Layout : public CLI::Formatter {
 public:
  Layout() {
    // The library's own words are few and stand in the table of messages as any others do.
    label("Positionals", Say("Arguments"));
    for (const char* word :
         {"Usage", "OPTIONS", "REQUIRED", "Needs", "Excludes", "TEXT", "INT", "UINT", "FLOAT"})
      label(word, Say(word));
  }

  std::string make_usage(const CLI::App* app, std::string /*name*/) const override {
    // The program's own line is ours, as the library's would list options that every verb has.
    return app->get_parent() == nullptr ? Say("Usage: lorv VERB [ARGUMENT ...]\n")
                                        : CLI::Formatter::make_usage(app, "lorv " + app->get_name());
  }

  // A verb's help describes its own arguments only.
  std::string make_subcommands(const CLI::App* app, CLI::AppFormatMode /*mode*/) const override {
    std::string text;
    if (app->get_parent() != nullptr) return text;
    for (const VerbGroup& group : AllVerbs()) {
      if (group.verbs.empty()) continue;
      text += "\n" + Say(group.title) + ":\n";
      for (const Verb& verb : group.verbs) {
        const std::string name = std::string("  ") + verb.name + " ";
        text += PadRight(name, kVerbColumn) + Say(verb.summary) + "\n";
      }
    }
    return text;
  }

  // As the library has it, by columns of the screen instead of bytes.
  std::string make_option(const CLI::Option* option, bool is_positional) const override {
    const std::string name = "  " + make_option_name(option, is_positional) + make_option_opts(option);
    const bool fits = DisplayWidth(name) < kOptionColumn;
    return (fits ? PadRight(name, kOptionColumn) : name + "\n" + PadRight("", kOptionColumn)) +
           make_option_desc(option) + "\n";
  }
};

}  // namespace

std::shared_ptr<CLI::FormatterBase> HelpLayout() {
  return std::make_shared<Layout>();
}

}  // namespace lorv::tool
