#include "tools/lorv/describe/program_words.h"
#include "tools/lorv/describe/verb_words.h"
#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/text/json_text.h"

// The manual page and its JSON, from the same declarations as the help. It is made by the program itself, so
// it never describes another version than the one that is installed.

namespace lorv::tool {
namespace {

// A line's first character and backslashes mean something to the program that sets the page.
std::string Escaped(const std::string& text) {
  std::string escaped;
  bool begins = true;
  for (const char c : text) {
    if (begins && (c == '.' || c == '\'')) escaped += "\\&";
    // A plain dash may be set as a hyphen, which cannot be pasted into a command.
    escaped += c == '\\' ? std::string("\\e") : c == '-' ? std::string("\\-") : std::string(1, c);
    begins = c == '\n';
  }
  return escaped;
}

// Examples keep their lines: a command that is filled like prose cannot be typed off.
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

std::string Heading(const char* title) {
  return ".SH " + Say(title) + "\n";
}

// Those of the program are declared apart from the verbs, and described here once more.
std::string OptionsOfProgram() {
  return OptionLine({{"-h", "--help"}, Say("print help and end; also behind a verb"), false, false}) +
         OptionLine({{"-V", "--version"}, Say("print the version and end"), false, false}) +
         OptionLine(
             {{"--lang"}, Say("the language of messages, en or zh; else that of the locale"), true, false});
}

void WriteOption(JsonText& json, const OptionWords& option) {
  json.Open('{');
  json.Key("names").Open('[');
  for (const std::string& name : option.names) json.String(name);
  json.Close(']');
  json.Key("description").String(option.description);
  json.Key("takes_value").Bool(option.takes_value);
  json.Key("is_argument").Bool(option.is_argument);
  json.Close('}');
}

}  // namespace

std::string ManualPage() {
  // Without a date: the same sources give the same page.
  std::string page = ".TH LORV 1 \"\" \"lorv " LORV_VERSION "\" \"User Commands\"\n" + Heading("NAME") +
                     "lorv \\- " + Escaped(Say("formulas of construction quantity take-off")) + "\n" +
                     Heading("SYNOPSIS") + ".B lorv\n[\\fIVERB\\fP [\\fIARGUMENT\\fP ...]]\n" +
                     Heading("DESCRIPTION") + AsTyped(AboutProgram()) + Heading("OPTIONS") +
                     OptionsOfProgram() + Heading("VERBS");
  for (const VerbWords& verb : DescribeVerbs()) {
    page += ".SS " + Escaped("lorv " + verb.name) + "\n" + Escaped(verb.summary) + "\n";
    for (const OptionWords& option : verb.options) page += OptionLine(option);
    page += ".PP\n" + AsTyped(verb.remarks);
  }
  return page + Heading("EXAMPLES") + AsTyped(ProgramExamples());
}

std::string ManualAsJson() {
  JsonText json;
  json.Open('[');
  for (const VerbWords& verb : DescribeVerbs()) {
    json.Open('{');
    json.Key("verb").String(verb.name);
    json.Key("summary").String(verb.summary);
    json.Key("options").Open('[');
    for (const OptionWords& option : verb.options) WriteOption(json, option);
    json.Close(']');
    json.Key("remarks").String(verb.remarks);
    json.Close('}');
  }
  json.Close(']');
  return json.Text();
}

}  // namespace lorv::tool
