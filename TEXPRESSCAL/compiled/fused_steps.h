#pragma once

#include <cstdint>
#include <vector>

#include "TEXPRESSCAL/simd/formula_step.h"

// The steps of a program as they are run on single numbers. Going from one step to the next costs as much as
// the arithmetic of both, so neighbours that belong together are one step here: the accumulator is loaded,
// joined with one cell and with another, and saved. Fusing changes no operation and no order of operations.
namespace lorv {

struct FusedStep {
  // Runs this step and all behind it. The error is written where one is met.
  using Handler = double (*)(const FusedStep* step, double accumulator, double* cells, int* error);

  Handler run;
  std::uint16_t load;    // the cell that is loaded first, if any is
  std::uint16_t cell;    // what the accumulator is joined with
  std::uint16_t other;   // the other factor of a product
  std::uint16_t second;  // what the accumulator is joined with then
  std::uint16_t target;  // the cell where the accumulator is stored, or the distance of a jump in steps
  std::uint16_t rule;    // the function
};

// How a fused step of arithmetic or a comparison ends.
enum class FusedTail : std::uint8_t { kGoesOn, kSaves, kEnds, kBranches };

// How the accumulator is joined with a second cell.
enum class FusedSecond : std::uint8_t { kNothing, kAdd, kSubtract, kSubtractFrom, kMultiply };

// The handler of a step that may load; only comparisons branch, and take nothing second.
FusedStep::Handler HandlerOf(StepKind kind, bool loads, FusedSecond second, FusedTail tail);
// The handler of any other.
FusedStep::Handler HandlerOf(const Step& step);

std::vector<FusedStep> FuseSteps(const std::vector<Step>& steps);

}  // namespace lorv
