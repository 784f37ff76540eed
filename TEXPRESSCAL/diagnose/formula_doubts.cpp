#include "TEXPRESSCAL/diagnose/formula_doubts.h"

#include <algorithm>

#include "TEXPRESSCAL/evaluate/evaluator.h"
#include "TEXPRESSCAL/language/operators.h"
#include "framework/text/char_class.h"

// Finds what can be evaluated and still hardly means what it seems to. It looks at the tree that the
// evaluator uses, in the order of the text, and changes nothing: a doubt never keeps a formula from its
// number.

namespace lorv {
namespace {

bool IsCall(unsigned short kind) {
  return kind >= kSin && kind <= kFind && kind != kNegate;
}

// A text in quotes, or a sum of such.
bool IsText(const ExprNode* node) {
  while (node != nullptr && node->kind == kAdd && IsText(node->right)) node = node->left;
  return node != nullptr && node->kind == kText;
}

class DoubtFinder {
 public:
  explicit DoubtFinder(FormulaTrace& trace) : trace_(trace) { FindTexts(); }

  std::vector<FormulaDiagnosis> Find(const ExprNode* root) {
    FindLostNumbers();
    if (IsText(root)) {
      Put(FormulaFault::kTextResult, 0, trace_.Parsed().size());
    } else {
      Walk(root);
    }
    std::stable_sort(doubts_.begin(), doubts_.end(),
                     [](const auto& a, const auto& b) { return a.position < b.position; });
    return std::move(doubts_);
  }

 private:
  struct Visit {
    const ExprNode* node;
    bool wants_number;
  };

  void Put(FormulaFault fault, std::size_t first, std::size_t behind) {
    doubts_.push_back(trace_.Named(fault, first, behind));
    doubts_.back().stops = false;
  }
  void FindTexts();
  void FindLostNumbers();
  void Walk(const ExprNode* root);
  void Look(const Visit& visit);
  void LookAtCall(const ExprNode* call);
  void LookAtOperator(const ExprNode* node);
  bool StandsBare(const ExprNode* left, std::size_t behind) const;
  void LookAtSearch(const ExprNode* call);

  FormulaTrace& trace_;
  std::vector<FormulaDiagnosis> doubts_;
  std::vector<Visit> open_;
  // The texts in quotes, whose places the tree does not keep: it holds them in the same order.
  std::vector<std::pair<std::size_t, std::size_t>> texts_;
  std::size_t text_ = 0;
};

void DoubtFinder::FindTexts() {
  const TextView text = trace_.Parsed();
  for (std::size_t open = text.find('\''); open < text.size();) {
    const std::size_t close = std::min(text.find('\'', open + 1), text.size());
    texts_.emplace_back(open, close + 1);
    open = close == text.size() ? close : text.find('\'', close + 1);
  }
}

// Digits and points in any mix are one number, whose second point ends its value, and which a function or PI
// right behind it replaces.
void DoubtFinder::FindLostNumbers() {
  const TextView text = trace_.Parsed();
  std::size_t next_text = 0;
  for (std::size_t at = 0; at < text.size();) {
    if (next_text < texts_.size() && at == texts_[next_text].first) {
      at = texts_[next_text++].second;
      continue;
    }
    const std::size_t first = at;
    const bool is_number = IsDigit(text[at]);
    const auto belongs = [&](TCHAR c) { return is_number ? IsDigit(c) || c == '.' : IsNameChar(c); };
    while (at < text.size() && belongs(text[at])) ++at;
    if (is_number && std::count(text.begin() + static_cast<std::ptrdiff_t>(first),
                                text.begin() + static_cast<std::ptrdiff_t>(at), TCHAR{'.'}) > 1) {
      Put(FormulaFault::kSecondPoint, first, at);
    }
    // Names behind digits have their "*" by now: what is left is a function or PI, and takes no factor.
    if (is_number && at < text.size() && IsAsciiLetter(text[at]))
      Put(FormulaFault::kDroppedFactor, first, at);
    if (at == first) ++at;
  }
}

// In the order of the text, by a list instead of recursion: a tree may be as deep as its text is long.
void DoubtFinder::Walk(const ExprNode* root) {
  open_.push_back({root, true});
  while (!open_.empty()) {
    const Visit visit = open_.back();
    open_.pop_back();
    if (visit.node != nullptr) Look(visit);
  }
}

void DoubtFinder::Look(const Visit& visit) {
  const ExprNode* const node = visit.node;
  if (node->kind == kText) {
    if (visit.wants_number && text_ < texts_.size()) {
      Put(FormulaFault::kTextAsNumber, texts_[text_].first, texts_[text_].second);
    }
    ++text_;
    return;
  }
  if (IsCall(node->kind)) LookAtCall(node);
  LookAtOperator(node);
  const bool joins = node->kind == kAdd && IsText(node);
  const bool compares = IsComparison(node->kind) && IsText(node->left) && IsText(node->right);
  const bool takes_texts = joins || compares || node->kind == kFind || node->kind == kLen;
  const bool wants = joins || node->kind == kArgument ? visit.wants_number : !takes_texts;
  // The left part goes on top, so that texts are met in the order in which they stand.
  open_.push_back({node->right, wants});
  open_.push_back({node->left, wants});
}

// Operators of one strength join to the left, which is not what is meant by these.
void DoubtFinder::LookAtOperator(const ExprNode* node) {
  const auto put = [&](FormulaFault fault) { Put(fault, node->place, node->place + std::size_t{1}); };
  const ExprNode* const left = node->left;
  if (node->kind == kNot && left != nullptr) put(FormulaFault::kDroppedOperand);
  if (left == nullptr || StrengthOf(left->kind) != StrengthOf(node->kind)) return;
  if (node->kind == kAnd && left->kind == kOr && StandsBare(left, node->place))
    put(FormulaFault::kMixedJoins);
  if (IsComparison(node->kind) && StandsBare(left, node->place)) put(FormulaFault::kComparedTruth);
}

// Whether no bracket that is opened in front of the operator `left` is closed before the place.
bool DoubtFinder::StandsBare(const ExprNode* left, std::size_t behind) const {
  const TextView text = trace_.Parsed();
  int open = 0;
  auto quoted = texts_.begin();
  for (std::size_t at = left->place; at < behind; ++at) {
    while (quoted != texts_.end() && quoted->second <= at) ++quoted;
    if (quoted != texts_.end() && quoted->first <= at) continue;
    if (text[at] == '(') ++open;
    if (text[at] == ')' && --open < 0) return false;
  }
  return true;
}

void DoubtFinder::LookAtCall(const ExprNode* call) {
  const unsigned short kind = call->kind;
  if (kind == kFind) return LookAtSearch(call);
  if (kind == kLen)
    return Put(FormulaFault::kLengthIsZero, call->place, trace_.OperandEnd(call->place, kNot));
  const bool takes_many = kind == kMax || kind == kMin || kind == kIif;
  if (takes_many || call->right == nullptr) return;
  const std::size_t comma = call->right->place;
  std::size_t end = comma;
  // All of them, up to the closing bracket.
  for (const ExprNode* link = call->right; link != nullptr; link = link->right) {
    end = trace_.OperandEnd(link->place + 1, kArgument);
  }
  Put(FormulaFault::kSurplusArgument, comma, end);
}

// A choice between texts is a number, too: only texts in quotes, their sums and names of texts are searched.
void DoubtFinder::LookAtSearch(const ExprNode* call) {
  const ExprNode* const part = call->right == nullptr ? nullptr : call->right->left;
  if (IsText(call->left) && IsText(part)) return;
  Put(FormulaFault::kNumberSearched, call->place, trace_.OperandEnd(call->place, kNot));
}

}  // namespace

std::vector<FormulaDiagnosis> DoubtsOf(FormulaTrace& trace, const ExprNode* root) {
  return DoubtFinder(trace).Find(root);
}

}  // namespace lorv
