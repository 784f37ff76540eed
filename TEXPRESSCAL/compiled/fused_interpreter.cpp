#include <array>
#include <cmath>

#include "TEXPRESSCAL/arithmetic/functions_of_numbers.h"
#include "TEXPRESSCAL/arithmetic/square_root.h"
#include "TEXPRESSCAL/compiled/fused_steps.h"
#include "TEXPRESSCAL/evaluate/evaluation_error.h"
#include "TEXPRESSCAL/evaluate/number_functions.h"
#include "TEXPRESSCAL/evaluate/number_rules.h"

// Runs a compiled formula on single numbers. It is used by plans, for a formula that is set again and again.
//
// Each step ends by calling the next one with the accumulator, which the compiler turns into a
// jump: the number stays in a register from the first step to the last.
namespace lorv {
namespace {

double Next(const FusedStep* step, double accumulator, double* cells, int* error) {
  return step[1].run(step + 1, accumulator, cells, error);
}
double Onward(const FusedStep* step, double accumulator, double* cells, int* error) {
  const FusedStep* const goal = step + step->target;
  return goal->run(goal, accumulator, cells, error);
}
double AsNumber(bool truth) {
  return truth ? 1 : 0;
}

// What a step that may load makes of the accumulator and its cells.
struct Operands {
  double accumulator;
  double cell;
  const FusedStep* step;
  double* cells;
  int* error;

  double Product() const { return cell * cells[step->other]; }
};

double Nothing(const Operands& of) {
  return of.accumulator;
}
double Add(const Operands& of) {
  return of.accumulator + of.cell;
}
double Subtract(const Operands& of) {
  return of.accumulator - of.cell;
}
double SubtractFrom(const Operands& of) {
  return of.cell - of.accumulator;
}
double Multiply(const Operands& of) {
  return of.accumulator * of.cell;
}
double DivideSilently(const Operands& of) {
  return Quotient(of.accumulator, of.cell);
}
double Divide(const Operands& of) {
  if (of.cell == 0) *of.error = kDivisionByZero;
  return DivideSilently(of);
}
double Power(const Operands& of) {
  return arithmetic::Power(of.accumulator, of.cell);
}
double AddProduct(const Operands& of) {
  return of.accumulator + of.Product();
}
double SubtractProduct(const Operands& of) {
  return of.accumulator - of.Product();
}
double LargerLast(const Operands& of) {
  return Larger(of.cell, of.accumulator);
}
double SmallerLast(const Operands& of) {
  return Smaller(of.cell, of.accumulator);
}
double LargerFirst(const Operands& of) {
  return Larger(of.accumulator, of.cell);
}
double SmallerFirst(const Operands& of) {
  return Smaller(of.accumulator, of.cell);
}
template <unsigned short kKind>
bool Compare(const Operands& of) {
  return NumbersCompare(kKind, of.accumulator, of.cell);
}

// A rule is a template argument, so that it is part of the handler and no call of its own.
using Rule = double (*)(const Operands&);

// The last thing a step does: most go on, some save first.
template <FusedTail kTail>
double GoOn(const FusedStep* step, double accumulator, double* cells, int* error) {
  if constexpr (kTail == FusedTail::kEnds) return accumulator;
  if constexpr (kTail == FusedTail::kSaves) cells[step->target] = accumulator;
  return Next(step, accumulator, cells, error);
}

// All that varies is known when the handler is compiled, so nothing is asked while it runs.
template <Rule kRule, Rule kSecond, bool kLoads, FusedTail kTail>
double Joined(const FusedStep* step, double accumulator, double* cells, int* error) {
  if constexpr (kLoads) accumulator = cells[step->load];
  accumulator = kRule({accumulator, cells[step->cell], step, cells, error});
  if constexpr (kSecond != Nothing)
    accumulator = kSecond({accumulator, cells[step->second], step, cells, error});
  return GoOn<kTail>(step, accumulator, cells, error);
}

template <bool (*kTest)(const Operands&), bool kLoads, FusedTail kTail>
double Compared(const FusedStep* step, double accumulator, double* cells, int* error) {
  if constexpr (kLoads) accumulator = cells[step->load];
  const bool holds = kTest({accumulator, cells[step->cell], step, cells, error});
  if constexpr (kTail == FusedTail::kBranches)
    return holds ? Next(step, accumulator, cells, error) : Onward(step, accumulator, cells, error);
  return GoOn<kTail>(step, AsNumber(holds), cells, error);
}

double End(const FusedStep*, double accumulator, double*, int*) {
  return accumulator;
}
double Load(const FusedStep* step, double, double* cells, int* error) {
  return Next(step, cells[step->cell], cells, error);
}
double Save(const FusedStep* step, double accumulator, double* cells, int* error) {
  cells[step->target] = accumulator;
  return Next(step, accumulator, cells, error);
}
double CheckDivisor(const FusedStep* step, double accumulator, double* cells, int* error) {
  if (cells[step->cell] == 0) *error = kDivisionByZero;
  return Next(step, accumulator, cells, error);
}
double Negate(const FusedStep* step, double accumulator, double* cells, int* error) {
  return Next(step, -accumulator, cells, error);
}
double Absolute(const FusedStep* step, double accumulator, double* cells, int* error) {
  return Next(step, std::fabs(accumulator), cells, error);
}
double Not(const FusedStep* step, double accumulator, double* cells, int* error) {
  return Next(step, AsNumber(accumulator == 0), cells, error);
}
// NaN is outside the domain, too.
double SquareRoot(const FusedStep* step, double accumulator, double* cells, int* error) {
  if (accumulator >= 0) return Next(step, arithmetic::SquareRoot(accumulator), cells, error);
  *error = kOutsideDomain;
  return Next(step, 0, cells, error);
}
double Logarithm(const FusedStep* step, double accumulator, double* cells, int* error) {
  if (accumulator > 0) return Next(step, arithmetic::Logarithm(accumulator), cells, error);
  *error = kOutsideDomain;
  return Next(step, 0, cells, error);
}
double AnyFunction(const FusedStep* step, double accumulator, double* cells, int* error) {
  return Next(step, NumberFunction(step->rule, accumulator), cells, error);
}
// The functions that formulas use most need no choice when they are run.
template <unsigned short kKind>
double OneFunction(const FusedStep* step, double accumulator, double* cells, int* error) {
  return Next(step, NumberFunction(kKind, accumulator), cells, error);
}

// Where the left side decides, its outcome is that of the whole, and the right side is passed over together
// with the errors it might report.
double And(const FusedStep* step, double accumulator, double* cells, int* error) {
  return IsTruth(accumulator) ? Next(step, accumulator, cells, error) : Onward(step, 0, cells, error);
}
double Or(const FusedStep* step, double accumulator, double* cells, int* error) {
  return IsTruth(accumulator) ? Onward(step, 1, cells, error) : Next(step, accumulator, cells, error);
}
double EndJoin(const FusedStep* step, double accumulator, double* cells, int* error) {
  return Next(step, AsNumber(IsTruth(accumulator)), cells, error);
}
double If(const FusedStep* step, double accumulator, double* cells, int* error) {
  return accumulator > 0 ? Next(step, accumulator, cells, error) : Onward(step, accumulator, cells, error);
}
// The first branch is done, and the second is passed over.
double Else(const FusedStep* step, double accumulator, double* cells, int* error) {
  return Onward(step, accumulator, cells, error);
}
constexpr auto kFirstComparison = static_cast<std::size_t>(StepKind::kLess);
constexpr auto kComparisons = static_cast<std::size_t>(StepKind::kNotEqual) + 1 - kFirstComparison;
constexpr std::size_t kSeconds = static_cast<std::size_t>(FusedSecond::kMultiply) + 1;

// All of these in the order of the kinds.
template <Rule kRule, bool kLoads, FusedTail kTail>
constexpr std::array<FusedStep::Handler, kSeconds> kWithSecond = {
    Joined<kRule, Nothing, kLoads, kTail>, Joined<kRule, Add, kLoads, kTail>,
    Joined<kRule, Subtract, kLoads, kTail>, Joined<kRule, SubtractFrom, kLoads, kTail>,
    Joined<kRule, Multiply, kLoads, kTail>};

template <bool kLoads, FusedTail kTail>
constexpr std::array<std::array<FusedStep::Handler, kSeconds>, kFirstComparison> kJoinedHandlers = {
    kWithSecond<Add, kLoads, kTail>,
    kWithSecond<Subtract, kLoads, kTail>,
    kWithSecond<SubtractFrom, kLoads, kTail>,
    kWithSecond<Multiply, kLoads, kTail>,
    kWithSecond<Divide, kLoads, kTail>,
    kWithSecond<DivideSilently, kLoads, kTail>,
    kWithSecond<Power, kLoads, kTail>,
    kWithSecond<AddProduct, kLoads, kTail>,
    kWithSecond<SubtractProduct, kLoads, kTail>,
    kWithSecond<LargerLast, kLoads, kTail>,
    kWithSecond<SmallerLast, kLoads, kTail>,
    kWithSecond<LargerFirst, kLoads, kTail>,
    kWithSecond<SmallerFirst, kLoads, kTail>};

template <bool kLoads, FusedTail kTail>
constexpr std::array<FusedStep::Handler, kComparisons> kComparedHandlers = {
    Compared<Compare<kLess>, kLoads, kTail>,      Compared<Compare<kGreater>, kLoads, kTail>,
    Compared<Compare<kLessEqual>, kLoads, kTail>, Compared<Compare<kGreaterEqual>, kLoads, kTail>,
    Compared<Compare<kEqual>, kLoads, kTail>,     Compared<Compare<kNotEqual>, kLoads, kTail>};

// From what the compiler knows at run time to the handler that was made for it.
template <bool kLoads, FusedTail kTail>
FusedStep::Handler ComparedOrJoined(std::size_t kind, std::size_t second) {
  if (kind >= kFirstComparison) return kComparedHandlers<kLoads, kTail>[kind - kFirstComparison];
  return kJoinedHandlers<kLoads, kTail>[kind][second];
}

template <bool kLoads>
FusedStep::Handler WithTail(std::size_t kind, std::size_t second, FusedTail tail) {
  switch (tail) {
    case FusedTail::kGoesOn:
      return ComparedOrJoined<kLoads, FusedTail::kGoesOn>(kind, second);
    case FusedTail::kSaves:
      return ComparedOrJoined<kLoads, FusedTail::kSaves>(kind, second);
    case FusedTail::kEnds:
      return ComparedOrJoined<kLoads, FusedTail::kEnds>(kind, second);
    default:
      return kComparedHandlers<kLoads, FusedTail::kBranches>[kind - kFirstComparison];
  }
}

// From kLoad on. The end of a choice has nothing to do.
constexpr std::array<FusedStep::Handler,
                     static_cast<std::size_t>(StepKind::kEnd) - static_cast<std::size_t>(StepKind::kNotEqual)>
    kOtherHandlers = {Load,        Save, CheckDivisor, Negate,  Absolute, Not,  SquareRoot, Logarithm,
                      AnyFunction, And,  Or,           EndJoin, If,       Else, nullptr,    End};

// The rounding functions stand in every other formula of quantities.
FusedStep::Handler HandlerOfFunction(unsigned kind) {
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

FusedStep::Handler HandlerOf(StepKind kind, bool loads, FusedSecond second, FusedTail tail) {
  const auto at = static_cast<std::size_t>(kind);
  const auto then = static_cast<std::size_t>(second);
  return loads ? WithTail<true>(at, then, tail) : WithTail<false>(at, then, tail);
}

FusedStep::Handler HandlerOf(const Step& step) {
  if (step.kind == StepKind::kFunction) return HandlerOfFunction(step.rule);
  return kOtherHandlers[static_cast<std::size_t>(step.kind) - static_cast<std::size_t>(StepKind::kNotEqual) -
                        1];
}

}  // namespace lorv
