#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "TEXPRESSCAL/compiled/placeholder_edit.h"
#include "TEXPRESSCAL/language/node_pool.h"

namespace lorv {

// Parses a text with placeholders for values, and finds the number of the tree that stands for each value.
// It is used while a plan is made. What it accepts is safe to plan: every value is a number of its own in
// the tree, whatever its digits are, so another value changes numbers and never the shape of the tree.
class PlanReader {
 public:
  PlanReader(TextView text, std::vector<PlaceholderEdit::Place> places)
      : text_(text), places_(std::move(places)) {}

  // True when the text is a formula and every value is a number of its own in it.
  bool Read();
  // The text with a divisor behind each value, as it is written for thirds, but where a power follows: that
  // would take the divisor for its base.
  PlanReader WithDivisors() const;
  bool TakesDivisor(const PlaceholderEdit::Place& place) const;

  const ExprNode* Root() const { return root_; }
  const std::vector<PlaceholderEdit::Place>& Places() const { return places_; }
  // The name that a number leaf, or a divisor, stands for; null for any other.
  const std::size_t* NameOf(const ExprNode* leaf) const { return In(starts_, leaf); }
  const std::size_t* DivisorOf(const ExprNode* leaf) const { return In(divisors_, leaf); }

  // Whether a negative value may stand at the place: none may behind a "+" that is a sign.
  bool TakesNegative(const PlaceholderEdit::Place& place) const;
  // Whether the tree with divisors is this one but for the divisions by them: what divides by 1 then gives
  // just what the plain one gives.
  bool IsSameBut(const PlanReader& divided) const { return SameBut(root_, divided, divided.root_); }

 private:
  using NamesByPlace = std::map<std::size_t, std::size_t>;

  static const std::size_t* In(const NamesByPlace& names, const ExprNode* leaf) {
    const auto at = leaf->kind == kNumber ? names.find(leaf->place) : names.end();
    return at == names.end() ? nullptr : &at->second;
  }
  bool SameBut(const ExprNode* node, const PlanReader& divided, const ExprNode* other) const;
  void Walk();

  std::basic_string<TCHAR> text_;
  std::vector<PlaceholderEdit::Place> places_;
  std::unique_ptr<NodePool> pool_ = std::make_unique<NodePool>();
  const ExprNode* root_ = nullptr;
  NamesByPlace starts_;          // of the values
  NamesByPlace divisors_;        // of the divisors behind them
  std::set<std::size_t> found_;  // places of the tree's numbers that are values
  std::set<std::size_t> sums_;   // places of the tree's additions: another "+" is a sign
};

}  // namespace lorv
