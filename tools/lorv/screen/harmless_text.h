#pragma once

#include <string>
#include <string_view>

namespace lorv::tool {

// A name from outside as it can be shown on a terminal and in a line of its own: control characters, and
// those that turn the direction of writing or end a line, become "\x1B" or "\u202E"; bytes that are no UTF-8
// the sign for that. All else stays.
//
//   Harmless("a\x1B[2Jb")  gives "a\x1B[2Jb" with a backslash and three letters for the escape
std::string Harmless(std::string_view utf8);

// The same between quotation marks.
std::string Quoted(std::string_view utf8);

}  // namespace lorv::tool
