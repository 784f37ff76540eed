#include "tools/lorv/takeoff/plan/suite_formula.h"

#include <algorithm>
#include <cmath>

#include "TEXPRESSCAL/calculate_rows.h"
#include "tools/lorv/formula/formula_digits.h"
#include "tools/lorv/language/spoken_language.h"

// Evaluates a formula with the suite's own calculator, for bills that must agree with the suite to the last
// digit. The calculator sets values into the text by replacing names, with limits on their length and script;
// so it gets a text of short marks, and what it says of that text is reported of the one that was typed.

namespace lorv::tool {
namespace {

// Characters for private use: no letter of any language, so no name and no text typed by a user holds them.
constexpr unsigned kFirstMark = 0xE000;
constexpr unsigned kLastMark = 0xF8FF;

TCHAR MarkOf(std::size_t dimension) {
  return static_cast<TCHAR>(kFirstMark + dimension);
}

bool IsMark(TCHAR c) {
  return static_cast<unsigned>(c) >= kFirstMark && static_cast<unsigned>(c) <= kLastMark;
}

// Words of a component as a text of the formula. The language has no way to write a quote inside a text.
CString Quoted(const CString& words) {
  CString text(_T("'"));
  for (int i = 0; i < words.GetLength(); ++i) {
    const TCHAR c = words[i];
    text += c == '\'' ? _T('"') : IsMark(c) ? _T('?') : c;
  }
  return text + _T("'");
}

// The calculator keeps errors of these to itself, so their results are looked at a second time.
bool MayFailSilently(const CString& formula) {
  const CString upper = NameKey(formula.View());
  return upper.Find(_T("SQRT")) >= 0 || upper.Find(_T("LOG")) >= 0 || upper.Find(_T("()")) >= 0 ||
         upper.Find(_T("''")) >= 0;
}

}  // namespace

// The text that goes to the calculator, and where each piece's value stands in it.
struct SuiteFormula::Text {
  CString text;
  std::vector<int> ends;  // for each piece: the end of its stretch, where its value begins
  CMapValue values;
};

SuiteFormula::SuiteFormula(const CString& formula, const Lookup& lookup)
    : typed_(formula), calculator_(std::make_unique<CAdExpCalculate>()) {
  Bind(lookup);
  if (!fault_) Check();
}

void SuiteFormula::Bind(const Lookup& lookup) {
  // Known from the text alone, so that formulas without such functions pay nothing.
  silent_codes_ = MayFailSilently(typed_);
  int at = 0;
  for (const FormulaWord& word : NamesOf(typed_.View())) {
    Piece piece{typed_.Mid(at, word.position - at), at, word, lookup(NameKey(word.name.View()))};
    at = word.position + word.length;
    BindWord(word, piece);
    pieces_.push_back(std::move(piece));
  }
  pieces_.push_back({typed_.Mid(at), at, {}, {}});
}

// A name that stands for a number gets its mark; the first one that stands for nothing is the fault.
void SuiteFormula::BindWord(const FormulaWord& word, Piece& piece) {
  const int behind = word.position + word.length;
  if (piece.symbol.kind == Symbol::kUnknown && !fault_) {
    fault_ = Fault{word.position, word.length, Say("nothing is named \"{}\" here", {word.name.ToUtf8()}),
                   true, true};
  }
  if (typed_[behind] == '.' && !fault_) {
    // The value's digits would swallow it: 6 for the name and ".5" make 6.5.
    fault_ = Fault{behind, 1, Say("no point may stand behind a name"), true, true};
  }
  if (piece.symbol.kind != Symbol::kDimension) return;
  const auto found = std::find(dimensions_.begin(), dimensions_.end(), piece.symbol.index);
  piece.mark = MarkOf(static_cast<std::size_t>(found - dimensions_.begin()));
  if (found == dimensions_.end()) dimensions_.push_back(piece.symbol.index);
}

// A formula that cannot be parsed with some value for each name cannot be calculated for any component.
void SuiteFormula::Check() {
  struct Ones : ValueSource {
    std::optional<double> DimensionOf(std::size_t) override { return 1000000; }
    std::optional<double> ResultOf(std::size_t) override { return 1000000; }
    CString TextOf(std::size_t) override { return _T("A"); }
  } ones;
  Outcome outcome;
  const Text text = Fill(ones, std::nullopt, outcome);
  if (outcome.state == Outcome::kFaulty) {
    fault_ = outcome.fault;
    return;
  }
  const std::optional<Fault> fault = FaultOf(text.text, text.values, {});
  if (fault && fault->syntax) fault_ = AsTyped(*fault, text);
  // Words and earlier quantities are set in as text: no one text then holds for all rows.
  const bool same_for_all = std::all_of(pieces_.begin(), pieces_.end(), [](const Piece& piece) {
    return piece.symbol.kind != Symbol::kText && piece.symbol.kind != Symbol::kResult;
  });
  if (!fault_ && !silent_codes_ && same_for_all) row_text_ = text.text;
}

std::vector<double> SuiteFormula::EvaluateRows(const std::vector<std::vector<double>>& columns,
                                               std::size_t rows) const {
  std::vector<ValueColumn> named;
  for (std::size_t i = 0; i < columns.size(); ++i) named.push_back({CString(MarkOf(i)), columns[i].data()});
  std::vector<double> results(rows);
  std::vector<int> errors(rows);
  // Rows give what single calculations give: what was evaluated ahead is the suite's number, too.
  CalculateRows(CAdExpCalculate(row_text_), named, rows, results.data(), errors.data());
  for (std::size_t row = 0; row < rows; ++row) {
    if (errors[row] != 0 || !std::isfinite(results[row])) results[row] = std::nan("");
  }
  return results;
}

SuiteFormula::Text SuiteFormula::Fill(ValueSource& source, std::optional<double> instead, Outcome& outcome) {
  Text filled;
  for (const Piece& piece : pieces_) {
    // The place is noted whether or not a value comes, so that faults can be led back to what was typed.
    filled.text += piece.text;
    filled.ends.push_back(filled.text.GetLength());
    std::optional<double> value;
    switch (piece.symbol.kind) {
      case Symbol::kUnknown:
        continue;
      case Symbol::kText:
        filled.text += Quoted(source.TextOf(piece.symbol.index));
        continue;
      case Symbol::kConstant:
        value = piece.symbol.constant;
        break;
      case Symbol::kDimension:
        value = source.DimensionOf(piece.symbol.index);
        break;
      case Symbol::kResult:
        value = source.ResultOf(piece.symbol.index);
        break;
    }
    // After the value of its own, as a rule's number stands for what is missing and for nothing else.
    if (!value) value = instead;
    if (!value) {
      outcome.state = Outcome::kMissing;
      outcome.fault = {piece.word.position, piece.word.length,
                       Say("no value for \"{}\"", {piece.word.name.ToUtf8()}), false, true};
      return filled;
    }
    // A dimension goes in by its mark and gets three decimals; constants and results are literals and
    // keep all theirs.
    if (piece.mark != 0) filled.values[CString(piece.mark)] = *value;
    filled.text += piece.mark != 0 ? CString(piece.mark) : Literal(*value);
  }
  // Beyond this the calculator would cut the text without a word, and give the number of what is left.
  if (filled.text.GetLength() > kMaxFormulaText) {
    outcome.state = Outcome::kFaulty;
    outcome.fault = {0, typed_.GetLength(),
                     Say("with its values set in, the formula is longer than {} characters",
                         {std::to_string(kMaxFormulaText)}),
                     false, true};
  }
  return filled;
}

// What was set in for a name stands for the whole name: its beginning for a beginning, its end for an end.
int SuiteFormula::TypedPlace(int position, bool end, const Text& text) const {
  for (std::size_t i = 0; i < pieces_.size(); ++i) {
    const Piece& piece = pieces_[i];
    const int begin = text.ends[i] - piece.text.GetLength();
    // A beginning at the end of a stretch is the beginning of the name behind it.
    const bool inside = end ? position <= text.ends[i] : position < text.ends[i];
    if (inside && position >= begin) return piece.position + position - begin;
    if (position < begin) {
      const FormulaWord& word = pieces_[i - 1].word;
      return end ? word.position + word.length : word.position;
    }
  }
  return typed_.GetLength();
}

Fault SuiteFormula::AsTyped(const Fault& fault, const Text& text) const {
  Fault typed = fault;
  typed.position = TypedPlace(fault.position, false, text);
  const int behind =
      fault.length == 0 ? typed.position : TypedPlace(fault.position + fault.length, true, text);
  typed.length = std::max(0, behind - typed.position);
  // The message quotes the stretch that was evaluated: the user knows the one that was typed.
  const std::string evaluated = text.text.Mid(fault.position, fault.length).ToUtf8();
  const std::size_t at = evaluated.empty() ? std::string::npos : typed.message.find("'" + evaluated + "'");
  if (at != std::string::npos) {
    typed.message.replace(at + 1, evaluated.size(), typed_.Mid(typed.position, typed.length).ToUtf8());
  }
  return typed;
}

Outcome SuiteFormula::Evaluate(ValueSource& source, std::optional<double> instead) {
  Outcome outcome;
  if (fault_) {
    outcome.state = Outcome::kFaulty;
    outcome.fault = *fault_;
    return outcome;
  }
  const Text text = Fill(source, instead, outcome);
  if (outcome.state != Outcome::kEvaluated) return outcome;
  calculator_->SetExpr(text.text);
  // New values replace those of the component before.
  for (const auto& [name, value] : text.values) calculator_->SetVarValue(name, value, false);
  int error = 0;
  outcome.value = calculator_->Calculate(error);
  std::optional<Fault> fault;
  // The second look parses the text once more, and is spared where the calculator would have said so.
  if (error != 0 || silent_codes_) fault = FaultOf(text.text, text.values, {});
  if (!fault && !std::isfinite(outcome.value)) {
    fault = Fault{0, text.text.GetLength(), Say("the result is no number"), false, true};
  }
  // The calculator failed where the diagnosis sees nothing: the place that it names is all that is known.
  if (!fault && error != 0) fault = Fault{error, 1, Say("the formula cannot be calculated"), false, true};
  if (!fault) return outcome;
  outcome.state = Outcome::kFaulty;
  outcome.fault = AsTyped(*fault, text);
  return outcome;
}

}  // namespace lorv::tool
