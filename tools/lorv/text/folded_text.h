#pragma once

#include <string>
#include <string_view>

namespace lorv::tool {

// Small ASCII letters, without blanks around: how names of classes, columns and storeys, and words of
// rules are compared. Letters beside ASCII and bytes that are no UTF-8 stay as they are.
//
//   Folded(" Wall\t")  gives "wall"
std::string Folded(std::string_view utf8);

}  // namespace lorv::tool
