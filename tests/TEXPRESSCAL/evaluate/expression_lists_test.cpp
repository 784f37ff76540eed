// Public lists of expressions with known results. Where this formula language differs from the one a list was
// made for, the row falls under a named difference (docs/formula-differences.md); every other row must agree.

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "framework/text/number_text.h"
#include "tests/TEXPRESSCAL/formula_engines.h"
#include "tests/support/data.h"

namespace lorv::test {
namespace {

struct Row {
  std::string expression;
  std::string expected;
  std::string kind;
};

std::vector<Row> ReadRows(const std::filesystem::path& file) {
  std::vector<Row> rows;
  std::istringstream lines(ReadBytes(file));
  bool header = true;
  for (std::string line; std::getline(lines, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (!line.empty() && line[0] == '#' && header) continue;
    if (header) {
      header = false;
      continue;
    }
    const std::size_t first = line.find('\t');
    const std::size_t second = line.find('\t', first + 1);
    const std::size_t third = line.find('\t', second + 1);
    if (second == std::string::npos) continue;
    rows.push_back({line.substr(0, first), line.substr(first + 1, second - first - 1),
                    line.substr(second + 1, third - second - 1)});
  }
  return rows;
}

using Values = std::vector<std::pair<std::string, std::string>>;

// The names' values with all their digits; a negative one stands in brackets.
CString WithValues(const Row& row, const Values& values) {
  const CString text = CString::FromUtf8(row.expression);
  std::vector<TCHAR> buffer(static_cast<std::size_t>(text.GetLength()) + 4000);
  for (int i = 0; i < text.GetLength(); ++i) buffer[static_cast<std::size_t>(i)] = text[i];
  for (const auto& [name, value] : values) {
    ReplExprWithValue(buffer.data(), CString::FromUtf8(name), CString::FromUtf8(value), true);
  }
  return CString(buffer.data());
}

double Number(const std::string& text) {
  return ReadReal(CString::FromUtf8(text).View());
}

bool Agrees(const Row& row, const Evaluated& evaluated, double tolerance) {
  const bool clean = evaluated.changed == -1 && evaluated.code == 0;
  const bool within = std::fabs(evaluated.value - Number(row.expected)) <=
                      tolerance * std::max(1.0, std::fabs(Number(row.expected)));
  if (row.kind == "error") return !clean;
  if (row.kind == "nan") return clean && std::isnan(evaluated.value);
  if (row.kind == "inf") return clean && std::isinf(evaluated.value);
  if (row.kind == "not-value") return !clean || !within;
  return clean && within;
}

struct Difference {
  const char* name;
  const char* pattern;
};

// What a row of another language looks like; the first that fits names the difference.
const Difference kDifferences[] = {
    {"text in double quotes", "\""},
    {"conditional operator", "[?:]"},
    {"foreign operator or character", "[%~$#{}']|\\*\\*|[^&]&[^&]|[0-9]![^=]|\\badd\\b"},
    {"hexadecimal number", "\\b0x"},
    {"exponent form", "(^|[^A-Za-z_0-9])[0-9.]+[eE][-+]?[0-9]"},
    {"number that begins with a point", "(^|[^0-9])\\.[0-9]"},
    {"function without brackets", "\\b(sin|cos|asin|sqrt|log|exp)\\b *[^( ]|\\b(sin|cos|asin|sqrt|log|exp)$"},
    {"other name or function",
     "\\b(sum[0-9]?|sumud_100|f[0-9]of[0-9]|fac|ncr|npr|atan2|pow|ln|log10|log2|ping|valueof|strfun\\w*|"
     "funud\\w*|"
     "avg|atof|strlen|firstArg|lastArg|order|c[012]|cell|f0|multi|true|n|_a)\\b|[0-9]meg"},
    {"comma list", "^[^(]*,|(^|[^A-Za-z_0-9])\\([^()]*,|\\),"},
    {"assignment", "[^=<>!]=[^=]"},
    {"count of arguments", "\\b(sin|cos|sqrt)\\((\\)|[^()]*,)"},
    {"sign behind a sign", "[-+] *[-+]"},
    {"division by zero", "/0"},
    {"logarithm", "\\blog\\("},
    {"AND and OR on one level", "&&.*\\|\\||\\|\\|.*&&"},
    {"power to the left, sign before power", "\\^"},
};

std::string DifferenceOf(const Row& row) {
  for (const Difference& difference : kDifferences) {
    if (std::regex_search(row.expression, std::regex(difference.pattern))) return difference.name;
  }
  return "unexplained";
}

// The rows of a list that do not agree, counted by difference; both engines answer alike on every row.
std::map<std::string, int> Differing(const char* file, const Values& values, double tolerance,
                                     int& agreeing) {
  std::map<std::string, int> counts;
  agreeing = 0;
  const auto path = FindData(std::string("expressions/") + file);
  if (!path) return counts;
  for (const Row& row : ReadRows(*path)) {
    const CString formula = WithValues(row, values);
    const Evaluated evaluated = LibraryEngine::Evaluate(formula, "");
    const Evaluated reference = ReferenceEngine::Evaluate(formula, "");
    EXPECT_TRUE(evaluated == reference || (std::isnan(evaluated.value) && std::isnan(reference.value)))
        << row.expression;
    if (Agrees(row, evaluated, tolerance)) {
      ++agreeing;
      continue;
    }
    const std::string difference = DifferenceOf(row);
    ++counts[difference];
    EXPECT_NE(difference, "unexplained")
        << row.expression << " should give " << row.expected << ", failed at " << evaluated.changed
        << ", value " << evaluated.value;
  }
  return counts;
}

struct List {
  const char* file;
  Values values;
  double tolerance;
  int agreeing;
  std::map<std::string, int> differing;
};

const List kLists[] = {
    {"suite_a.tsv",
     {{"x", "2"}, {"f", "5"}, {"e", "2.718281828459045"}},
     1e-4,  // expected with four decimals
     52,
     {{"comma list", 7},
      {"division by zero", 2},
      {"exponent form", 6},
      {"foreign operator or character", 3},
      {"function without brackets", 9},
      {"logarithm", 1},
      {"number that begins with a point", 13},
      {"other name or function", 67}}},
    {"suite_b.tsv",
     {{"a", "1"},
      {"aa", "2"},
      {"b", "2"},
      {"c", "3"},
      {"d", "(-2)"},
      {"e", "2.718281828459045"},
      {"const", "1"},
      {"const1", "2"},
      {"const2", "3"}},
     1e-5,  // expected with six digits
     237,
     {{"assignment", 13},
      {"comma list", 4},
      {"conditional operator", 70},
      {"count of arguments", 1},
      {"foreign operator or character", 37},
      {"hexadecimal number", 2},
      {"other name or function", 58},
      {"power to the left, sign before power", 5},
      {"sign behind a sign", 4},
      {"text in double quotes", 14}}},
    {"long_arithmetic.tsv",
     {{"x", "11.12345678910737373"},
      {"y", "22.12345678910737373"},
      {"z", "33.12345678910737373"},
      {"w", "44.12345678910737373"}},
     1e-9,
     3514,
     {}},
    {"bench_basic.tsv",
     {{"a", "1.1"},
      {"b", "2.2"},
      {"c", "3.3"},
      {"x", "2.123456"},
      {"y", "3.123456"},
      {"z", "4.123456"},
      {"w", "5.123456"},
      {"e", "2.718281828459045"}},
     1e-9,  // PI stays this language's own, short by 1e-11
     1335,
     {{"power to the left, sign before power", 21}}},
};

TEST(ExpressionLists, RowsAgreeButForTheNamedDifferences) {
  if (!FindData("expressions/suite_a.tsv")) return;
  for (const List& list : kLists) {
    int agreeing = 0;
    EXPECT_EQ(Differing(list.file, list.values, list.tolerance, agreeing), list.differing) << list.file;
    EXPECT_EQ(agreeing, list.agreeing) << list.file;
  }
}

// The rows that differ in their powers, in this language's own reading.
TEST(ExpressionLists, PowersReadToTheLeftAndBehindTheSign) {
  const struct {
    const char* formula;
    const char* bracketed;
  } kPairs[] = {
      {"2^2^3", "(2^2)^3"},
      {"-2^2", "(-2)^2"},
      {"-(1+2)^2", "(-(1+2))^2"},
      {"3+-3^2", "3+((-3)^2)"},
      {"1.1^-2^3", "(1.1^(-2))^3"},
      {"-1.1^+2.2/1.1", "((-1.1)^2.2)/1.1"},
      {"-2^2^3-2^6", "((((-2)^2)^3))-(2^6)"},
      {"1.1^2.2^3.3^1.1", "(((1.1^2.2)^3.3)^1.1)"},
      {"3+4*2/(1-5)^2^3", "3+((4*2)/(((1-5)^2)^3))"},
      {"1+2-3*4/5^6*(2*(1-5+(3*7^9)*(4+6*7-3)))+12", "1+2-(((3*4)/(5^6))*(2*(1-5+(3*(7^9))*(4+6*7-3))))+12"},
  };
  for (const auto& pair : kPairs) {
    const Evaluated plain = LibraryEngine::Evaluate(CString::FromUtf8(pair.formula), nullptr);
    EXPECT_TRUE(plain == LibraryEngine::Evaluate(CString::FromUtf8(pair.bracketed), nullptr) ||
                std::isnan(plain.value))
        << pair.formula;
    EXPECT_EQ(plain.changed, -1) << pair.formula;
  }
}

}  // namespace
}  // namespace lorv::test
