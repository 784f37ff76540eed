#include <memory>
#include <ostream>

#include "tools/lorv/command/verb.h"
#include "tools/lorv/command/verb_syntax.h"
#include "tools/lorv/describe/verb_words.h"
#include "tools/lorv/language/spoken_language.h"

// The verbs `completion` and `manual`: what the tool says of itself, for shells and for `man`. Both are asked
// for once, when the tool is installed.

namespace lorv::tool {

Work DeclareCompletion(VerbSyntax& syntax);
Work DeclareManual(VerbSyntax& syntax);

namespace {

constexpr const char* kCompletionHelp =
    "Examples:\n"
    "  lorv completion bash >~/.local/share/bash-completion/completions/lorv\n"
    "  lorv completion zsh >~/.zfunc/_lorv\n"
    "  lorv completion fish >~/.config/fish/completions/lorv.fish";

constexpr const char* kManualHelp =
    "The page has the text of --help of every verb.\n"
    "\n"
    "Examples:\n"
    "  lorv manual >lorv.1 && man ./lorv.1\n"
    "  lorv manual --json                   the same for programs";

}  // namespace

Work DeclareCompletion(VerbSyntax& syntax) {
  auto shell = std::make_shared<std::string>();
  syntax.Value("SHELL", *shell, "bash, zsh or fish").Required();
  syntax.Footer(kCompletionHelp);
  return [shell](Console& console) -> int {
    const std::string script = CompletionScript(*shell);
    if (script.empty())
      throw BadInput(Say("there is no completion for \"{}\"; known are bash, zsh and fish", {*shell}));
    console.out << script;
    return kFine;
  };
}

Work DeclareManual(VerbSyntax& syntax) {
  auto json = std::make_shared<bool>(false);
  syntax.Flag("-j,--json", *json, "print the text of the help as JSON");
  syntax.Footer(kManualHelp);
  return [json](Console& console) -> int {
    console.out << (*json ? ManualAsJson() : ManualPage());
    return kFine;
  };
}

}  // namespace lorv::tool
