#pragma once

#include <string_view>

namespace lorv::tool {

// The Chinese text of the help by its name: that of a verb, "about" or "examples"; empty for any other. The
// English one stands beside the verb's declaration. Commands are the same in both.
std::string_view ChineseHelpOf(std::string_view name);

}  // namespace lorv::tool
