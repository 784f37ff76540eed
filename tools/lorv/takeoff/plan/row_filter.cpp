#include "tools/lorv/takeoff/plan/row_filter.h"

#include <algorithm>
#include <ostream>

#include "tools/lorv/command/verb.h"
#include "tools/lorv/formula/caret_text.h"
#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/screen/display_width.h"
#include "tools/lorv/takeoff/plan/ready_block.h"

// The condition of --where. It is a formula like any other, typed by people who think of classes and storeys
// and not of quotes, so words may stand bare in it; what that may hide (a title with a slip of the pen) is
// reported as a doubt.

namespace lorv::tool {
namespace {

// Messages that are thrown have no terminal to ask for its width.
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
  // Both sides are looked at: people write class=墙 as well as '墙'=class.
  at = SkipBlanks(text, first - 1, -1);
  const int before = at;
  while (at >= 0 && IsEqualitySign(text[at])) --at;
  if (at < before && SkipBlanks(text, at, -1) >= 0 && text[SkipBlanks(text, at, -1)] == '\'') return true;
  if (before < 0 || text[before] != '(') return false;
  const CString call = text.Left(before).TrimRight();
  return call.Right(4).CompareNoCase(_T("FIND")) == 0;
}

// Whether a quotation mark of a kind that the language lacks stands there; `closing` is its other half.
bool IsForeignQuote(TCHAR c, TCHAR& closing) {
  if (c != u'"' && c != u'\u201C' && c != u'\u2018') return false;
  closing = c == u'"' ? c : static_cast<TCHAR>(c + 1);
  return true;
}

// A text in double quotes, or in those that Chinese writes, stands in the language's own: whoever knows any
// other language types class="Wall". A mark without its other half stays, and is refused at its place; so
// does a text with an apostrophe, which no quotes of the language hold, and what single quotes hold already.
CString WithPlainQuotes(const CString& typed) {
  CString text = typed;
  for (int at = 0; at < text.GetLength(); ++at) {
    TCHAR closing = u'\'';
    const bool is_foreign = IsForeignQuote(text[at], closing);
    if (!is_foreign && text[at] != u'\'') continue;
    const int end = text.Find(closing, at + 1);
    if (end < 0) return text;
    const bool is_plain = text.Mid(at, end - at).Find(u'\'') < 0;
    if (is_foreign && is_plain) {
      text.SetAt(at, u'\'');
      text.SetAt(end, u'\'');
    }
    at = end;
  }
  return text;
}

}  // namespace

RowFilter::RowFilter(const std::string& formula, const Planner& planner, const ComponentsFile& file)
    : planner_(planner), file_(file) {
  const CString typed = WithPlainQuotes(CString::FromUtf8(formula));
  text_ = WithWords(typed, planner);
  formula_ = std::make_unique<BoundFormula>(
      // Without the suite's digits: a filter chooses components and makes no quantity that could
      // differ from the suite's.
      text_, [this](const CString& key) { return SymbolOf(key); }, planner.Known());
  if (!formula_->FaultOfText()) {
    doubts_ = formula_->Doubts();
    DoubtWordsAlone();
    return;
  }
  // Whatever is wrong here would leave out all components alike: the run ends before anything is written.
  const Fault& fault = *formula_->FaultOfText();
  throw BadInput(Say("--where cannot be calculated: {}", {fault.message}) + "\n" +
                 CaretText(text_, fault.position, fault.length, kMessageColumns));
}

// What nothing is named is a word, and stands in quotes from then on: the language of formulas has no other
// words.
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

// A column is one of words where any of its places meets a text: it cannot be both in one formula.
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
  const Outcome outcome = formula_->Evaluate(*this, std::nullopt);
  // The first doubt only: the same formula is evaluated for every component and would report the same each
  // time.
  if (outcome.doubt && doubts_.empty()) doubts_.push_back(*outcome.doubt);
  if (outcome.state == Outcome::kEvaluated) return outcome.value > 0;
  if (outcome.state == Outcome::kFaulty && doubts_.empty()) doubts_.push_back(outcome.fault);
  ++undecided_;
  return false;
}

// A title with a slip of the pen is a word: compared with another word it decides for all components alike.
void RowFilter::DoubtWordsAlone() {
  int end = -1;  // of the text in quotes before
  for (int open = text_.Find('\''); open >= 0; open = text_.Find('\'', end)) {
    int sign = end < 0 ? open : SkipBlanks(text_, end, 1);
    const int first = sign;
    while (sign < open && IsEqualitySign(text_[sign])) ++sign;
    if (sign > first && SkipBlanks(text_, sign, 1) == open) {
      doubts_.push_back({first, sign - first, Say("words are compared with words here: neither is a column"),
                         false, false});
    }
    end = text_.Find('\'', open + 1) + 1;
    if (end == 0) return;
  }
}

void RowFilter::Print(std::ostream& out, int columns) const {
  for (const Fault& doubt : doubts_) {
    out << "lorv: " << Say("warning: ") << "--where: " << Printable(doubt.message) << "\n"
        << CaretText(text_, doubt.position, doubt.length, columns);
  }
  if (undecided_ == 0) return;
  out << "lorv: "
      << (undecided_ == 1 ? Say("note: 1 component lacks a value that --where asks for, and was left out")
                          : Say("note: {} components lack a value that --where asks for, and were left out",
                                {std::to_string(undecided_)}))
      << "\n";
}

void RowFilter::Write(JsonText& json) const {
  json.Key("where").Open('{');
  json.Key("undecided").Number(undecided_);
  json.Key("warnings").Open('[');
  for (const Fault& doubt : doubts_) json.String(doubt.message);
  json.Close(']');
  json.Close('}');
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
