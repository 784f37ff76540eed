#pragma once

#include <string>
#include <string_view>

namespace lorv::tool {

// What a cell that is no number was likely meant to be: "; write 3.5 for 3,5" for a decimal comma, a
// thousands separator, full-width digits or a unit behind the number; empty where nothing comes to mind.
// Nothing is taken for granted: 1,234 may be either.
//
//   NumberHint("3,5")  gives "; a decimal comma? Write 3.5"
std::string NumberHint(std::string_view cell);

}  // namespace lorv::tool
