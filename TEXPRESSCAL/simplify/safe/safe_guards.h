#pragma once

#include <string>
#include <vector>

#include "TEXPRESSCAL/simplify/safe/safe_tree.h"

namespace lorv {

// What a formula's value depends on beside its tree, because values are put into its text and chained
// comparisons are taken apart in it. Two texts with equal marks are evaluated alike.
struct SafeMarks {
  // The comparisons in their order, if one of them may be taken apart over what stands between; else empty.
  std::basic_string<TCHAR> chain;
  // Repeated names so close that the second may be missed when values are put in.
  std::vector<std::basic_string<TCHAR>> close_names;

  friend bool operator==(const SafeMarks&, const SafeMarks&) = default;
};

SafeMarks MarksOf(TextView text, const SafeTree& tree);

// Whether each name stands for itself wherever its letters occur, and is short enough to be a key.
bool NamesStandClear(TextView text, const SafeTree& tree);

// Whether CExpression parses the formula, all names allowed.
bool EngineParses(TextView text);

}  // namespace lorv
