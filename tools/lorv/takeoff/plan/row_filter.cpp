#include "tools/lorv/takeoff/plan/row_filter.h"

#include <algorithm>

#include "tools/lorv/command/verb.h"
#include "tools/lorv/formula/caret_text.h"
#include "tools/lorv/takeoff/plan/ready_block.h"
#include "tools/lorv/text/spoken_language.h"

namespace lorv::tool {
namespace {

constexpr int kMessageColumns = 100;

bool IsEqualitySign(TCHAR c) {
  return c == '=' || c == '<' || c == '>' || c == '!';
}

int SkipBlanks(const CString& text, int at, int step) {
  while (at >= 0 && at < text.GetLength() && text[at] == ' ') at += step;
  return at;
}

// Whether what stands at [first, behind) is compared with a quoted text, or is what FIND searches in.
bool MeetsText(const CString& text, int first, int behind) {
  int at = SkipBlanks(text, behind, 1);
  const int sign = at;
  while (at < text.GetLength() && IsEqualitySign(text[at])) ++at;
  if (at > sign && SkipBlanks(text, at, 1) < text.GetLength() && text[SkipBlanks(text, at, 1)] == '\'')
    return true;
  at = SkipBlanks(text, first - 1, -1);
  const int before = at;
  while (at >= 0 && IsEqualitySign(text[at])) --at;
  if (at < before && SkipBlanks(text, at, -1) >= 0 && text[SkipBlanks(text, at, -1)] == '\'') return true;
  if (before < 0 || text[before] != '(') return false;
  const CString call = text.Left(before).TrimRight();
  return call.Right(4).CompareNoCase(_T("FIND")) == 0;
}

}  // namespace

RowFilter::RowFilter(const std::string& formula, const Planner& planner, const ComponentsFile& file)
    : planner_(planner), file_(file) {
  const CString typed = CString::FromUtf8(formula);
  text_ = WithWords(typed, planner);
  formula_ = std::make_unique<BoundFormula>(
      text_, [this](const CString& key) { return SymbolOf(key); }, planner.Known());
  if (!formula_->FaultOfText()) return;
  const Fault& fault = *formula_->FaultOfText();
  throw BadInput(Say("--where cannot be worked: {}", {fault.message}) + "\n" +
                 CaretText(text_, fault.position, fault.length, kMessageColumns));
}

// What nothing is named is a word, and stands in quotes from then on.
CString RowFilter::WithWords(const CString& typed, const Planner& planner) const {
  CString text;
  int at = 0;
  for (const FormulaWord& word : NamesOf(typed.View())) {
    text += typed.Mid(at, word.position - at);
    at = word.position + word.length;
    const bool is_known = planner.NameOf(NameKey(word.name.View())).kind != Symbol::kUnknown;
    text += is_known ? word.name : _T("'") + word.name + _T("'");
  }
  return text + typed.Mid(at);
}

Symbol RowFilter::SymbolOf(const CString& key) const {
  const Symbol symbol = planner_.NameOf(key);
  if (symbol.kind != Symbol::kDimension) return symbol;
  const std::optional<std::size_t> column = planner_.Dimensions()[symbol.index].column;
  if (!column) return symbol;
  for (const FormulaWord& word : NamesOf(text_.View())) {
    if (NameKey(word.name.View()) != key) continue;
    if (MeetsText(text_, word.position, word.position + word.length)) return {Symbol::kText, *column};
  }
  return symbol;
}

bool RowFilter::Passes() {
  const Outcome outcome = formula_->Work(*this, std::nullopt);
  if (outcome.state == Outcome::kWorked) return outcome.value > 0;
  ++undecided_;
  return false;
}

std::optional<double> RowFilter::DimensionOf(std::size_t index) {
  const Dimension& dimension = planner_.Dimensions()[index];
  if (!dimension.column) return std::nullopt;
  bool is_text = false;
  return NumberOfCell(file_.Row()[*dimension.column], dimension.factor, is_text);
}

CString RowFilter::TextOf(std::size_t column) {
  return CString::FromUtf8(file_.Row()[column]);
}

}  // namespace lorv::tool
