#pragma once

#include <string>
#include <string_view>

namespace CLI {
class App;
}

namespace lorv::tool {

// A text of the help by its name, in the language that is spoken: that of a verb, which stands below its
// options, or "about" and "examples" of the program; `english` where the table has none.
std::string HelpText(std::string_view name, const std::string& english);

// Puts the help of a declared verb into the language that is spoken: what stands below the options, and what
// each of them does.
void SpeakHelp(CLI::App& verb, std::string_view name);

}  // namespace lorv::tool
