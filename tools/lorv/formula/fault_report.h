#pragma once

#include <iosfwd>

#include "tools/lorv/formula/formula_fault.h"
#include "tools/lorv/text/json_text.h"
#include "tools/lorv/verb.h"

namespace lorv::tool {

// Tells a fault to the user: the message, the formula, a mark under the place.
void PrintFault(Console& console, const CString& formula, const Fault& fault);

// The same as members of an open JSON object: "error": null, or an object.
void WriteFault(JsonText& json, const std::optional<Fault>& fault);

}  // namespace lorv::tool
