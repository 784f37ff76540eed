#pragma once

#include <vector>

#include "framework/text/cstring.h"

namespace lorv {

// The name that was most likely meant by a mistyped one: the fewest letters changed, added, left out or
// swapped, letter case aside; of equals the first. Empty when none is near: one slip in names of up to three
// units, two in longer ones.
CString NearestName(TextView typed, const std::vector<CString>& known);

}  // namespace lorv
