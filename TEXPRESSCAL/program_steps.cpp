#include <array>
#include <cmath>

#include "TEXPRESSCAL/evaluator.h"
#include "TEXPRESSCAL/formula_program.h"
#include "TEXPRESSCAL/number_rules.h"

// Each step ends by calling the next one with the number in hand, which the compiler turns into a jump: the
// number stays in a register from the first step to the last.
namespace lorv {
namespace {

double Next(const Step* step, double hand, WorkState* state) {
  return step[1].run(step + 1, hand, state);
}
double Onward(const Step* step, double hand, WorkState* state) {
  const Step* const goal = step + step->onward;
  return goal->run(goal, hand, state);
}
double CellOf(const Step* step, const WorkState* state) {
  return state->cells[step->cell];
}
double ProductOf(const Step* step, const WorkState* state) {
  return state->cells[step->cell] * state->cells[step->other];
}
double AsNumber(bool truth) {
  return truth ? 1 : 0;
}

double End(const Step*, double hand, WorkState*) {
  return hand;
}
double Load(const Step* step, double, WorkState* state) {
  return Next(step, CellOf(step, state), state);
}
double Save(const Step* step, double hand, WorkState* state) {
  state->cells[step->cell] = hand;
  return Next(step, hand, state);
}
double Add(const Step* step, double hand, WorkState* state) {
  return Next(step, hand + CellOf(step, state), state);
}
double Subtract(const Step* step, double hand, WorkState* state) {
  return Next(step, hand - CellOf(step, state), state);
}
double SubtractFrom(const Step* step, double hand, WorkState* state) {
  return Next(step, CellOf(step, state) - hand, state);
}
double Multiply(const Step* step, double hand, WorkState* state) {
  return Next(step, hand * CellOf(step, state), state);
}
double Product(const Step* step, double, WorkState* state) {
  return Next(step, ProductOf(step, state), state);
}
double AddProduct(const Step* step, double hand, WorkState* state) {
  return Next(step, hand + ProductOf(step, state), state);
}
double SubtractProduct(const Step* step, double hand, WorkState* state) {
  return Next(step, hand - ProductOf(step, state), state);
}

double CheckDivisor(const Step* step, double hand, WorkState* state) {
  if (CellOf(step, state) == 0) state->error = kDivisionByZero;
  return Next(step, hand, state);
}
double DivideSilently(const Step* step, double hand, WorkState* state) {
  return Next(step, Quotient(hand, CellOf(step, state)), state);
}
double Divide(const Step* step, double hand, WorkState* state) {
  if (CellOf(step, state) == 0) state->error = kDivisionByZero;
  return DivideSilently(step, hand, state);
}
double Power(const Step* step, double hand, WorkState* state) {
  return Next(step, std::pow(hand, CellOf(step, state)), state);
}

double LargerStep(const Step* step, double hand, WorkState* state) {
  return Next(step, Larger(CellOf(step, state), hand), state);
}
double SmallerStep(const Step* step, double hand, WorkState* state) {
  return Next(step, Smaller(CellOf(step, state), hand), state);
}
double LargerFirst(const Step* step, double hand, WorkState* state) {
  return Next(step, Larger(hand, CellOf(step, state)), state);
}
double SmallerFirst(const Step* step, double hand, WorkState* state) {
  return Next(step, Smaller(hand, CellOf(step, state)), state);
}

template <unsigned short kKind>
double Compare(const Step* step, double hand, WorkState* state) {
  return Next(step, AsNumber(NumbersCompare(kKind, hand, CellOf(step, state))), state);
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
double Function(const Step* step, double hand, WorkState* state) {
  return Next(step, NumberFunction(step->rule, hand), state);
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

// In the order of the kinds.
constexpr std::array<StepWork, static_cast<std::size_t>(StepKind::kEnd) + 1> kWorks = {Load,
                                                                                       Save,
                                                                                       Add,
                                                                                       Subtract,
                                                                                       SubtractFrom,
                                                                                       Multiply,
                                                                                       Divide,
                                                                                       DivideSilently,
                                                                                       CheckDivisor,
                                                                                       Power,
                                                                                       Product,
                                                                                       AddProduct,
                                                                                       SubtractProduct,
                                                                                       LargerStep,
                                                                                       SmallerStep,
                                                                                       LargerFirst,
                                                                                       SmallerFirst,
                                                                                       Compare<kLess>,
                                                                                       Compare<kGreater>,
                                                                                       Compare<kLessEqual>,
                                                                                       Compare<kGreaterEqual>,
                                                                                       Compare<kEqual>,
                                                                                       Compare<kNotEqual>,
                                                                                       Negate,
                                                                                       Absolute,
                                                                                       Not,
                                                                                       SquareRoot,
                                                                                       Logarithm,
                                                                                       Function,
                                                                                       And,
                                                                                       Or,
                                                                                       EndJoin,
                                                                                       If,
                                                                                       Else,
                                                                                       EndIf,
                                                                                       End};

}  // namespace

StepWork WorkOf(StepKind kind) {
  return kWorks[static_cast<std::size_t>(kind)];
}

}  // namespace lorv
