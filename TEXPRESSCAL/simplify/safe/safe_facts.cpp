#include "TEXPRESSCAL/simplify/safe/safe_facts.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "TEXPRESSCAL/evaluate/rounding.h"
#include "TEXPRESSCAL/language/operators.h"

// What is known of every part of a formula whatever the values of its names: bounds, signs of zeros, whether
// it can fail. First upwards, what a part gives; then downwards, what its surroundings can see of it. A rule
// of the simplifier may rest on these facts alone.

namespace lorv {
namespace {

constexpr double kUnbounded = std::numeric_limits<double>::infinity();
// A value's text holds fewer digits than this exponent.
constexpr double kNameBound = 1e64;
// Beyond it, sums and products may leave the range of numbers.
constexpr double kSureBound = 1e300;
constexpr double kFindBound = 1e6;

// A bound that leaves room for one more operation.
bool IsFiniteBound(const SafeFacts& facts) {
  return facts.bound < kSureBound;
}

double Capped(double bound) {
  return bound < kSureBound ? bound : kUnbounded;
}

// First from the leaves to the root, then what surroundings see, from the root to the leaves.
class FactFinder {
 public:
  explicit FactFinder(const SafeTree& tree) : tree_(tree), facts_(tree.Nodes().size()) {
    for (const SafeNode& node : tree.Nodes()) has_text_ |= node.kind == SafeKind::kText;
  }

  std::vector<SafeFacts> Run(bool ignore_zero_sign) {
    for (std::size_t i = 0; i < facts_.size(); ++i) facts_[i] = Find(tree_.Nodes()[i]);
    facts_.back().zero_sign_unseen = ignore_zero_sign;
    for (std::size_t i = facts_.size(); i-- > 0;) Surround(tree_.Nodes()[i], facts_[i]);
    return std::move(facts_);
  }

 private:
  SafeFacts& Of(int index) { return facts_[static_cast<std::size_t>(index)]; }
  // Facts of a part; of a missing one nothing is known.
  SafeFacts Part(const SafeNode& node, std::size_t index) {
    if (index >= node.parts.size() || node.parts[index] == SafeTree::kMissing) {
      SafeFacts missing;
      missing.bound = kUnbounded;
      return missing;
    }
    return Of(node.parts[index]);
  }

  SafeFacts Find(const SafeNode& node);
  SafeFacts Binary(const SafeNode& node);
  SafeFacts Sum(const SafeNode& node, const SafeFacts& a, const SafeFacts& b);
  SafeFacts Product(const SafeFacts& a, const SafeFacts& b);
  SafeFacts Quotient(const SafeNode& node, const SafeFacts& a, const SafeFacts& b);
  SafeFacts Call(const SafeNode& node);
  SafeFacts OneArgument(const SafeNode& node);
  void Surround(const SafeNode& node, const SafeFacts& facts);
  void SurroundOperands(const SafeNode& node, const SafeFacts& facts);
  void SurroundArguments(const SafeNode& node, const SafeFacts& facts);

  const SafeTree& tree_;
  std::vector<SafeFacts> facts_;
  bool has_text_ = false;
};

// Each rule says less than it could where it is not sure: a fact that is missing only leaves a formula
// longer.
SafeFacts FactFinder::Find(const SafeNode& node) {
  SafeFacts facts;
  facts.pure = true;
  switch (node.kind) {
    case SafeKind::kNumber:
    case SafeKind::kPiConstant:
      facts.exact = true;
      facts.bound = node.kind == SafeKind::kPiConstant ? 4 : Capped(node.value);
      facts.not_minus_zero = true;
      facts.zero = facts.plus_zero = node.kind == SafeKind::kNumber && node.value == 0;
      return facts;
    case SafeKind::kText:
      facts.exact = true;
      facts.numeric = false;
      facts.not_minus_zero = true;
      return facts;
    case SafeKind::kName:
      facts.has_name = true;
      facts.bound = kNameBound;
      // Beside texts a name may stand for one: callers put quoted texts in place of names.
      facts.numeric = !has_text_;
      return facts;
    case SafeKind::kNegate:
      facts = Part(node, 0);
      facts.not_minus_zero = tree_.Node(node.parts[0]).kind == SafeKind::kNumber && !facts.zero;
      facts.plus_zero = facts.boolean = false;
      facts.numeric = true;
      return facts;
    case SafeKind::kBars:
      facts = Part(node, 0);
      facts.not_minus_zero = facts.numeric = true;
      facts.plus_zero = facts.zero;
      return facts;
    case SafeKind::kBracket:
      return Part(node, 0);
    case SafeKind::kCall:
      return Call(node);
    default:
      return Binary(node);
  }
}

// A sum is -0 only if both terms are; only two texts make a text.
SafeFacts FactFinder::Sum(const SafeNode& node, const SafeFacts& a, const SafeFacts& b) {
  SafeFacts facts;
  facts.bound = Capped(a.bound + b.bound);
  facts.not_minus_zero = a.not_minus_zero || (node.code == kAdd && b.not_minus_zero);
  facts.zero = a.zero && b.zero;
  facts.plus_zero = facts.zero && facts.not_minus_zero;
  facts.numeric = node.code == kSubtract || a.numeric || b.numeric;
  return facts;
}

// 0 times infinity is NaN, so a zero factor makes the product zero only where the other one is bounded.
SafeFacts FactFinder::Product(const SafeFacts& a, const SafeFacts& b) {
  SafeFacts facts;
  facts.bound = Capped(a.bound * b.bound);
  if (!IsFiniteBound(a) || !IsFiniteBound(b)) facts.bound = kUnbounded;
  facts.zero = (a.zero || b.zero) && IsFiniteBound(a) && IsFiniteBound(b);
  return facts;
}

// Only a divisor that stands there as a number is surely not 0.
SafeFacts FactFinder::Quotient(const SafeNode& node, const SafeFacts& a, const SafeFacts& b) {
  const SafeNode& divisor = tree_.Node(node.parts[1]);
  SafeFacts facts;
  facts.bound = kUnbounded;
  facts.pure = divisor.kind == SafeKind::kNumber && divisor.value != 0;
  if (facts.pure) facts.bound = Capped(a.bound / divisor.value);
  facts.zero = a.zero && facts.pure && IsFiniteBound(b);
  return facts;
}

// The facts of the kinds that have no rule of their own hold for the operands together.
SafeFacts FactFinder::Binary(const SafeNode& node) {
  const SafeFacts a = Part(node, 0);
  const SafeFacts b = Part(node, 1);
  SafeFacts facts;
  bool own_purity = true;
  if (node.code == kAdd || node.code == kSubtract) {
    facts = Sum(node, a, b);
  } else if (node.code == kMultiply) {
    facts = Product(a, b);
  } else if (node.code == kDivide) {
    facts = Quotient(node, a, b);
    own_purity = facts.pure;
  } else if (GivesTruth(node.code)) {
    facts.bound = 1;
    facts.boolean = facts.not_minus_zero = true;
  } else {
    // "A^B" and "A!B" with a third for A divide by what comes out: they may fail.
    facts.bound = kUnbounded;
    own_purity = !a.has_name && !b.has_name;
  }
  facts.has_name = a.has_name || b.has_name;
  facts.exact = a.exact && b.exact && node.code != kPower;
  facts.pure = own_purity && a.pure && b.pure;
  return facts;
}

// Rounding never gives -0: it goes through a 32-bit integer. Sines and the like do not count as exact: a
// formula reads better with them than with sixteen digits in their place.
SafeFacts FactFinder::OneArgument(const SafeNode& node) {
  const SafeFacts x = Part(node, 0);
  SafeFacts facts;
  facts.pure = x.pure;
  facts.has_name = x.has_name;
  facts.bound = kUnbounded;
  switch (node.code) {
    case kFloor:
    case kCeil:
    case kRound:
    case kInt:
      facts.exact = x.exact;
      facts.bound = kEndOf32Bits;
      facts.not_minus_zero = true;
      break;
    case kAbs:
      facts.exact = x.exact;
      facts.bound = x.bound;
      facts.not_minus_zero = true;
      facts.zero = facts.plus_zero = x.zero;
      break;
    case kSqrt:
      facts.exact = x.exact;
      facts.pure = false;
      break;
    case kLog:
      facts.pure = false;
      break;
    case kSin:
    case kCos:
      if (IsFiniteBound(x)) facts.bound = 1;
      break;
    default:
      break;
  }
  return facts;
}

// Of functions that choose among their arguments: what holds for all that may be chosen. LEN and FIND give
// small whole numbers.
SafeFacts FactFinder::Call(const SafeNode& node) {
  if (node.code != kMax && node.code != kMin && node.code != kIif && node.code != kFind &&
      node.code != kLen) {
    return OneArgument(node);
  }
  SafeFacts facts;
  facts.exact = facts.pure = facts.not_minus_zero = true;
  for (std::size_t i = 0; i < node.parts.size(); ++i) {
    const SafeFacts part = Part(node, i);
    facts.has_name |= part.has_name;
    facts.exact &= part.exact;
    facts.pure &= part.pure;
    if (node.code == kIif && i == 0) continue;
    facts.bound = std::max(facts.bound, part.bound);
    facts.not_minus_zero &= part.not_minus_zero;
  }
  if (node.code == kFind || node.code == kLen) {
    facts.bound = kFindBound;
    facts.not_minus_zero = true;
  }
  return facts;
}

// Brackets and signs pass on what their surroundings see; bars hide the sign of a zero.
void FactFinder::Surround(const SafeNode& node, const SafeFacts& facts) {
  switch (node.kind) {
    case SafeKind::kBracket:
      Of(node.parts[0]).zero_sign_unseen = facts.zero_sign_unseen;
      Of(node.parts[0]).text_seen = facts.text_seen;
      break;
    case SafeKind::kNegate:
      Of(node.parts[0]).zero_sign_unseen = facts.zero_sign_unseen;
      break;
    case SafeKind::kBars:
      Of(node.parts[0]).zero_sign_unseen = true;
      break;
    case SafeKind::kBinary:
      SurroundOperands(node, facts);
      break;
    case SafeKind::kCall:
      SurroundArguments(node, facts);
      break;
    default:
      break;
  }
}

// The sign of a zero shows where it decides the sign of another zero or of an infinity; comparisons and joins
// do not see it, and a zero divisor is reported whatever its sign.
void FactFinder::SurroundOperands(const SafeNode& node, const SafeFacts& facts) {
  SafeFacts& a = Of(node.parts[0]);
  SafeFacts& b = Of(node.parts[1]);
  const bool unseen = facts.zero_sign_unseen;
  switch (node.code) {
    case kAdd:
      a.zero_sign_unseen = unseen || b.not_minus_zero;
      b.zero_sign_unseen = unseen || a.not_minus_zero;
      a.text_seen = b.text_seen = true;
      break;
    case kSubtract:
      a.zero_sign_unseen = unseen;
      b.zero_sign_unseen = unseen || a.not_minus_zero;
      break;
    case kMultiply:
      a.zero_sign_unseen = b.zero_sign_unseen = unseen;
      break;
    case kDivide:
      a.zero_sign_unseen = unseen;
      b.zero_sign_unseen = true;
      break;
    case kPower:
      break;
    default:
      a.zero_sign_unseen = b.zero_sign_unseen = true;
      a.text_seen = b.text_seen = node.code != kAnd && node.code != kOr && node.code != kNot;
      break;
  }
}

// A test and a rounded argument show no sign of a zero.
void FactFinder::SurroundArguments(const SafeNode& node, const SafeFacts& facts) {
  for (std::size_t i = 0; i < node.parts.size(); ++i) {
    if (node.parts[i] == SafeTree::kMissing) continue;
    SafeFacts& part = Of(node.parts[i]);
    switch (node.code) {
      case kMax:
      case kMin:
        part.zero_sign_unseen = facts.zero_sign_unseen;
        break;
      case kIif:
        part.zero_sign_unseen = i == 0 || facts.zero_sign_unseen;
        break;
      case kFind:
        part.text_seen = true;
        break;
      case kFloor:
      case kCeil:
      case kRound:
      case kInt:
      case kAbs:
      case kCos:
        part.zero_sign_unseen = true;
        break;
      default:
        break;
    }
  }
}

}  // namespace

std::vector<SafeFacts> FactsOf(const SafeTree& tree, bool ignore_zero_sign) {
  return FactFinder(tree).Run(ignore_zero_sign);
}

}  // namespace lorv
