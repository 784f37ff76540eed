#include "tools/lorv/describe/verb_words.h"
#include "tools/lorv/program.h"
#include "tools/lorv/text/spoken_language.h"

namespace lorv::tool {
namespace {

// A line's first character and backslashes mean something to the program that sets the page.
std::string Escaped(const std::string& text) {
  std::string escaped;
  bool begins = true;
  for (const char c : text) {
    if (begins && (c == '.' || c == '\'')) escaped += "\\&";
    escaped += c == '\\' ? std::string("\\e") : c == '-' ? std::string("\\-") : std::string(1, c);
    begins = c == '\n';
  }
  return escaped;
}

std::string AsTyped(const std::string& text) {
  return ".nf\n" + Escaped(text) + "\n.fi\n";
}

std::string OptionLine(const OptionWords& option) {
  std::string line = ".TP\n.B ";
  for (std::size_t i = 0; i < option.names.size(); ++i)
    line += (i == 0 ? "" : ", ") + Escaped(option.names[i]);
  if (option.takes_value) line += " \\fIVALUE\\fP";
  return line + "\n" + Escaped(option.description) + "\n";
}

}  // namespace

std::string ManualPage() {
  std::string page = ".TH LORV 1 \"\" \"lorv " LORV_VERSION "\" \"User Commands\"\n.SH NAME\nlorv \\- " +
                     Escaped("formulas of construction quantity take-off") +
                     "\n.SH SYNOPSIS\n.B lorv\n[\\fIVERB\\fP [\\fIARGUMENT\\fP ...]]\n.SH DESCRIPTION\n" +
                     AsTyped(AboutProgram());
  page +=
      ".SH OPTIONS\n" +
      OptionLine({{"-h", "--help"}, "print help and end; also behind a verb", false, false}) +
      OptionLine({{"-V", "--version"}, "print the version and end", false, false}) +
      OptionLine({{"--lang"}, "the language of messages, en or zh; else that of the locale", true, false});
  page += ".SH VERBS\n";
  for (const VerbWords& verb : DescribeVerbs()) {
    page += ".SS " + Escaped("lorv " + verb.name) + "\n" + Escaped(verb.summary) + "\n";
    for (const OptionWords& option : verb.options) page += OptionLine(option);
    page += ".PP\n" + AsTyped(verb.remarks);
  }
  return page + ".SH EXAMPLES\n" + AsTyped(ProgramExamples());
}

}  // namespace lorv::tool
