#pragma once

#include <algorithm>
#include <cstddef>
#include <span>

#include "TEXPRESSCAL/calculate_rows.h"

namespace lorv {

// What all threads share: the columns, and where results and errors go. A thread writes its own rows only.
struct RowTable {
  std::span<const ValueColumn> columns;
  std::size_t rows;
  double* results;
  int* errors;

  // From this many rows on, writing results past the caches is faster than through them.
  static constexpr std::size_t kManyRows = 1U << 18;

  // Comes before any Put to these rows.
  void ClearErrors(std::size_t first, std::size_t end) const {
    if (errors != nullptr) std::fill(errors + first, errors + end, 0);
  }
  // Touches the row's error only if there is one: its place may be far from the processor.
  void Put(std::size_t row, double result, int error) const {
    results[row] = result;
    if (error != 0 && errors != nullptr) errors[row] = error;
  }
  // The row will be put before long.
  void Prefetch(std::size_t row) const { __builtin_prefetch(results + row, 1); }
};

}  // namespace lorv
