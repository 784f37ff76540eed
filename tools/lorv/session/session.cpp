#include "tools/lorv/session/session.h"

#include <algorithm>
#include <istream>
#include <ostream>

#include "TEXPRESSCAL/express.h"
#include "TEXPRESSCAL/formula_words.h"
#include "tools/lorv/formula/calculation.h"
#include "tools/lorv/formula/fault_report.h"
#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/session/line_editor.h"
#include "tools/lorv/text/folded_text.h"

// The calculator that `lorv` is when it is typed alone. Values are kept by names as an estimator has them on
// paper; each line is evaluated as `lorv calc` does it, with all digits.

namespace lorv::tool {
namespace {

constexpr const char* kPrompt = "> ";
constexpr const char* kCommands[] = {"names", "functions", "clear", "help", "quit"};
constexpr const char* kHelpText =
    "Type a formula: 2*(3.6+0.24)*2.8. NAME = FORMULA keeps a value: 墙长 = 6. ans is the number before.\n"
    "names lists what is kept, clear forgets it, functions lists the functions, quit ends.\n";

// Lines as they come, where no editor is at hand.
class PlainLines : public LineEditor {
 public:
  explicit PlainLines(Console& console) : console_(console) {}

  std::optional<std::string> Read(const std::string& prompt) override {
    if (console_.in_is_terminal) console_.out << prompt << std::flush;
    std::string line;
    if (!std::getline(console_.in, line)) return std::nullopt;
    return line;
  }

 private:
  Console& console_;
};

class Session {
 public:
  explicit Session(Console& console) : console_(console) {}

  void Run(LineEditor& editor);
  std::vector<std::string> Completed(const std::string& beginning) const;

 private:
  // False ends it.
  bool Take(const std::string& line);
  bool TakeCommand(const std::string& command);
  void Work(const CString& line);
  void Keep(const CString& name, double number);
  void ListNames() const;
  void ListFunctions() const;

  Console& console_;
  std::vector<NameValue> values_;
};

// Where "NAME =" ends and the formula begins; 0 for a line that is a formula alone.
int AssignmentEnd(const CString& line, CString& name) {
  // "==" compares; a formula may begin with a name and a comparison.
  const int sign = line.Find('=');
  if (sign < 1 || (sign + 1 < line.GetLength() && line[sign + 1] == '=')) return 0;
  name = line.Left(sign);
  name.Trim();
  return IsName(name.View()) ? sign + 1 : 0;
}

void Session::Keep(const CString& name, double number) {
  // In capitals or not, it is one name to formulas.
  const auto known = std::find_if(values_.begin(), values_.end(), [&](const NameValue& value) {
    return NameKey(value.name.View()) == NameKey(name.View());
  });
  if (known != values_.end()) {
    known->number = number;
  } else {
    values_.push_back({name, false, {}, number});
  }
}

// "PI = 3" is a comparison to the formula engine, and surely not to the user.
bool GivesReservedName(const CString& line, const CString& name) {
  const bool is_word = !name.IsEmpty() && IsName((name + _T("_")).View());
  return is_word && !IsName(name.View()) && line.Find('=', line.Find('=') + 1) < 0;
}

void Session::Work(const CString& line) {
  CString name;
  const int begin = AssignmentEnd(line, name);
  if (begin == 0 && GivesReservedName(line, name)) {
    console_.err << "lorv: " << Say("\"{}\" cannot be a name in a formula", {name.ToUtf8()}) << "\n";
    return;
  }
  const CString formula = line.Mid(begin);
  const Calculation result = CalculateExactly(formula, values_);
  if (result.fault) PrintFault(console_, formula, *result.fault);
  PrintDoubts(console_, formula, result.doubts);
  // A doubtful number is kept, as it is shown; a line that gave none changes nothing.
  if (!result.value || (result.fault && result.fault->stops)) return;
  console_.out << (begin > 0 ? name.ToUtf8() + " = " : std::string()) << PlainReal(*result.value) << "\n";
  Keep(_T("ans"), *result.value);
  if (begin > 0) Keep(name, *result.value);
}

void Session::ListNames() const {
  for (const NameValue& value : values_)
    console_.out << value.name.ToUtf8() << " = " << PlainReal(value.number) << "\n";
}

void Session::ListFunctions() const {
  for (const CDtaFunction& function : Functions()) {
    console_.out << CString(function.pszName).ToUtf8() << "  " << CString(function.pszDesc).ToUtf8() << "\n";
  }
}

bool Session::TakeCommand(const std::string& command) {
  if (command == "names") ListNames();
  if (command == "functions") ListFunctions();
  if (command == "clear") values_.clear();
  if (command == "help") console_.out << Say(kHelpText);
  return command != "quit";
}

bool Session::Take(const std::string& typed) {
  // Commands are typed in any case, formulas keep theirs: their names are shown again.
  const std::string line = Folded(typed);
  if (line.empty()) return true;
  // "exit" is what many type first.
  if (line == "exit") return false;
  if (std::find(std::begin(kCommands), std::end(kCommands), line) != std::end(kCommands))
    return TakeCommand(line);
  CString formula = CString::FromUtf8(typed);
  Work(formula.Trim());
  return true;
}

std::vector<std::string> Session::Completed(const std::string& beginning) const {
  std::vector<std::string> words;
  for (const NameValue& value : values_) words.push_back(value.name.ToUtf8());
  // With its bracket, as the arguments follow.
  for (const CDtaFunction& function : Functions()) words.push_back(CString(function.pszName).ToUtf8() + "(");
  for (const char* command : kCommands) words.emplace_back(command);
  std::erase_if(words, [&](const std::string& word) { return !Folded(word).starts_with(Folded(beginning)); });
  return words;
}

void Session::Run(LineEditor& editor) {
  editor.Complete([this](const std::string& beginning) { return Completed(beginning); });
  for (auto line = editor.Read(kPrompt); line && Take(*line); line = editor.Read(kPrompt))
    console_.out.flush();
  // The editor may outlive this session, whose words it asks for.
  editor.Complete(nullptr);
}

}  // namespace

int RunSession(Console& console) {
  console.out << "lorv " LORV_VERSION ": " << Say("type a formula, help, or quit") << "\n";
  // The editing library writes past the stream, and would be ahead of it.
  console.out.flush();
  PlainLines plain(console);
  Session(console).Run(console.editor == nullptr ? plain : *console.editor);
  return kFine;
}

}  // namespace lorv::tool
