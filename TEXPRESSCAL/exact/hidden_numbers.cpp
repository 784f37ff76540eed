#include "TEXPRESSCAL/exact/hidden_numbers.h"

#include <algorithm>
#include <cmath>

#include "TEXPRESSCAL/evaluate/evaluator.h"
#include "TEXPRESSCAL/evaluate/number_functions.h"
#include "TEXPRESSCAL/evaluate/number_rules.h"

// A quantity of which a part is no number is no quantity, even where the evaluator gets an ordinary number in
// the end: not-a-number is less than nothing and greater than nothing, so a choice quietly takes its second
// branch. The evaluator itself cannot stop there, as the suite's results are bound to its rules; this looks
// at the tree beside it.

namespace lorv {
namespace {

struct Part {
  const ExprNode* node;
  bool hides;  // what stands around it may make an ordinary number of it
};

using Parts = std::vector<Part>;

double ValueOf(const ExprNode* node) {
  return Evaluator(nullptr).EvaluateAsNumber(node);
}

bool IsComparison(unsigned short kind) {
  return kind == kLess || kind == kGreater || (kind >= kGreaterEqual && kind <= kEqual);
}

// Operators and functions that may give NaN or infinity for finite operands.
bool MayGiveNone(unsigned short kind) {
  return kind == kPower || kind == kExp || kind == kAsin || kind == kAcos || kind == kCtg || kind == kCtga;
}

// The right operand of AND and OR counts only where the left one has not decided.
bool NeedsRight(const ExprNode* join) {
  return IsTruth(ValueOf(join->left)) == (join->kind == kAnd);
}

void AddArguments(const ExprNode* call, Parts& parts) {
  parts.push_back({call->left, true});
  for (const ExprNode* link = call->right; link != nullptr && link->kind == kArgument; link = link->right)
    parts.push_back({link->left, true});
}

void AddChoice(const ExprNode* call, bool only_reached, Parts& parts) {
  const ExprNode* const yes = call->right;
  const ExprNode* const no = yes == nullptr ? nullptr : yes->right;
  if (no == nullptr) return;
  parts.push_back({call->left, true});
  const bool holds = only_reached && ValueOf(call->left) > 0;
  if (!only_reached || holds) parts.push_back({yes->left, false});
  if (!only_reached || !holds) parts.push_back({no->left, false});
}

void AddJoin(const ExprNode* join, bool only_reached, Parts& parts) {
  parts.push_back({join->left, true});
  if (!only_reached || NeedsRight(join)) parts.push_back({join->right, true});
}

void AddCall(const ExprNode* call, bool only_reached, Parts& parts) {
  const unsigned short kind = call->kind;
  if (kind == kMax || kind == kMin) return AddArguments(call, parts);
  if (kind == kIif) return AddChoice(call, only_reached, parts);
  // Both search texts, or none.
  if (kind == kLen || kind == kFind) return;
  parts.push_back({call->left, GoesThrough32Bits(kind) || kind == kExp || kind == kAtg || kind == kAtan});
}

Parts PartsOf(const ExprNode* node, bool only_reached) {
  Parts parts;
  const unsigned short kind = node->kind;
  if (kind == kNumber || kind == kText) return parts;
  if (kind == kNegate || kind == kNot) {
    parts.push_back({node->right, kind == kNot});
  } else if (kind >= kSin && kind <= kFind) {
    AddCall(node, only_reached, parts);
  } else if (kind == kAnd || kind == kOr) {
    AddJoin(node, only_reached, parts);
  } else {
    const bool both = IsComparison(kind) || kind == kPower;
    parts.push_back({node->left, both});
    if (kind != kAbsolute) parts.push_back({node->right, both || kind == kDivide});
  }
  std::erase_if(parts, [](const Part& part) { return part.node == nullptr; });
  return parts;
}

bool HasSource(const ExprNode* node) {
  if (MayGiveNone(node->kind)) return true;
  const Parts parts = PartsOf(node, false);
  return std::any_of(parts.begin(), parts.end(), [](const Part& part) { return HasSource(part.node); });
}

void Collect(const ExprNode* node, std::vector<const ExprNode*>& found) {
  for (const Part& part : PartsOf(node, false)) {
    if (!HasSource(part.node)) continue;
    if (part.hides) found.push_back(part.node);
    Collect(part.node, found);
  }
}

// Where NaN or infinity arises: all operands of the part are finite.
const ExprNode* SourceOf(const ExprNode* node) {
  for (const Part& part : PartsOf(node, true)) {
    if (!std::isfinite(ValueOf(part.node))) return SourceOf(part.node);
  }
  return node;
}

}  // namespace

std::vector<const ExprNode*> PartsThatMayHide(const ExprNode* root) {
  std::vector<const ExprNode*> found;
  if (HasSource(root)) Collect(root, found);
  return found;
}

const ExprNode* HiddenPart(const ExprNode* root) {
  for (const Part& part : PartsOf(root, true)) {
    if (const ExprNode* const inner = HiddenPart(part.node)) return inner;
    if (part.hides && !std::isfinite(ValueOf(part.node))) return SourceOf(part.node);
  }
  return nullptr;
}

}  // namespace lorv
