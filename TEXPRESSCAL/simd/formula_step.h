#pragma once

#include <cstdint>

namespace lorv {

// The instructions of a compiled formula. A step joins one number, the accumulator, with numbered cells: a
// formula of quantities is mostly a sequence of such operations, and each of them is one loop when rows are
// evaluated in blocks. The compiler writes the steps, the fused interpreter and the loops over blocks read
// them; both apply the rules of number_rules.h, so they give the same bits.
enum class StepKind : std::uint8_t {
  // These may load the accumulator from a cell first.
  kAdd,              // accumulator + cell
  kSubtract,         // accumulator - cell
  kSubtractFrom,     // cell - accumulator
  kMultiply,         // accumulator * cell
  kDivide,           // accumulator / cell, an error for a cell of 0
  kDivideSilently,   // the same, the error reported by a kCheckDivisor before
  kPower,            // accumulator to the cell's power
  kAddProduct,       // accumulator + cell * other cell
  kSubtractProduct,  // accumulator - cell * other cell
  kLarger,           // MAX of a cell before the accumulator
  kSmaller,
  kLargerFirst,  // MAX of the accumulator before a cell
  kSmallerFirst,
  kLess,  // accumulator against cell, 1 or 0
  kGreater,
  kLessEqual,
  kGreaterEqual,
  kEqual,
  kNotEqual,
  // These not.
  kLoad,          // loads the accumulator from a cell
  kSave,          // stores the accumulator in a cell
  kCheckDivisor,  // an error for a cell of 0
  kNegate,
  kAbsolute,
  kNot,
  kSqrt,
  kLog,
  kFunction,  // the function of one number that `rule` names
  kAnd,  // saves the accumulator; goes on behind the matching end with 0 unless the accumulator is a truth
  kOr,   // the same with 1 if it is one
  kEndJoin,  // whether the accumulator is a truth; `other` is the cell and `rule` the node kind of the
             // beginning
  kIf,       // saves the accumulator; goes on behind the matching kElse unless the accumulator is above 0
  kElse,     // saves the accumulator; goes on behind the matching kEndIf; `other` is the cell of the kIf
  kEndIf,    // `cell` and `other` as at the kElse
  kEnd,
};

constexpr bool MayLoad(StepKind kind) {
  return kind <= StepKind::kNotEqual;
}

// Small, because long formulas have hundreds of them and are run again and again.
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
