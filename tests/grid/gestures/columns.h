#pragma once

#include <set>
#include <utility>

#include "gridcore/geometry/column_view.h"

namespace lorv_test {

// So many columns, those named hidden.
inline lorv::ColumnView Columns(int count, std::set<int> hidden) {
  return {count, [hidden = std::move(hidden)](int column) { return hidden.count(column) == 0; }};
}

}  // namespace lorv_test
