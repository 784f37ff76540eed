#include <array>
#include <cmath>

#include "TEXPRESSCAL/evaluator.h"
#include "TEXPRESSCAL/formula_program.h"
#include "TEXPRESSCAL/number_functions.h"
#include "TEXPRESSCAL/number_rules.h"

// Each step ends by calling the next one with the number in hand, which the compiler turns into a jump: the
// number stays in a register from the first step to the last.
namespace lorv {
namespace {

double Next(const Step* step, double hand, WorkState* state) {
  return step[1].run(step + 1, hand, state);
}
double Onward(const Step* step, double hand, WorkState* state) {
  const Step* const goal = step + step->further;
  return goal->run(goal, hand, state);
}
double AsNumber(bool truth) {
  return truth ? 1 : 0;
}

// What a step that may load makes of the hand and its cells.
struct Operands {
  double hand;
  double cell;
  const Step* step;
  WorkState* state;

  double Product() const { return cell * state->cells[step->other]; }
};

double Add(const Operands& of) {
  return of.hand + of.cell;
}
double Subtract(const Operands& of) {
  return of.hand - of.cell;
}
double SubtractFrom(const Operands& of) {
  return of.cell - of.hand;
}
double Multiply(const Operands& of) {
  return of.hand * of.cell;
}
double DivideSilently(const Operands& of) {
  return Quotient(of.hand, of.cell);
}
double Divide(const Operands& of) {
  if (of.cell == 0) of.state->error = kDivisionByZero;
  return DivideSilently(of);
}
double Power(const Operands& of) {
  return std::pow(of.hand, of.cell);
}
double AddProduct(const Operands& of) {
  return of.hand + of.Product();
}
double SubtractProduct(const Operands& of) {
  return of.hand - of.Product();
}
double LargerLast(const Operands& of) {
  return Larger(of.cell, of.hand);
}
double SmallerLast(const Operands& of) {
  return Smaller(of.cell, of.hand);
}
double LargerFirst(const Operands& of) {
  return Larger(of.hand, of.cell);
}
double SmallerFirst(const Operands& of) {
  return Smaller(of.hand, of.cell);
}
template <unsigned short kKind>
double Compare(const Operands& of) {
  return AsNumber(NumbersCompare(kKind, of.hand, of.cell));
}

template <double (*kRule)(const Operands&), bool kLoads>
double Joined(const Step* step, double hand, WorkState* state) {
  if (kLoads) hand = state->cells[step->further];
  return Next(step, kRule({hand, state->cells[step->cell], step, state}), state);
}

double End(const Step*, double hand, WorkState*) {
  return hand;
}
double Load(const Step* step, double, WorkState* state) {
  return Next(step, state->cells[step->cell], state);
}
double Save(const Step* step, double hand, WorkState* state) {
  state->cells[step->cell] = hand;
  return Next(step, hand, state);
}
double CheckDivisor(const Step* step, double hand, WorkState* state) {
  if (state->cells[step->cell] == 0) state->error = kDivisionByZero;
  return Next(step, hand, state);
}
double Negate(const Step* step, double hand, WorkState* state) {
  return Next(step, -hand, state);
}
double Absolute(const Step* step, double hand, WorkState* state) {
  return Next(step, std::fabs(hand), state);
}
double Not(const Step* step, double hand, WorkState* state) {
  return Next(step, AsNumber(hand == 0), state);
}
double SquareRoot(const Step* step, double hand, WorkState* state) {
  if (hand >= 0) return Next(step, std::sqrt(hand), state);
  state->error = kOutsideDomain;
  return Next(step, 0, state);
}
double Logarithm(const Step* step, double hand, WorkState* state) {
  if (hand > 0) return Next(step, std::log(hand), state);
  state->error = kOutsideDomain;
  return Next(step, 0, state);
}
double AnyFunction(const Step* step, double hand, WorkState* state) {
  return Next(step, NumberFunction(step->rule, hand), state);
}
// The functions that formulas use most need no choice when they are worked.
template <unsigned short kKind>
double OneFunction(const Step* step, double hand, WorkState* state) {
  return Next(step, NumberFunction(kKind, hand), state);
}

double And(const Step* step, double hand, WorkState* state) {
  return IsTruth(hand) ? Next(step, hand, state) : Onward(step, 0, state);
}
double Or(const Step* step, double hand, WorkState* state) {
  return IsTruth(hand) ? Onward(step, 1, state) : Next(step, hand, state);
}
double EndJoin(const Step* step, double hand, WorkState* state) {
  return Next(step, AsNumber(IsTruth(hand)), state);
}
double If(const Step* step, double hand, WorkState* state) {
  return hand > 0 ? Next(step, hand, state) : Onward(step, hand, state);
}
double Else(const Step* step, double hand, WorkState* state) {
  return Onward(step, hand, state);
}
double EndIf(const Step* step, double hand, WorkState* state) {
  return Next(step, hand, state);
}

constexpr std::size_t kJoined = static_cast<std::size_t>(StepKind::kNotEqual) + 1;

// In the order of the kinds.
template <bool kLoads>
constexpr std::array<StepWork, kJoined> kJoinedWorks = {Joined<Add, kLoads>,
                                                        Joined<Subtract, kLoads>,
                                                        Joined<SubtractFrom, kLoads>,
                                                        Joined<Multiply, kLoads>,
                                                        Joined<Divide, kLoads>,
                                                        Joined<DivideSilently, kLoads>,
                                                        Joined<Power, kLoads>,
                                                        Joined<AddProduct, kLoads>,
                                                        Joined<SubtractProduct, kLoads>,
                                                        Joined<LargerLast, kLoads>,
                                                        Joined<SmallerLast, kLoads>,
                                                        Joined<LargerFirst, kLoads>,
                                                        Joined<SmallerFirst, kLoads>,
                                                        Joined<Compare<kLess>, kLoads>,
                                                        Joined<Compare<kGreater>, kLoads>,
                                                        Joined<Compare<kLessEqual>, kLoads>,
                                                        Joined<Compare<kGreaterEqual>, kLoads>,
                                                        Joined<Compare<kEqual>, kLoads>,
                                                        Joined<Compare<kNotEqual>, kLoads>};

constexpr std::array<StepWork, static_cast<std::size_t>(StepKind::kEnd) + 1 - kJoined> kOtherWorks = {
    Load,        Save, CheckDivisor, Negate,  Absolute, Not,  SquareRoot, Logarithm,
    AnyFunction, And,  Or,           EndJoin, If,       Else, EndIf,      End};

StepWork WorkOfFunction(unsigned kind) {
  switch (kind) {
    case kRound:
      return OneFunction<kRound>;
    case kCeil:
      return OneFunction<kCeil>;
    case kFloor:
      return OneFunction<kFloor>;
    case kInt:
      return OneFunction<kInt>;
    default:
      return AnyFunction;
  }
}

}  // namespace

StepWork WorkOf(const Step& step) {
  if (step.kind == StepKind::kFunction) return WorkOfFunction(step.rule);
  const auto kind = static_cast<std::size_t>(step.kind);
  if (!MayLoad(step.kind)) return kOtherWorks[kind - kJoined];
  return step.Loads() ? kJoinedWorks<true>[kind] : kJoinedWorks<false>[kind];
}

}  // namespace lorv
