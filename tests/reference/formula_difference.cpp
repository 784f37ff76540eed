#include "tests/reference/formula_difference.h"

#include "TEXPRESSCAL/express.h"
#include "tests/reference/findings.h"
#include "tests/reference/reference_calculator.h"
#include "tests/reference/reference_expression.h"

namespace lorv::test {

namespace {

CString Library(const Text& text) {
  return CString(text);
}

class NamesResolver final : public CValidParameter {
 public:
  explicit NamesResolver(const std::vector<Text>& names) : names_(names) {}
  bool Accepts(const Text& name) const {
    for (const Text& known : names_) {
      if (known == name) return true;
    }
    return false;
  }
  int ValidParameter(LPCTSTR name) const override { return Accepts(name) ? 1 : 0; }

 private:
  const std::vector<Text>& names_;
};

// Beyond the library's nesting limit the two part company by design.
bool MayNestTooDeep(const Text& text) {
  std::size_t openings = 0;
  for (const TCHAR c : text) openings += c == '(' || c == '|' || c == '-' ? 1 : 0;
  return openings >= static_cast<std::size_t>(kMaxNesting);
}

void CompareKeyWords(const CAdExpCalculate& library, const reference::Calculator& plain, Findings& findings) {
  const TDefsetVars& words = library.GetKeywords();
  findings.Whole("keywords", static_cast<long long>(words.size()),
                 static_cast<long long>(plain.GetKeywords().size()));
  for (std::size_t i = 0; findings.First().empty() && i < words.size(); ++i) {
    findings.Texts("keyword", CString(static_cast<LPCTSTR>(words[i])), plain.GetKeywords()[i]);
  }
}

void CompareNames(const CAdExpCalculate& library, const reference::Calculator& plain, Findings& findings) {
  CStringArray names;
  const int count = library.SplitExprVars(names);
  const std::vector<Text> expected = plain.SplitExprVars();
  findings.Whole("count of names", count, static_cast<long long>(expected.size()));
  for (std::size_t i = 0; findings.First().empty() && i < expected.size(); ++i) {
    findings.Texts("name", names.GetAt(static_cast<int>(i)), expected[i]);
  }
}

void CompareWork(CAdExpCalculate& library, reference::Calculator& plain, Findings& findings) {
  int error = -7;
  int expected_error = -7;
  const double value = library.Calculate(error);
  const double expected = plain.Calculate(expected_error);
  findings.Whole("error", error, expected_error);
  findings.Number("value", value, expected);
  findings.Texts("text with values", library.GetCalcedExpr(), plain.GetCalcedExpr());
}

void CompareValidity(const CAdExpCalculate& library, const reference::Calculator& plain, Findings& findings) {
  CString message;
  Text expected;
  findings.Whole("valid", library.ValidExp(message) ? 1 : 0, plain.ValidExp(expected) ? 1 : 0);
  findings.Texts("message", message, expected);
}

CStringArray Strings(const std::vector<Text>& texts) {
  CStringArray out;
  for (const Text& text : texts) out.Add(Library(text));
  return out;
}

// Growth beyond this is no work for a reference that copies its text at every step.
constexpr std::size_t kLongestWork = 20000;

}  // namespace

std::string ParserDifference(const Text& formula, bool resolves, const std::vector<Text>& names) {
  if (MayNestTooDeep(formula)) return {};
  NamesResolver resolver(names);
  CExpression library;
  reference::Expression plain;
  if (resolves) {
    library.m_pValidParameter = &resolver;
    plain.resolver = [&resolver](const Text& name) { return resolver.Accepts(name); };
  }
  Findings findings;
  const int changed = library.ChangeExpression(formula.c_str());
  const int expected = plain.ChangeExpression(formula);
  findings.Whole("position", changed, expected);
  if (expected > 0) findings.Whole("m_nPos", library.m_nPos, expected);
  findings.Whole("tree", library.m_pRoot != nullptr ? 1 : 0, plain.root != nullptr ? 1 : 0);
  findings.Texts("rewritten text", CString(library.m_pszExpr), plain.rewritten);
  if (plain.var_list.size() < 254)
    findings.Texts("m_szVarList", CString(library.m_szVarList), plain.var_list);
  double value = 7;
  double expected_value = 7;
  findings.Whole("code", library.Value(value), plain.Value(expected_value));
  findings.Number("value", value, expected_value);
  findings.Whole("m_nError", library.m_nError, plain.error);
  return findings.First();
}

std::string CalculatorDifference(const CalculatorCase& made) {
  CAdExpCalculate library;
  reference::Calculator plain;
  Findings findings;
  findings.Whole("SetKeyWord", library.SetKeyWord(Strings(made.keywords)), plain.SetKeyWord(made.keywords));
  for (const CalculatorCase::Round& round : made.rounds) {
    if (MayNestTooDeep(round.formula)) return findings.First();
    if (round.clear_values) {
      library.ClearAllValue();
      plain.ClearAllValue();
    }
    if (round.set_formula) {
      library.SetExpr(round.formula.c_str());
      plain.SetExpr(round.formula);
    }
    for (const auto& [name, value] : round.values) {
      library.SetVarValue(name.c_str(), value, false);
      plain.SetVarValue(name, value, false);
    }
    CompareKeyWords(library, plain, findings);
    CompareValidity(library, plain, findings);
    CompareNames(library, plain, findings);
    CompareWork(library, plain, findings);
    findings.Texts("text", library.GetExpr(), plain.GetExpr());
    if (!findings.First().empty() || plain.LongestWork() > kLongestWork) break;
  }
  return findings.First();
}

}  // namespace lorv::test
