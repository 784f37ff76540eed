#pragma once

#include <cstdint>

#include "prompts/prompt_row.h"

// The two routines behind every lookup of prompts; each public function only names its table.
namespace lorv {

// The text of the row at `position`; the key field is not looked at. Null after a message when the language
// has no texts or the position is outside the table (a negative one is).
LPCTSTR PromptAt(PromptTable table, std::int64_t position);

// The text of the first row whose Chinese is `chinese`; in Chinese the argument itself.
LPCTSTR PromptFor(PromptTable table, LPCTSTR chinese);

}  // namespace lorv
