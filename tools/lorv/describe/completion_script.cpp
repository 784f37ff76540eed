#include "tools/lorv/describe/verb_words.h"

// Scripts that complete command lines, made from the same declarations as the help, so an option that is
// added is completed without another word. Each shell has a form of its own and gets what it can show: fish
// the descriptions, the others names.

namespace lorv::tool {
namespace {

std::string Joined(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : " ") + word;
  return text;
}

std::string NamesOf(const std::vector<VerbWords>& verbs) {
  // `help` is no verb with a declaration, but stands where one does.
  std::vector<std::string> names = {"help"};
  for (const VerbWords& verb : verbs) names.push_back(verb.name);
  return Joined(names);
}

std::string OptionsOf(const VerbWords& verb) {
  std::vector<std::string> options;
  for (const OptionWords& option : verb.options) {
    if (!option.is_argument) options.insert(options.end(), option.names.begin(), option.names.end());
  }
  return Joined(options);
}

std::string Bash(const std::vector<VerbWords>& verbs) {
  std::string text =
      "_lorv() {\n  local word=${COMP_WORDS[COMP_CWORD]} options=\"--help --version --lang\"\n"
      "  if [ \"$COMP_CWORD\" -eq 1 ]; then\n    COMPREPLY=($(compgen -W \"" +
      NamesOf(verbs) + " $options\" -- \"$word\"))\n    return\n  fi\n  case ${COMP_WORDS[1]} in\n";
  for (const VerbWords& verb : verbs)
    text += "    " + verb.name + ") options=\"" + OptionsOf(verb) + "\" ;;\n";
  return text + "    help) COMPREPLY=($(compgen -W \"" + NamesOf(verbs) +
         "\" -- \"$word\")); return ;;\n  esac\n"
         "  case $word in\n    -*) COMPREPLY=($(compgen -W \"$options\" -- \"$word\")) ;;\n"
         "    *) COMPREPLY=($(compgen -f -- \"$word\")) ;;\n  esac\n}\n"
         // As file names, so that a folder gets its slash and a blank its backslash.
         "complete -o filenames -F _lorv lorv\n";
}

std::string Zsh(const std::vector<VerbWords>& verbs) {
  std::string text = "#compdef lorv\n_lorv() {\n  if (( CURRENT == 2 )); then\n    compadd -- " +
                     NamesOf(verbs) + " --help --version --lang\n    return\n  fi\n  case $words[2] in\n";
  for (const VerbWords& verb : verbs)
    text += "    " + verb.name + ") compadd -- " + OptionsOf(verb) + " ;;\n";
  return text + "    help) compadd -- " + NamesOf(verbs) +
         " ;;\n  esac\n  _files\n}\n"
         // Loaded by its name the file is the function's first call; read by a start file it only declares.
         "if [ \"$funcstack[1]\" = _lorv ]; then _lorv \"$@\"; else compdef _lorv lorv; fi\n";
}

// In single quotes a quote ends them.
std::string Quoted(const std::string& text) {
  std::string quoted = "'";
  for (const char c : text) quoted += c == '\'' ? std::string("\\'") : std::string(1, c);
  return quoted + "'";
}

std::string FishOption(const std::string& verb, const OptionWords& option) {
  std::string line = "complete -c lorv -n '__fish_seen_subcommand_from " + verb + "'";
  for (const std::string& name : option.names)
    line += name[1] == '-' ? " -l " + name.substr(2) : " -s " + name.substr(1);
  return line + (option.takes_value ? " -r" : "") + " -d " + Quoted(option.description) + "\n";
}

std::string Fish(const std::vector<VerbWords>& verbs) {
  std::string text;
  for (const VerbWords& verb : verbs) {
    text +=
        "complete -c lorv -n __fish_use_subcommand -f -a " + verb.name + " -d " + Quoted(verb.summary) + "\n";
    for (const OptionWords& option : verb.options) {
      if (!option.is_argument) text += FishOption(verb.name, option);
    }
  }
  return text;
}

}  // namespace

std::string CompletionScript(const std::string& shell) {
  const std::vector<VerbWords> verbs = DescribeVerbs();
  if (shell == "bash") return Bash(verbs);
  if (shell == "zsh") return Zsh(verbs);
  return shell == "fish" ? Fish(verbs) : std::string();
}

}  // namespace lorv::tool
