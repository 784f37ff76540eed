#pragma once

#include <string>
#include <vector>

namespace lorv::tool {

// The word that was most likely meant by a mistyped one; empty when none is near.
//
//   NearestWord("clac", {"calc", "check"})  gives "calc"
std::string NearestWord(const std::string& typed, const std::vector<std::string>& words);

}  // namespace lorv::tool
