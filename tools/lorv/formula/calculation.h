#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "tools/lorv/formula/formula_fault.h"
#include "tools/lorv/formula/name_values.h"

namespace lorv::tool {

// What a formula came to.
struct Calculation {
  CString typed;
  CString with_values;          // with the values in place of the names
  std::optional<double> value;  // nothing where there is no number
  std::optional<Fault> fault;   // why there is none, or why it does not mean what it seems to
  std::vector<Fault> doubts;    // what in it hardly means what it seems to
};

// Evaluates a formula over values with all their digits. Never throws for a wrong formula: what is wrong is
// in `fault`, with places that count units of the formula as typed. Nothing is kept; any thread.
Calculation CalculateExactly(const CString& formula, const std::vector<NameValue>& values);

// Evaluates it as the suite does: values go in with three decimals, what is near a third as one.
Calculation CalculateAsSuite(const CString& formula, const std::vector<NameValue>& values);

}  // namespace lorv::tool
