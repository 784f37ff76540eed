#pragma once

#include <vector>

#include "TEXPRESSCAL/diagnose/formula_trace.h"

namespace lorv {

// What in a parsed formula hardly means what it seems to, whatever the values: arguments that no function
// uses, numbers with a second point, LEN, texts that count as the number 0, operators that join otherwise
// than one reads them. In the order of their places.
std::vector<FormulaDiagnosis> DoubtsOf(FormulaTrace& trace, const ExprNode* root);

}  // namespace lorv
