#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace lorv::tool {

// A number that is the whole text, such as "12", "-0.5", "214." or "3.24E-5".
std::optional<double> WholeNumber(std::string_view text);

// What a cell that is no number was likely meant to be: "; write 3.5 for 3,5" for a decimal comma, a
// thousands separator, full-width digits or a unit behind the number; empty where nothing comes to mind.
// Nothing is taken for granted: 1,234 may be either.
//
//   NumberHint("3,5")  gives "; a decimal comma? Write 3.5"
std::string NumberHint(std::string_view cell);

}  // namespace lorv::tool
