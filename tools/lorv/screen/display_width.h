#pragma once

#include <string>
#include <string_view>

namespace lorv::tool {

// Takes the next character off a UTF-8 text; U+FFFD for a byte that fits nothing. `text` must not be empty.
char32_t TakeCharacter(std::string_view& text);

// The columns that a character takes on a terminal: 2 for Chinese and other wide ones, 0 for marks that stand
// on another and for controls, else 1.
int DisplayWidth(char32_t character);

// The columns of a UTF-8 text.
//
//   DisplayWidth("墙 W1")  gives 5
int DisplayWidth(std::string_view text);

// The text with blanks behind (or in front) up to a width; a wider one stays whole.
std::string PadRight(std::string_view text, int columns);
std::string PadLeft(std::string_view text, int columns);

// The text fit for one line of a terminal: each control character (a line end, a tab, an escape that would
// colour the screen) becomes a blank.
std::string Printable(std::string_view text);

// The text cut to a number of columns, with "..." at its end if something is missing.
std::string Shortened(std::string_view text, int columns);

}  // namespace lorv::tool
