#pragma once

#include <string_view>

#include "framework/text/cstring.h"
#include "platform/ports/code_page.h"

// Values of a configuration text; see platform/ports/settings.h for its form.
namespace lorv {

// The text of a configuration file: UTF-16 or UTF-8 where a mark at its start says so, else of the code page.
CString IniTextOf(std::string_view bytes, const CodePage& code_page);

// The value behind a key, blanks and one pair of quotes around it taken off; empty where there is none.
CString IniValue(TextView text, TextView section, TextView key);

int IniInteger(TextView text, TextView section, TextView key, int fallback);

}  // namespace lorv
