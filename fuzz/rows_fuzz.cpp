// Property: a formula gives the same however it is evaluated: once by a calculator that has never seen it,
// again and again by one that has, for many rows at once, and by the slow reference.
//
// The first line is the formula. Each line behind it is a row: the values of A, B, AB, H, a Chinese name and
// a long one, parted by blanks; what is missing counts as in the row before.

#include <array>
#include <bit>
#include <sstream>

#include "TEXPRESSCAL/calculate_rows.h"
#include "fuzz/formula_input.h"

namespace {

constexpr std::array<const TCHAR*, 6> kNames = {_T("A"), _T("B"),  _T("AB"),
                                                _T("H"), _T("墙"), _T("LONGNAME")};
constexpr std::size_t kMaxRows = 20;
// Rows are repeated, so that some are gathered whichever they are.
constexpr std::size_t kAtLeast = 110;

using Row = std::array<double, kNames.size()>;

std::vector<Row> RowsOf(const std::vector<std::string>& lines) {
  std::vector<Row> rows(1);
  for (std::size_t i = 1; i < lines.size() && rows.size() < kMaxRows; ++i) {
    Row row = rows.back();
    std::istringstream words(lines[i]);
    std::string word;
    for (std::size_t name = 0; name < row.size() && words >> word; ++name)
      row[name] = lorv::fuzz::NumberOf(word);
    rows.push_back(row);
  }
  return rows;
}

struct Outcome {
  double value = 0;
  int error = 0;

  bool operator==(const Outcome& other) const {
    const bool same = std::bit_cast<std::uint64_t>(value) == std::bit_cast<std::uint64_t>(other.value);
    return error == other.error && (same || (value != value && other.value != other.value));
  }
};

Outcome EvaluatedBy(CAdExpCalculate& calculator, const CString& formula, const Row& row) {
  for (std::size_t i = 0; i < row.size(); ++i) calculator.SetVarValue(kNames[i], row[i], false);
  calculator.SetExpr(formula);
  Outcome outcome;
  outcome.value = calculator.Calculate(outcome.error);
  return outcome;
}

std::vector<Outcome> EvaluatedAsRows(const CString& formula, const std::vector<Row>& rows,
                                     std::size_t count) {
  std::array<std::vector<double>, kNames.size()> values;
  std::vector<lorv::ValueColumn> columns;
  for (std::size_t i = 0; i < kNames.size(); ++i) {
    for (std::size_t row = 0; row < count; ++row) values[i].push_back(rows[row % rows.size()][i]);
    columns.push_back({kNames[i], values[i].data()});
  }
  std::vector<double> results(count);
  std::vector<int> errors(count);
  lorv::CalculateRows(CAdExpCalculate(formula), columns, count, results.data(), errors.data());
  std::vector<Outcome> outcomes;
  for (std::size_t i = 0; i < count; ++i) outcomes.push_back({results[i], errors[i]});
  return outcomes;
}

std::string ReferenceDifference(const lorv::reference::Text& formula, const Row& row) {
  lorv::test::CalculatorCase made;
  lorv::test::CalculatorCase::Round round;
  round.set_formula = true;
  round.formula = formula;
  for (std::size_t i = 0; i < row.size(); ++i) round.values.emplace_back(kNames[i], row[i]);
  made.rounds.push_back(round);
  return lorv::test::CalculatorDifference(made);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::vector<std::string> lines = lorv::fuzz::LinesOf(data, size);
  const lorv::reference::Text text = lorv::fuzz::TextOf(lines.front());
  const CString formula(text);
  const std::vector<Row> rows = RowsOf(lines);
  std::vector<Outcome> expected;
  CAdExpCalculate again;
  for (const Row& row : rows) {
    CAdExpCalculate fresh;
    expected.push_back(EvaluatedBy(fresh, formula, row));
    const bool same = EvaluatedBy(again, formula, row) == expected.back();
    lorv::fuzz::Require(same ? "" : "again gives another outcome", lorv::test::Shown(text));
  }
  const std::vector<Outcome> as_rows = EvaluatedAsRows(formula, rows, kAtLeast);
  for (std::size_t i = 0; i < as_rows.size(); ++i) {
    const bool same = as_rows[i] == expected[i % rows.size()];
    lorv::fuzz::Require(same ? "" : "row " + std::to_string(i) + " gives another outcome",
                        lorv::test::Shown(text));
  }
  lorv::fuzz::Require(ReferenceDifference(text, rows.back()), lorv::test::Shown(text));
  return 0;
}
