#include "TEXPRESSCAL/compiled/plan_reader.h"

#include <bit>
#include <cstdint>

#include "TEXPRESSCAL/language/parser.h"
#include "framework/text/char_class.h"

// Parses the text with placeholders and finds each of them among the leaves of the tree, by the place where
// it stands. A plan is refused unless every place is found: one that is not has been joined to a number,
// dropped or quoted, and its value would change more than a number.

namespace lorv {
namespace {

constexpr TextView kDivisor = _T("/1");

bool IsPartOfNumber(TCHAR c) {
  return IsDigit(c) || c == '.';
}

// No name may be left over: whether it is known, and that it counts 0, is asked anew for every text.
class NoNames final : public CValidParameter {
 public:
  int ValidParameter(LPCTSTR) const override { return 0; }
};

}  // namespace

// A value that touches a digit or a point would join that number, and no digits of a value may be part of
// another one. Each place must be a leaf of the tree: one inside quotes, or dropped by the parser, is none.
bool PlanReader::Read() {
  for (const PlaceholderEdit::Place& place : places_) {
    if (place.start > 0 && IsPartOfNumber(text_[place.start - 1])) return false;
    if (place.end < text_.size() && IsPartOfNumber(text_[place.end])) return false;
    starts_[place.start] = place.name;
  }
  TCHAR refused[kVarListSize] = {};
  NameList names(refused);
  const NoNames no_names;
  Parser parser(text_.data(), *pool_, &no_names, names);
  root_ = parser.Parse();
  if (root_ == nullptr) return false;
  Walk();
  // Counted by place: a name may stand in many of them.
  return found_.size() == places_.size();
}

// Places behind an insertion move along.
PlanReader PlanReader::WithDivisors() const {
  PlanReader divided(text_, places_);
  std::size_t shift = 0;
  for (std::size_t i = 0; i < places_.size(); ++i) {
    PlaceholderEdit::Place& place = divided.places_[i];
    place.start += shift;
    place.end += shift;
    if (!TakesDivisor(places_[i])) continue;
    divided.text_.insert(place.end, kDivisor);
    shift += kDivisor.size();
    divided.divisors_[place.end + kDivisor.size() - 1] = place.name;
  }
  return divided;
}

// "1/3^2" is a ninth of a third's square: the power would take the divisor alone.
bool PlanReader::TakesDivisor(const PlaceholderEdit::Place& place) const {
  const std::size_t next = text_.find_first_not_of(' ', place.end);
  return next == TextView::npos || text_[next] != kPower;
}

// "5+-2" is a difference, but a "+" that is itself a sign allows a primary only, and a value with a sign is
// none.
bool PlanReader::TakesNegative(const PlaceholderEdit::Place& place) const {
  std::size_t at = place.start;
  while (at > 0 && text_[at - 1] == ' ') --at;
  // A "+" that the tree has as a sum is no sign.
  return at == 0 || text_[at - 1] != '+' || sums_.contains(at - 1);
}

// As deep as the tree, which the parser bounds; long chains of operators lean to the left.
bool PlanReader::SameBut(const ExprNode* node, const PlanReader& divided, const ExprNode* other) const {
  if (node == nullptr || other == nullptr) return node == other;
  if (other->kind == kDivide && other->right != nullptr && divided.DivisorOf(other->right) != nullptr)
    return SameBut(node, divided, other->left);
  if (node->kind != other->kind || divided.DivisorOf(other) != nullptr) return false;
  if (node->kind == kNumber) {
    const std::size_t* const name = NameOf(node);
    const std::size_t* const other_name = divided.NameOf(other);
    if (name != nullptr || other_name != nullptr)
      return name != nullptr && other_name != nullptr && *name == *other_name;
    return std::bit_cast<std::uint64_t>(node->value) == std::bit_cast<std::uint64_t>(other->value);
  }
  return SameBut(node->left, divided, other->left) && SameBut(node->right, divided, other->right);
}

// By a list of open nodes: chains of operators are as deep as the text is long.
void PlanReader::Walk() {
  std::vector<const ExprNode*> open{root_};
  while (!open.empty()) {
    const ExprNode* node = open.back();
    open.pop_back();
    if (node == nullptr) continue;
    if (NameOf(node) != nullptr) found_.insert(node->place);
    if (node->kind == kAdd) sums_.insert(node->place);
    open.push_back(node->left);
    open.push_back(node->right);
  }
}

}  // namespace lorv
