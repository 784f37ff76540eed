#pragma once

#include <optional>

#include "TEXPRESSCAL/formula_words.h"

namespace lorv::tool {

// The first place where a formula says PI, which is always the number and never a value of that name.
//
//   CircleNumberIn(_T("L*pi"))  gives pi at 2
std::optional<FormulaWord> CircleNumberIn(const CString& formula);

}  // namespace lorv::tool
