#include <array>
#include <cmath>

#include "TEXPRESSCAL/arithmetic/functions_of_numbers.h"
#include "TEXPRESSCAL/compiled/quick_steps.h"
#include "TEXPRESSCAL/evaluate/evaluation_error.h"
#include "TEXPRESSCAL/evaluate/number_functions.h"
#include "TEXPRESSCAL/evaluate/number_rules.h"

// Each step ends by calling the next one with the number in hand, which the compiler turns into a jump: the
// number stays in a register from the first step to the last.
namespace lorv {
namespace {

double Next(const QuickStep* step, double hand, double* cells, int* error) {
  return step[1].run(step + 1, hand, cells, error);
}
double Onward(const QuickStep* step, double hand, double* cells, int* error) {
  const QuickStep* const goal = step + step->target;
  return goal->run(goal, hand, cells, error);
}
double AsNumber(bool truth) {
  return truth ? 1 : 0;
}

// What a step that may load makes of the hand and its cells.
struct Operands {
  double hand;
  double cell;
  const QuickStep* step;
  double* cells;
  int* error;

  double Product() const { return cell * cells[step->other]; }
};

double Nothing(const Operands& of) {
  return of.hand;
}
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
  if (of.cell == 0) *of.error = kDivisionByZero;
  return DivideSilently(of);
}
double Power(const Operands& of) {
  return arithmetic::Power(of.hand, of.cell);
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
bool Compare(const Operands& of) {
  return NumbersCompare(kKind, of.hand, of.cell);
}

using Rule = double (*)(const Operands&);

template <QuickTail kTail>
double GoOn(const QuickStep* step, double hand, double* cells, int* error) {
  if constexpr (kTail == QuickTail::kEnds) return hand;
  if constexpr (kTail == QuickTail::kSaves) cells[step->target] = hand;
  return Next(step, hand, cells, error);
}

template <Rule kRule, Rule kSecond, bool kLoads, QuickTail kTail>
double Joined(const QuickStep* step, double hand, double* cells, int* error) {
  if constexpr (kLoads) hand = cells[step->load];
  hand = kRule({hand, cells[step->cell], step, cells, error});
  if constexpr (kSecond != Nothing) hand = kSecond({hand, cells[step->second], step, cells, error});
  return GoOn<kTail>(step, hand, cells, error);
}

template <bool (*kTest)(const Operands&), bool kLoads, QuickTail kTail>
double Compared(const QuickStep* step, double hand, double* cells, int* error) {
  if constexpr (kLoads) hand = cells[step->load];
  const bool holds = kTest({hand, cells[step->cell], step, cells, error});
  if constexpr (kTail == QuickTail::kBranches)
    return holds ? Next(step, hand, cells, error) : Onward(step, hand, cells, error);
  return GoOn<kTail>(step, AsNumber(holds), cells, error);
}

double End(const QuickStep*, double hand, double*, int*) {
  return hand;
}
double Load(const QuickStep* step, double, double* cells, int* error) {
  return Next(step, cells[step->cell], cells, error);
}
double Save(const QuickStep* step, double hand, double* cells, int* error) {
  cells[step->target] = hand;
  return Next(step, hand, cells, error);
}
double CheckDivisor(const QuickStep* step, double hand, double* cells, int* error) {
  if (cells[step->cell] == 0) *error = kDivisionByZero;
  return Next(step, hand, cells, error);
}
double Negate(const QuickStep* step, double hand, double* cells, int* error) {
  return Next(step, -hand, cells, error);
}
double Absolute(const QuickStep* step, double hand, double* cells, int* error) {
  return Next(step, std::fabs(hand), cells, error);
}
double Not(const QuickStep* step, double hand, double* cells, int* error) {
  return Next(step, AsNumber(hand == 0), cells, error);
}
double SquareRoot(const QuickStep* step, double hand, double* cells, int* error) {
  if (hand >= 0) return Next(step, std::sqrt(hand), cells, error);
  *error = kOutsideDomain;
  return Next(step, 0, cells, error);
}
double Logarithm(const QuickStep* step, double hand, double* cells, int* error) {
  if (hand > 0) return Next(step, arithmetic::Logarithm(hand), cells, error);
  *error = kOutsideDomain;
  return Next(step, 0, cells, error);
}
double AnyFunction(const QuickStep* step, double hand, double* cells, int* error) {
  return Next(step, NumberFunction(step->rule, hand), cells, error);
}
// The functions that formulas use most need no choice when they are worked.
template <unsigned short kKind>
double OneFunction(const QuickStep* step, double hand, double* cells, int* error) {
  return Next(step, NumberFunction(kKind, hand), cells, error);
}

double And(const QuickStep* step, double hand, double* cells, int* error) {
  return IsTruth(hand) ? Next(step, hand, cells, error) : Onward(step, 0, cells, error);
}
double Or(const QuickStep* step, double hand, double* cells, int* error) {
  return IsTruth(hand) ? Onward(step, 1, cells, error) : Next(step, hand, cells, error);
}
double EndJoin(const QuickStep* step, double hand, double* cells, int* error) {
  return Next(step, AsNumber(IsTruth(hand)), cells, error);
}
double If(const QuickStep* step, double hand, double* cells, int* error) {
  return hand > 0 ? Next(step, hand, cells, error) : Onward(step, hand, cells, error);
}
double Else(const QuickStep* step, double hand, double* cells, int* error) {
  return Onward(step, hand, cells, error);
}
constexpr auto kFirstComparison = static_cast<std::size_t>(StepKind::kLess);
constexpr auto kComparisons = static_cast<std::size_t>(StepKind::kNotEqual) + 1 - kFirstComparison;
constexpr std::size_t kSeconds = static_cast<std::size_t>(QuickSecond::kMultiply) + 1;

// All of these in the order of the kinds.
template <Rule kRule, bool kLoads, QuickTail kTail>
constexpr std::array<QuickStep::Work, kSeconds> kWithSecond = {
    Joined<kRule, Nothing, kLoads, kTail>, Joined<kRule, Add, kLoads, kTail>,
    Joined<kRule, Subtract, kLoads, kTail>, Joined<kRule, SubtractFrom, kLoads, kTail>,
    Joined<kRule, Multiply, kLoads, kTail>};

template <bool kLoads, QuickTail kTail>
constexpr std::array<std::array<QuickStep::Work, kSeconds>, kFirstComparison> kJoinedWorks = {
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

template <bool kLoads, QuickTail kTail>
constexpr std::array<QuickStep::Work, kComparisons> kComparedWorks = {
    Compared<Compare<kLess>, kLoads, kTail>,      Compared<Compare<kGreater>, kLoads, kTail>,
    Compared<Compare<kLessEqual>, kLoads, kTail>, Compared<Compare<kGreaterEqual>, kLoads, kTail>,
    Compared<Compare<kEqual>, kLoads, kTail>,     Compared<Compare<kNotEqual>, kLoads, kTail>};

template <bool kLoads, QuickTail kTail>
QuickStep::Work ComparedOrJoined(std::size_t kind, std::size_t second) {
  if (kind >= kFirstComparison) return kComparedWorks<kLoads, kTail>[kind - kFirstComparison];
  return kJoinedWorks<kLoads, kTail>[kind][second];
}

template <bool kLoads>
QuickStep::Work WithTail(std::size_t kind, std::size_t second, QuickTail tail) {
  switch (tail) {
    case QuickTail::kGoesOn:
      return ComparedOrJoined<kLoads, QuickTail::kGoesOn>(kind, second);
    case QuickTail::kSaves:
      return ComparedOrJoined<kLoads, QuickTail::kSaves>(kind, second);
    case QuickTail::kEnds:
      return ComparedOrJoined<kLoads, QuickTail::kEnds>(kind, second);
    default:
      return kComparedWorks<kLoads, QuickTail::kBranches>[kind - kFirstComparison];
  }
}

// From kLoad on. The end of a choice has nothing to do.
constexpr std::array<QuickStep::Work,
                     static_cast<std::size_t>(StepKind::kEnd) - static_cast<std::size_t>(StepKind::kNotEqual)>
    kOtherWorks = {Load,        Save, CheckDivisor, Negate,  Absolute, Not,  SquareRoot, Logarithm,
                   AnyFunction, And,  Or,           EndJoin, If,       Else, nullptr,    End};

QuickStep::Work WorkOfFunction(unsigned kind) {
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

QuickStep::Work QuickWorkOf(StepKind kind, bool loads, QuickSecond second, QuickTail tail) {
  const auto at = static_cast<std::size_t>(kind);
  const auto then = static_cast<std::size_t>(second);
  return loads ? WithTail<true>(at, then, tail) : WithTail<false>(at, then, tail);
}

QuickStep::Work QuickWorkOf(const Step& step) {
  if (step.kind == StepKind::kFunction) return WorkOfFunction(step.rule);
  return kOtherWorks[static_cast<std::size_t>(step.kind) - static_cast<std::size_t>(StepKind::kNotEqual) - 1];
}

}  // namespace lorv
