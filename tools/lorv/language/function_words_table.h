#pragma once

#include <string_view>

namespace lorv::tool {

// What a function of formulas does, in English; empty where the table has none. The library has the Chinese
// text alone, as the suite shows it.
//
//   EnglishOfFunction("SQRT")  gives "square root"
std::string_view EnglishOfFunction(std::string_view name);

}  // namespace lorv::tool
