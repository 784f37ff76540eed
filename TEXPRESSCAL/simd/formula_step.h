#pragma once

#include <cstdint>

namespace lorv {

enum class StepKind : std::uint8_t {
  // These may load the hand from a cell first.
  kAdd,              // hand + cell
  kSubtract,         // hand - cell
  kSubtractFrom,     // cell - hand
  kMultiply,         // hand * cell
  kDivide,           // hand / cell, an error for a cell of 0
  kDivideSilently,   // the same, the error told before
  kPower,            // hand to the cell's power
  kAddProduct,       // hand + cell * other cell
  kSubtractProduct,  // hand - cell * other cell
  kLarger,           // MAX of a cell before the hand
  kSmaller,
  kLargerFirst,  // MAX of the hand before a cell
  kSmallerFirst,
  kLess,  // hand against cell, 1 or 0
  kGreater,
  kLessEqual,
  kGreaterEqual,
  kEqual,
  kNotEqual,
  // These not.
  kLoad,          // takes a cell's number in hand
  kSave,          // puts the number in hand into a cell
  kCheckDivisor,  // an error for a cell of 0
  kNegate,
  kAbsolute,
  kNot,
  kSqrt,
  kLog,
  kFunction,  // the function of one number that `rule` names
  kAnd,       // saves the hand; goes on behind the matching end with 0 unless the hand is a truth
  kOr,        // the same with 1 if it is one
  kEndJoin,   // whether the hand is a truth; `other` is the cell and `rule` the node kind of the beginning
  kIf,        // saves the hand; goes on behind the matching kElse unless the hand is above 0
  kElse,      // saves the hand; goes on behind the matching kEndIf; `other` is the cell of the kIf
  kEndIf,     // `cell` and `other` as at the kElse
  kEnd,
};

constexpr bool MayLoad(StepKind kind) {
  return kind <= StepKind::kNotEqual;
}

struct Step {
  StepKind kind;
  std::uint8_t rule;
  std::uint16_t cell;
  std::uint16_t other;
  // Of a step that may load: the cell that it loads first, or kNoLoad. Of one that may go on elsewhere: how
  // many steps further on.
  std::uint16_t further;

  static constexpr std::uint16_t kNoLoad = 0xFFFF;
  bool Loads() const { return MayLoad(kind) && further != kNoLoad; }
};

}  // namespace lorv
