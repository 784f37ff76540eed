#pragma once

#include <string>
#include <string_view>

#include "framework/native/export.h"

namespace lorv {

// HTML as Windows puts it on the clipboard: a header with byte positions, a frame, and the fragment in it.
//
// Units: bytes of UTF-8. Edges: a header that is truncated, wrong, or points outside gives the fragment
// between the comments that mark it, else nothing.
//
//   FragmentOfHtmlFormat(ToHtmlFormat("<b>x</b>"))  gives "<b>x</b>"
COMM_LORV_API std::string ToHtmlFormat(std::string_view fragment);
COMM_LORV_API std::string FragmentOfHtmlFormat(std::string_view data);

}  // namespace lorv
