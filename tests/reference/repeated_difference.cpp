#include <algorithm>

#include "TEXPRESSCAL/calculate_rows.h"
#include "TEXPRESSCAL/express.h"
#include "tests/reference/findings.h"
#include "tests/reference/reference_calculator.h"
#include "tests/reference/repeated_case.h"
#include "tests/reference/shrinking.h"

namespace lorv::test {

namespace {

using Round = RepeatedCase::Round;

// What a caller sees of a round. The second values are those of evaluating the text that the first left.
struct Outcome {
  double value = 0;
  int error = -7;
  double second_value = 0;
  int second_error = -7;
  Text text;
};

CStringArray Strings(const std::vector<Text>& texts) {
  CStringArray out;
  for (const Text& text : texts) out.Add(CString(text));
  return out;
}

void SetValues(CAdExpCalculate& calculator, const RepeatedCase& made, const Round& round) {
  for (std::size_t i = 0; i < made.names.size(); ++i)
    calculator.SetVarValue(made.names[i].c_str(), round.values[i], false);
}

template <class Calculator>
Outcome Calculated(Calculator& calculator, const Round& round) {
  Outcome outcome;
  outcome.value = calculator.Calculate(outcome.error);
  if (round.calculates_twice) outcome.second_value = calculator.Calculate(outcome.second_error);
  if (round.asks_text) outcome.text = Text(CString(calculator.GetCalcedExpr()).View());
  return outcome;
}

Outcome Fresh(const RepeatedCase& made, const Round& round) {
  CAdExpCalculate calculator;
  calculator.SetKeyWord(Strings(made.keywords));
  SetValues(calculator, made, round);
  calculator.SetExpr(made.formula.c_str());
  return Calculated(calculator, round);
}

Outcome ByReference(const RepeatedCase& made, const Round& round) {
  reference::Calculator calculator;
  calculator.SetKeyWord(made.keywords);
  for (std::size_t i = 0; i < made.names.size(); ++i)
    calculator.SetVarValue(made.names[i], round.values[i], false);
  calculator.SetExpr(made.formula);
  return Calculated(calculator, round);
}

void Compare(const Outcome& one, const Outcome& other, Findings& findings) {
  findings.Whole("error", one.error, other.error);
  findings.Number("value", one.value, other.value);
  findings.Whole("second error", one.second_error, other.second_error);
  findings.Number("second value", one.second_value, other.second_value);
  findings.Texts("text", CString(one.text), other.text);
}

Text InSmallLetters(Text text) {
  for (TCHAR& unit : text) {
    if (unit >= 'A' && unit <= 'Z') unit = static_cast<TCHAR>(unit + 'a' - 'A');
  }
  return text;
}

// The one object that lives through the case.
class AgainAndAgain {
 public:
  explicit AgainAndAgain(const RepeatedCase& made) : made_(made) {
    calculator_->SetKeyWord(Strings(made.keywords));
  }

  std::string Difference(const Round& round, const Outcome& expected) {
    Prepare(round);
    if (round.values_first) SetValues(*calculator_, made_, round);
    const Text typed = round.small_letters ? InSmallLetters(made_.formula) : made_.formula;
    calculator_->SetExpr(typed.c_str());
    if (!round.values_first) SetValues(*calculator_, made_, round);
    Findings findings("again", "once");
    Compare(Calculated(*calculator_, round), expected, findings);
    return findings.First();
  }

 private:
  void Prepare(const Round& round) {
    if (round.other_before) {
      calculator_->SetExpr(_T("1+2*3"));
      calculator_->Calculate();
    }
    if (round.clears_before) calculator_->ClearAllValue();
    if (!round.is_copied_before) return;
    auto next = std::make_unique<CAdExpCalculate>();
    *next = *calculator_;
    calculator_ = std::move(next);
  }

  const RepeatedCase& made_;
  std::unique_ptr<CAdExpCalculate> calculator_ = std::make_unique<CAdExpCalculate>();
};

bool HasOneValue(const RepeatedCase& made, std::size_t name) {
  return std::all_of(made.rounds.begin(), made.rounds.end(), [&](const Round& round) {
    return SameBits(round.values[name], made.rounds.front().values[name]);
  });
}

std::string RowsDifference(const RepeatedCase& made, const std::vector<Outcome>& expected) {
  CAdExpCalculate calculator(CString(made.formula));
  calculator.SetKeyWord(Strings(made.keywords));
  std::vector<std::vector<double>> values(made.names.size());
  std::vector<ValueColumn> columns;
  for (std::size_t name = 0; name < made.names.size(); ++name) {
    if (made.keeps_fixed_values_apart && HasOneValue(made, name)) {
      calculator.SetVarValue(made.names[name].c_str(), made.rounds.front().values[name], false);
      continue;
    }
    for (std::size_t row = 0; row < made.rows; ++row)
      values[name].push_back(made.rounds[row % made.rounds.size()].values[name]);
    columns.push_back({CString(made.names[name]), values[name].data()});
  }
  std::vector<double> results(made.rows, -7);
  std::vector<int> errors(made.rows, -7);
  CalculateRows(calculator, columns, made.rows, results.data(), errors.data());
  for (std::size_t row = 0; row < made.rows; ++row) {
    const Outcome& once = expected[row % expected.size()];
    Findings findings("row " + std::to_string(row), "once");
    findings.Whole("error", errors[row], once.error);
    findings.Number("value", results[row], once.value);
    if (!findings.First().empty()) return findings.First();
  }
  return {};
}

}  // namespace

std::string RepeatedDifference(const RepeatedCase& made) {
  std::vector<Outcome> expected;
  AgainAndAgain again(made);
  for (const Round& round : made.rounds) {
    expected.push_back(Fresh(made, round));
    Findings findings("once", "reference");
    Compare(expected.back(), ByReference(made, round), findings);
    if (!findings.First().empty()) return findings.First();
    const std::string difference = again.Difference(round, expected.back());
    if (!difference.empty()) return "round " + std::to_string(expected.size()) + ", " + difference;
  }
  return RowsDifference(made, expected);
}

std::string Shown(const RepeatedCase& made) {
  std::string out = "formula \"" + Shown(made.formula) + "\", rows " + std::to_string(made.rows);
  if (made.keeps_fixed_values_apart) out += ", fixed values apart";
  for (const Text& name : made.keywords) out += ", keyword \"" + Shown(name) + '"';
  for (const Round& round : made.rounds) {
    out += "\n ";
    for (std::size_t i = 0; i < made.names.size(); ++i)
      out += " \"" + Shown(made.names[i]) + "\" = " + ShownNumber(round.values[i]);
    for (const auto& [flag, name] :
         {std::pair(round.values_first, "values first"), std::pair(round.small_letters, "small letters"),
          std::pair(round.asks_text, "asks for the text"),
          std::pair(round.calculates_twice, "calculates twice"),
          std::pair(round.other_before, "another formula before"),
          std::pair(round.clears_before, "values cleared before"),
          std::pair(round.is_copied_before, "object copied before")}) {
      if (flag) out += std::string(", ") + name;
    }
  }
  return out;
}

RepeatedCase Shrunk(RepeatedCase made) {
  const auto fails = [&made] { return !made.rounds.empty() && !RepeatedDifference(made).empty(); };
  ShrinkList(made.rounds, fails);
  for (const std::size_t rows : {made.rounds.size(), std::size_t{33}, std::size_t{65}}) {
    const std::size_t whole = made.rows;
    made.rows = rows;
    if (rows < whole && fails()) break;
    made.rows = whole;
  }
  ShrinkList(made.keywords, fails);
  ShrinkText(made.formula, fails);
  for (Round& round : made.rounds) {
    for (double& value : round.values) ShrinkNumber(value, fails);
    for (bool Round::*flag :
         {&Round::values_first, &Round::small_letters, &Round::asks_text, &Round::calculates_twice,
          &Round::other_before, &Round::clears_before, &Round::is_copied_before}) {
      const bool whole = round.*flag;
      round.*flag = false;
      if (!fails()) round.*flag = whole;
    }
  }
  return made;
}

}  // namespace lorv::test
