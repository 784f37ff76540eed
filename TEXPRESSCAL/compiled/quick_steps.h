#pragma once

#include <cstdint>
#include <vector>

#include "TEXPRESSCAL/simd/formula_step.h"

// The steps of a program as single numbers are worked by them. Going from one step to the next costs as much
// as the arithmetic of both, so neighbours that belong together are one step here: a number is taken in hand,
// joined with one cell and with another, and put away.
namespace lorv {

struct QuickStep {
  // Works this step and all behind it. The error is written where one is met.
  using Work = double (*)(const QuickStep* step, double hand, double* cells, int* error);

  Work run;
  std::uint16_t load;    // the cell that is taken in hand first, if any is
  std::uint16_t cell;    // what the hand is joined with
  std::uint16_t other;   // the other factor of a product
  std::uint16_t second;  // what the hand is joined with then
  std::uint16_t target;  // the cell where the hand is put, or how many steps further on to go
  std::uint16_t rule;    // the function
};

// What a quick step with arithmetic or a comparison does behind it.
enum class QuickTail : std::uint8_t { kGoesOn, kSaves, kEnds, kBranches };

// How the hand is joined with a second cell.
enum class QuickSecond : std::uint8_t { kNothing, kAdd, kSubtract, kSubtractFrom, kMultiply };

// What works a step that may load; only comparisons branch, and take nothing second.
QuickStep::Work QuickWorkOf(StepKind kind, bool loads, QuickSecond second, QuickTail tail);
// What works any other.
QuickStep::Work QuickWorkOf(const Step& step);

std::vector<QuickStep> QuickStepsOf(const std::vector<Step>& steps);

}  // namespace lorv
