#pragma once

#include <string>

#include "framework/text/text_compare.h"

// Text units that XML cannot hold stand in workbooks as "_x0007_": an underscore, "x", four hexadecimal
// digits and an underscore.
namespace lorv::engine {

// Resolves them; a text without one is given back as it is.
std::basic_string<TCHAR> ResolveEscapedUnits(std::basic_string<TCHAR> text);

// The text as UTF-8 for an XML document: marks as entities, and escaped as above what XML cannot hold
// (control characters but tab and line feed, halves of pairs, U+FFFE and U+FFFF) and what already looks like
// it.
void AppendEscaped(TextView text, std::string& out);

}  // namespace lorv::engine
