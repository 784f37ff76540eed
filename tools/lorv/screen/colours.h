#pragma once

#include <string>
#include <string_view>

namespace lorv::tool {

enum class Colour { kError, kWarning, kMark };

// Whether messages are coloured: on a terminal, unless its user says NO_COLOR. Off at first.
void UseColours(bool use);

// A text as the terminal shows it in a colour; as it is where none are used.
std::string Coloured(Colour colour, std::string_view text);

// The two lines of a formula and the mark under it, the mark in its colour.
std::string ColouredMark(const std::string& caret_text);

}  // namespace lorv::tool
