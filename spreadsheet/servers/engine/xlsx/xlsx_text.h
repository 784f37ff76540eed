#pragma once

#include <string>
#include <string_view>

#include "framework/text/text_compare.h"

namespace lorv::engine {

// Whether an attribute says yes: "1" or "true".
inline bool IsYes(std::string_view value) {
  return value == "1" || value == "true";
}

// A whole number; the fallback for what is none.
long WholeNumber(std::string_view text, long fallback);

// An attribute's text, entities resolved.
std::basic_string<TCHAR> AttributeText(std::string_view raw);

// UTF-8 of a document as text, with the units resolved that XML cannot hold.
std::basic_string<TCHAR> DocumentText(std::string_view bytes);

}  // namespace lorv::engine
