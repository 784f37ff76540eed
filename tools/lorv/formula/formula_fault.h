#pragma once

#include <optional>
#include <string>

#include "TEXPRESSCAL/express.h"

namespace lorv::tool {

// What is wrong with a formula: words for the user, and the stretch of the formula that they are about.
struct Fault {
  int position = 0;  // 16-bit units from 0
  int length = 0;    // 0 behind the end
  std::string message;
  bool syntax = false;      // it cannot be read, whatever the values
  bool stops = true;        // false: there is a number all the same
  std::string detail = {};  // of the first component that met it, such as what its cell holds
};

// The same of what the library reports, in the language that is spoken.
Fault FaultOf(const FormulaDiagnosis& found);

// The fault of a formula with these values and names that may go without one; nothing when there is none. The
// position is that in the text given.
std::optional<Fault> FaultOf(const CString& formula, const CMapValue& values, const TDefsetVars& keywords);

}  // namespace lorv::tool
