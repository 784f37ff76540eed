#pragma once

#include <cstddef>
#include <span>

#include "TEXPRESSCAL/calculate_rows.h"

namespace lorv {

// What all threads share that work on rows: the values, and where the outcome goes.
struct RowTable {
  std::span<const ValueColumn> columns;
  std::size_t rows;
  double* results;
  int* errors;

  // So many rows that writing their results past the caches is faster than through them.
  static constexpr std::size_t kManyRows = 1U << 18;

  void Put(std::size_t row, double result, int error) const {
    results[row] = result;
    if (errors != nullptr) errors[row] = error;
  }
};

}  // namespace lorv
