#include <istream>
#include <memory>
#include <ostream>
#include <sstream>

#include "comm/match_score.h"
#include "platform/ports/platform.h"
#include "tools/lorv/command/verb.h"
#include "tools/lorv/command/verb_syntax.h"
#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/text/json_text.h"

// The verb `match`: ranks stored names by how much they share with what was typed. It is the suite's own
// ranking, to be tried on lists of real names.

namespace lorv::tool {
namespace {

struct MatchArguments {
  std::string typed;
  std::string file;
  int most = 10;
  bool sum = false;
  bool json = false;
};

constexpr const char* kHelp =
    "Ranks stored texts, one a line, by how much of what was typed they share: the best first, each behind "
    "its\n"
    "score. Texts that share nothing are left out. They come from FILE or, without one, from the input.\n"
    "\n"
    "Examples:\n"
    "  lorv match KL1 --file names.txt\n"
    "  printf \"KL1\\n框架梁\\n\" | lorv match 框架 --top 3\n"
    "\n"
    "Exit code 1: none shares anything.";

void AddLine(std::string line, CStringArray& stored) {
  // Lists come from Windows with CR in front of the line end; it would be part of each name.
  if (!line.empty() && line.back() == '\r') line.pop_back();
  if (!line.empty()) stored.Add(CString::FromUtf8(line));
}

CStringArray LinesOf(std::istream& in) {
  CStringArray stored;
  for (std::string line; std::getline(in, line);) AddLine(line, stored);
  return stored;
}

CStringArray StoredTexts(const MatchArguments& arguments, Console& console) {
  if (arguments.file.empty()) return LinesOf(console.in);
  // By the library's port: a stream of Windows would take the name for one in the narrow code page.
  const auto bytes = PortsInForce().files->ReadAll(CString::FromUtf8(arguments.file));
  if (!bytes.has_value()) throw BadInput(Say("cannot read \"{}\"", {arguments.file}));
  std::istringstream in(*bytes);
  return LinesOf(in);
}

int Rank(const MatchArguments& arguments, Console& console) {
  const CStringArray stored = StoredTexts(arguments, console);
  const CString typed = CString::FromUtf8(arguments.typed);
  const auto ranked = RankMatches(typed, stored, arguments.sum ? 1 : 0, arguments.most);
  if (arguments.json) {
    // An empty list is an answer for a program, too: the exit code says that none shares anything.
    JsonText json;
    json.Open('[');
    for (const RankedMatch& match : ranked) {
      json.Open('{');
      json.Key("score").Number(static_cast<long long>(match.score));
      json.Key("text").String(stored[match.index].ToUtf8());
      json.Close('}');
    }
    json.Close(']');
    console.out << json.Text();
    return ranked.empty() ? kResultFailed : kFine;
  }
  for (const RankedMatch& match : ranked) {
    console.out << match.score << "\t" << stored[match.index].ToUtf8() << "\n";
  }
  return ranked.empty() ? kResultFailed : kFine;
}

}  // namespace

Work DeclareMatch(VerbSyntax& syntax) {
  auto arguments = std::make_shared<MatchArguments>();
  syntax.Value("TYPED", arguments->typed, "what the user typed").Required();
  syntax.Value("-f,--file", arguments->file, "a text file of the stored texts, UTF-8");
  syntax.Value("-n,--top", arguments->most, "how many to print; 10 if not given").Between(1, 1000000);
  syntax.Flag("--sum", arguments->sum, "add the scores of all shared runs up");
  syntax.Flag("-j,--json", arguments->json, "print scores and texts as JSON");
  syntax.Footer(kHelp);
  return [arguments](Console& console) { return Rank(*arguments, console); };
}

}  // namespace lorv::tool
