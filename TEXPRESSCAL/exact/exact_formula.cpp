#include "TEXPRESSCAL/exact_formula.h"

#include <algorithm>
#include <map>
#include <mutex>

#include "TEXPRESSCAL/calculator.h"
#include "TEXPRESSCAL/diagnose/diagnose_text.h"
#include "TEXPRESSCAL/diagnose/formula_doubts.h"
#include "TEXPRESSCAL/diagnose/formula_trace.h"
#include "TEXPRESSCAL/evaluate/evaluator.h"
#include "TEXPRESSCAL/exact/exact_rows.h"
#include "TEXPRESSCAL/exact/hidden_numbers.h"
#include "TEXPRESSCAL/formula_words.h"
#include "TEXPRESSCAL/text/capitals.h"
#include "TEXPRESSCAL/text/operator_rewriting.h"
#include "TEXPRESSCAL/text_rewriting.h"

// A formula over values with all their digits. The calculator writes values into the text, which costs
// digits; here stand-in numbers are written, the text is parsed once, and the values are set into the leaves
// of the tree. Grammar and rules are therefore the calculator's own, and results differ from its results by
// digits alone.

namespace lorv {
namespace {

// Numbers of 15 digits stand for the names while the text is rewritten and parsed: whatever is done to
// literals, such as taking "1<H<3" apart, is done to them. The first one is a multiple of this that no number
// of the formula is like.
constexpr double kStandInStep = 1e14;
constexpr int kStandInSteps = 9;

// A text's stand-in begins with this unit, which is for private use.
constexpr TCHAR kTextMark = 0xF8F0;
constexpr unsigned kFirstTextNumber = 0xE000;
constexpr std::size_t kMostTexts = 0x1800;

class NoNameResolver final : public CValidParameter {
 public:
  int ValidParameter(LPCTSTR /*name*/) const override { return 0; }
};

// The first of the stand-ins; 0 if the formula is full of such numbers.
double FirstStandIn(TextView formula) {
  for (int step = 1; step <= kStandInSteps; ++step) {
    const CString beginning = CString::FromUtf8(std::to_string(step) + "0000000");
    if (formula.find(beginning.View()) == TextView::npos) return step * kStandInStep;
  }
  return 0;
}

CString NumberStandIn(double number) {
  return CString::FromUtf8(std::to_string(static_cast<long long>(number)));
}

CString TextStandIn(std::size_t name) {
  const TCHAR units[] = {'\'', kTextMark, static_cast<TCHAR>(kFirstTextNumber + name), '\''};
  return CString(TextView(units, std::size(units)));
}

}  // namespace

struct ExactFormula::State {
  struct Leaf {
    ExprNode* node;
    std::size_t name;
  };

  explicit State(TextView typed) : trace(typed) {}

  void Read(std::span<const ExactName> names);
  bool PutStandIns(std::span<const ExactName> names);
  bool StandsBesidePoint(const FormulaWord& word);
  void FindLeaves();
  int SlotOf(const ExprNode* leaf) const;
  double Evaluate(const double* values, int& code);
  FormulaDiagnosis ExplainHidden();

  FormulaTrace trace;
  ExprNode* root = nullptr;
  FormulaDiagnosis fault;
  std::vector<FormulaDiagnosis> doubts;
  double first_stand_in = 0;
  std::vector<bool> used;
  std::vector<Leaf> numbers;
  std::vector<Leaf> texts;
  std::map<std::size_t, std::basic_string<TCHAR>> words;  // the values of the texts
  int last_code = 0;
  const ExprNode* error_node = nullptr;
  bool may_hide = false;  // some part may be NaN or infinite while the result is finite
  bool has_rows = false;
  ExactRows rows;
  std::mutex tree;  // what rows leave to the tree they leave to one after the other
};

void ExactFormula::State::Read(std::span<const ExactName> names) {
  used.resize(names.size());
  first_stand_in = FirstStandIn(trace.Typed());
  // A formula with numbers of all nine beginnings cannot be distinguished from its stand-ins; it is refused
  // rather than misread.
  if (trace.Typed().size() > kMaxFormulaText || names.size() > kMostTexts || first_stand_in == 0) {
    fault = DiagnoseFormula(CString(trace.Typed()), {}, {});
    if (fault.fault == FormulaFault::kNone) fault.fault = FormulaFault::kTooLong;
    return;
  }
  if (!PutStandIns(names)) return;
  root = trace.Parse(NoNameResolver());
  if (root == nullptr) {
    std::vector<CString> known;
    for (const ExactName& name : names) known.push_back(name.name);
    for (const CDtaFunction& function : Functions()) known.emplace_back(function.pszName);
    fault = trace.ExplainParse(std::move(known));
    return;
  }
  doubts = DoubtsOf(trace, root);
  FindLeaves();
  const std::vector<const ExprNode*> hidden = PartsThatMayHide(root);
  may_hide = !hidden.empty();
  has_rows = texts.empty() &&
             rows.Make(root, names.size(), hidden, [this](const ExprNode* leaf) { return SlotOf(leaf); });
}

// From the last to the first, so that the places of those before stay.
bool ExactFormula::State::PutStandIns(std::span<const ExactName> names) {
  std::map<CString, std::size_t> index;
  for (std::size_t i = 0; i < names.size(); ++i) index.emplace(NameKey(names[i].name.View()), i);
  const std::vector<FormulaWord> found = NamesOf(trace.Typed());
  for (auto word = found.rbegin(); word != found.rend(); ++word) {
    const auto name = index.find(NameKey(word->name.View()));
    if (name == index.end()) continue;
    if (StandsBesidePoint(*word)) return false;
    const auto at = static_cast<std::size_t>(word->position);
    // "2A" means 2 * A once A has a value; the replacement of values writes the same "*".
    const bool behind_digit = at > 0 && IsDigit(trace.Typed()[at - 1]);
    const CString fresh = names[name->second].is_text
                              ? TextStandIn(name->second)
                              : NumberStandIn(first_stand_in + static_cast<double>(name->second));
    trace.Text().Splice(at, static_cast<std::size_t>(word->length),
                        behind_digit ? (CString(_T("*")) + fresh).View() : fresh.View());
    used[name->second] = true;
  }
  return true;
}

// A value's digits would join those behind the point.
bool ExactFormula::State::StandsBesidePoint(const FormulaWord& word) {
  const auto first = static_cast<std::size_t>(word.position);
  const std::size_t behind = first + static_cast<std::size_t>(word.length);
  const bool before = first > 0 && trace.Typed()[first - 1] == '.';
  if (!before && (behind >= trace.Typed().size() || trace.Typed()[behind] != '.')) return false;
  const FaultText& message = TextOfFault(FormulaFault::kStrayCharacter);
  fault.fault = message.fault;
  fault.position = static_cast<int>(before ? first - 1 : behind);
  fault.length = 1;
  fault.chinese.Format(message.chinese, _T("."));
  fault.english.Format(message.english, _T("."));
  return true;
}

int ExactFormula::State::SlotOf(const ExprNode* leaf) const {
  const auto found =
      std::find_if(numbers.begin(), numbers.end(), [=](const Leaf& l) { return l.node == leaf; });
  return found == numbers.end() ? -1 : static_cast<int>(found->name);
}

void ExactFormula::State::FindLeaves() {
  std::vector<ExprNode*> open{root};
  while (!open.empty()) {
    ExprNode* const node = open.back();
    open.pop_back();
    if (node == nullptr) continue;
    open.push_back(node->left);
    open.push_back(node->right);
    if (node->kind == kText && node->length == 2 && node->text[0] == kTextMark) {
      texts.push_back({node, static_cast<std::size_t>(node->text[1]) - kFirstTextNumber});
    }
    if (node->kind != kNumber) continue;
    const double name = node->value - first_stand_in;
    if (name >= 0 && name < static_cast<double>(used.size()))
      numbers.push_back({node, static_cast<std::size_t>(name)});
  }
}

double ExactFormula::State::Evaluate(const double* values, int& code) {
  for (const Leaf& leaf : numbers) leaf.node->value = values[leaf.name];
  for (const Leaf& leaf : texts) {
    const std::basic_string<TCHAR>& word = words[leaf.name];
    leaf.node->text = word.c_str();
    leaf.node->length = static_cast<unsigned>(word.size());
  }
  Evaluator evaluator(nullptr);
  const double result = evaluator.EvaluateAsNumber(root);
  code = evaluator.Error();
  error_node = evaluator.ErrorNode();
  if (code == kNoError && evaluator.OverflowNode() != nullptr) {
    code = kDoubtfulNumber;
    error_node = evaluator.OverflowNode();
  }
  if (may_hide && (code == kNoError || code == kDoubtfulNumber)) {
    if (const ExprNode* const hidden = HiddenPart(root)) {
      code = kHiddenNoNumber;
      error_node = hidden;
    }
  }
  last_code = code;
  return result;
}

ExactFormula::ExactFormula(const CString& formula, std::span<const ExactName> names)
    : state_(std::make_unique<State>(formula.View())) {
  state_->Read(names);
}

ExactFormula::ExactFormula(ExactFormula&& other) noexcept = default;
ExactFormula& ExactFormula::operator=(ExactFormula&& other) noexcept = default;
ExactFormula::~ExactFormula() = default;

const FormulaDiagnosis& ExactFormula::Fault() const {
  return state_->fault;
}

const std::vector<FormulaDiagnosis>& ExactFormula::Doubts() const {
  return state_->doubts;
}

bool ExactFormula::Uses(std::size_t name) const {
  return state_->used[name];
}

// What is done to a text in quotes of the formula.
void ExactFormula::SetText(std::size_t name, TextView text) {
  GrowingEdit edit;
  CopyCapitals(text, edit.Overwrite(text.size()));
  ShortenOperators(edit, SignsOf(edit.View()));
  state_->words[name] = edit.View();
}

double ExactFormula::Evaluate(const double* values, int& code) {
  if (state_->root != nullptr) return state_->Evaluate(values, code);
  code = kNoFormula;
  return 0;
}

// A call or a value is named as a whole, an operator with what stands behind it.
FormulaDiagnosis ExactFormula::State::ExplainHidden() {
  const std::size_t first = error_node->place;
  std::size_t operand = first;
  unsigned short kind = kNot;
  if (error_node->kind < kSin && error_node->kind != kNumber) {
    kind = error_node->kind;
    ++operand;
    while (operand < trace.Parsed().size() && trace.Parsed()[operand] == ' ') ++operand;
  }
  return trace.Named(FormulaFault::kNoNumber, first, trace.OperandEnd(operand, kind));
}

FormulaDiagnosis ExactFormula::Explain() {
  if (state_->root == nullptr || state_->last_code == kNoError) return {};
  if (state_->last_code == kHiddenNoNumber) return state_->ExplainHidden();
  if (state_->last_code != kDoubtfulNumber)
    return state_->trace.ExplainEvaluation(state_->last_code, state_->error_node);
  const std::size_t first = state_->error_node->place;
  FormulaDiagnosis doubt =
      state_->trace.Named(FormulaFault::kBeyond32Bits, first, state_->trace.OperandEnd(first, kNot));
  doubt.stops = false;
  return doubt;
}

bool ExactFormula::EvaluateRows(const double* const* columns, std::size_t rows, double* results,
                                int* codes) const {
  State& state = *state_;
  if (state.root == nullptr || !state.texts.empty()) return false;
  std::vector<double> values(state.used.size());
  const auto by_tree = [&](std::size_t row) {
    for (std::size_t i = 0; i < values.size(); ++i) values[i] = columns[i] == nullptr ? 0 : columns[i][row];
    int code = 0;
    // The tree holds one row's values; rows of several threads take turns.
    const std::lock_guard lock(state.tree);
    results[row] = state.Evaluate(values.data(), code);
    if (codes != nullptr) codes[row] = code;
  };
  if (state.has_rows) {
    state.rows.Evaluate({columns, rows, results, codes}, by_tree);
  } else {
    for (std::size_t row = 0; row < rows; ++row) by_tree(row);
  }
  return true;
}

bool CalculateExactRows(const CString& formula, std::span<const ValueColumn> columns, std::size_t rows,
                        double* results, int* codes) {
  std::vector<ExactName> names;
  std::vector<const double*> values;
  // Of two columns of one name the later counts, as in CalculateRows.
  for (auto column = columns.rbegin(); column != columns.rend(); ++column) {
    names.push_back({column->name});
    values.push_back(column->values);
  }
  return ExactFormula(formula, names).EvaluateRows(values.data(), rows, results, codes);
}

}  // namespace lorv
