#include "TEXPRESSCAL/simplify_safely.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <optional>

#include "TEXPRESSCAL/expression.h"
#include "TEXPRESSCAL/simplify/safe/safe_facts.h"
#include "TEXPRESSCAL/simplify/safe/safe_guards.h"
#include "TEXPRESSCAL/text/replace_rule.h"
#include "TEXPRESSCAL/text_rewriting.h"
#include "framework/text/number_text.h"

// Shortens a formula and never changes what it gives, the sign of a zero and the errors included. Each step
// replaces one part by a shorter text that the facts prove equal, and is taken only if the new text parses,
// has the tree expected and the same marks; then everything is found out anew. Every step shortens the text,
// so it ends.

namespace lorv {
namespace {

using Text = std::basic_string<TCHAR>;

// Decimals of the longest number that is worth writing.
constexpr int kMostDecimals = 17;

bool SameBits(double a, double b) {
  return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

// The shortest text without exponent that reads as `value` again, in at most `most_units`.
std::optional<Text> NumberText(double value, std::size_t most_units) {
  for (int decimals = 0; decimals <= kMostDecimals; ++decimals) {
    const std::string digits = RealToText(std::fabs(value), 'f', decimals);
    if (digits.size() + (std::signbit(value) ? 1 : 0) > most_units) return std::nullopt;
    const Text text(digits.begin(), digits.end());
    if (SameBits(ReadReal(text), std::fabs(value))) return std::signbit(value) ? _T("-") + text : text;
  }
  return std::nullopt;
}

// The value of a formula without names that gives no error.
std::optional<double> Evaluated(TextView text) {
  CExpression expression;
  double value = 0;
  if (expression.ChangeExpression(text) != -1 || expression.Value(value) != 0) return std::nullopt;
  if (!std::isfinite(value)) return std::nullopt;
  return value;
}

// One formula with its tree and what is known of it.
class SafeFormula {
 public:
  SafeFormula(Text text, SafeTree tree, ZeroSign zero_sign)
      : text_(std::move(text)),
        tree_(std::move(tree)),
        facts_(FactsOf(tree_, zero_sign == ZeroSign::kIgnored)),
        marks_(MarksOf(text_, tree_)),
        zero_sign_(zero_sign) {}

  const Text& GetText() const { return text_; }
  // Takes one step that makes the text shorter; false if there is none.
  bool Step();

 private:
  const SafeFacts& Of(int index) const { return facts_[static_cast<std::size_t>(index)]; }
  TextView TextOf(const SafeNode& node) const {
    return TextView(text_).substr(static_cast<std::size_t>(node.first),
                                  static_cast<std::size_t>(node.past - node.first));
  }
  int Part(const SafeNode& node, int index) const { return node.parts[static_cast<std::size_t>(index)]; }

  bool Put(int first, int past, TextView fresh);
  bool PutNode(int index, TextView fresh) {
    return Put(tree_.Node(index).first, tree_.Node(index).past, fresh);
  }
  bool KeepLeft(int index);
  bool KeepRight(int index);

  bool IsNumber(int index, double value) const;
  std::optional<double> Constant(int index) const;
  bool MayStandFor(int part, int whole) const;

  bool Simplify(int index);
  bool Fold(int index);
  bool FoldZero(int index);
  bool DropZeroTerm(int index);
  bool DropUnitFactor(int index);
  bool DropJoin(int index);
  bool DropBranch(int index);

  Text text_;
  SafeTree tree_;
  std::vector<SafeFacts> facts_;
  SafeMarks marks_;
  ZeroSign zero_sign_;
};

// From the root down: what is folded whole needs no steps inside.
bool SafeFormula::Step() {
  for (int i = tree_.Root(); i >= 0; --i) {
    if (Simplify(i)) return true;
  }
  return false;
}

// The first rule that fits and shortens the text.
bool SafeFormula::Simplify(int index) {
  const SafeNode& node = tree_.Node(index);
  if (Fold(index) || FoldZero(index)) return true;
  if (node.kind == SafeKind::kCall) return node.code == kIif && DropBranch(index);
  if (node.kind != SafeKind::kBinary) return false;
  switch (node.code) {
    case kAdd:
    case kSubtract:
      return DropZeroTerm(index);
    case kMultiply:
    case kDivide:
      return DropUnitFactor(index);
    case kAnd:
    case kOr:
      return DropJoin(index);
    default:
      return false;
  }
}

// Puts `fresh` in place of a stretch, if the text gets shorter and is evaluated by the same rules as before.
bool SafeFormula::Put(int first, int past, TextView fresh) {
  const auto length = static_cast<std::size_t>(past - first);
  if (fresh.size() >= length) return false;
  Text text = text_;
  text.replace(static_cast<std::size_t>(first), length, fresh);
  std::optional<SafeTree> tree = SafeTree::Parse(text);
  if (!tree.has_value() || !EngineParses(text) || !(MarksOf(text, *tree) == marks_)) return false;
  *this = SafeFormula(std::move(text), std::move(*tree), zero_sign_);
  return true;
}

bool SafeFormula::KeepLeft(int index) {
  const SafeNode& node = tree_.Node(index);
  return Put(tree_.Node(Part(node, 0)).past, node.past, {});
}

bool SafeFormula::KeepRight(int index) {
  const SafeNode& node = tree_.Node(index);
  return Put(node.first, tree_.Node(Part(node, 1)).first, {});
}

bool SafeFormula::IsNumber(int index, double value) const {
  const SafeNode& node = tree_.Node(index);
  if (node.kind == SafeKind::kBracket) return IsNumber(Part(node, 0), value);
  return node.kind == SafeKind::kNumber && node.value == value;
}

std::optional<double> SafeFormula::Constant(int index) const {
  if (index == SafeTree::kMissing) return std::nullopt;
  const SafeFacts& facts = Of(index);
  if (!facts.exact || facts.has_name || !facts.numeric) return std::nullopt;
  return Evaluated(TextOf(tree_.Node(index)));
}

// A text that stands alone is a text; in arithmetic it was a number.
bool SafeFormula::MayStandFor(int part, int whole) const {
  return Of(part).numeric || !Of(whole).text_seen;
}

bool SafeFormula::Fold(int index) {
  const SafeNode& node = tree_.Node(index);
  const bool literal =
      node.kind == SafeKind::kNumber || node.kind == SafeKind::kPiConstant || node.kind == SafeKind::kText;
  if (literal || Of(index).has_name) return false;
  // A number in brackets or with a sign is left as it was typed.
  const bool wrapped = node.kind == SafeKind::kBracket || node.kind == SafeKind::kNegate;
  if (wrapped && tree_.Node(Part(node, 0)).kind == SafeKind::kNumber) return false;
  const std::optional<double> value = Constant(index);
  if (!value.has_value()) return false;
  const std::optional<Text> number = NumberText(*value, static_cast<std::size_t>(node.past - node.first));
  return number.has_value() && PutNode(index, *number);
}

bool SafeFormula::FoldZero(int index) {
  const SafeFacts& facts = Of(index);
  if (!facts.zero || !facts.pure || tree_.Node(index).kind != SafeKind::kBinary) return false;
  return (facts.plus_zero || facts.zero_sign_unseen) && PutNode(index, _T("0"));
}

// A zero on the left of "-" stays: it makes the difference between 0 and -0.
bool SafeFormula::DropZeroTerm(int index) {
  const SafeNode& node = tree_.Node(index);
  const int left = Part(node, 0);
  const int right = Part(node, 1);
  const bool minus = node.code == kSubtract;
  // What is dropped may turn -0 into 0, unless it is 0 and taken away.
  const auto drops = [&](int zero, int kept) {
    const bool exact = (minus && Of(zero).plus_zero) || Of(kept).not_minus_zero || Of(index).zero_sign_unseen;
    return Of(zero).zero && Of(zero).pure && exact && MayStandFor(kept, index);
  };
  if (drops(right, left) && KeepLeft(index)) return true;
  return !minus && drops(left, right) && KeepRight(index);
}

bool SafeFormula::DropUnitFactor(int index) {
  const SafeNode& node = tree_.Node(index);
  const int left = Part(node, 0);
  const int right = Part(node, 1);
  if (IsNumber(right, 1) && MayStandFor(left, index) && KeepLeft(index)) return true;
  return node.code == kMultiply && IsNumber(left, 1) && MayStandFor(right, index) && KeepRight(index);
}

// Only an exact 1 passes for true; what is 0 or 1 anyway may stand for its join with 1.
bool SafeFormula::DropJoin(int index) {
  const SafeNode& node = tree_.Node(index);
  const int left = Part(node, 0);
  const int right = Part(node, 1);
  const bool both = node.code == kAnd;
  const TextView decided = both ? _T("0") : _T("1");
  if (const auto value = Constant(left)) {
    const bool decides = (*value == 1.0) != both;
    if (decides) return PutNode(index, decided);
    return Of(right).boolean && KeepRight(index);
  }
  if (const auto value = Constant(right)) {
    const bool decides = (*value == 1.0) != both;
    // The left one is evaluated first, and may fail.
    if (decides) return Of(left).pure && PutNode(index, decided);
    return Of(left).boolean && KeepLeft(index);
  }
  return false;
}

// The chosen branch keeps brackets in place of the call's, unless it is one piece in any surroundings.
bool SafeFormula::DropBranch(int index) {
  const SafeNode& node = tree_.Node(index);
  const auto value = Constant(Part(node, 0));
  if (!value.has_value()) return false;
  const int chosen = Part(node, *value > 0 ? 1 : 2);
  if (!MayStandFor(chosen, index)) return false;
  const SafeNode& branch = tree_.Node(chosen);
  const bool piece = branch.kind == SafeKind::kNumber || branch.kind == SafeKind::kBracket ||
                     branch.kind == SafeKind::kCall || index == tree_.Root();
  const Text text(TextOf(branch));
  return PutNode(index, piece ? text : _T("(") + text + _T(")"));
}

// Of operators with several characters, no more than these are rewritten.
bool HasFewOperators(const SafeTree& tree) {
  int count = 0;
  for (const SafeNode& node : tree.Nodes()) {
    if (node.code >= kGreaterEqual && node.code <= kOr) ++count;
  }
  return count <= kMaxReplacements;
}

}  // namespace

CString SimplifySafely(const CString& formula, ZeroSign zero_sign) {
  if (formula.IsEmpty() || formula.GetLength() > kMaxFormulaText) return formula;
  std::optional<SafeTree> tree = SafeTree::Parse(formula.View());
  if (!tree.has_value() || !HasFewOperators(*tree)) return formula;
  if (!NamesStandClear(formula.View(), *tree) || !EngineParses(formula.View())) return formula;
  SafeFormula simplified(Text(formula.View()), std::move(*tree), zero_sign);
  while (simplified.Step()) {
  }
  return CString(TextView(simplified.GetText()));
}

}  // namespace lorv
