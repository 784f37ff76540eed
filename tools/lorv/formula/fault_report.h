#pragma once

#include <iosfwd>
#include <vector>

#include "tools/lorv/command/verb.h"
#include "tools/lorv/formula/formula_fault.h"
#include "tools/lorv/text/json_text.h"

namespace lorv::tool {

// Reports a fault to the user: the message, the formula, a mark under the place. `line` is that of standard
// input, 0 for a formula of the command line.
void PrintFault(Console& console, const CString& formula, const Fault& fault, long long line = 0);

// The same for what is merely doubtful.
void PrintDoubts(Console& console, const CString& formula, const std::vector<Fault>& doubts,
                 long long line = 0);

// The same as members of an open JSON object: "error": null, or an object; "warnings": a list of such.
void WriteFault(JsonText& json, const std::optional<Fault>& fault);
void WriteDoubts(JsonText& json, const std::vector<Fault>& doubts);

}  // namespace lorv::tool
