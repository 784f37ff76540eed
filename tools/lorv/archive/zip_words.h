#pragma once

#include <string>

#include "compress/zip/zip_fault.h"

namespace lorv::tool {

// What a user reads of a fault, as the end of a sentence: "it is encrypted".
std::string WordsFor(ZipFault fault);

}  // namespace lorv::tool
