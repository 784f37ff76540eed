#pragma once

#include <vector>

#include "tools/lorv/command/verb.h"

namespace lorv::tool {

// A heading of the help with its verbs, in the order in which the help lists them.
struct VerbGroup {
  const char* title;
  std::vector<Verb> verbs;
};

const std::vector<VerbGroup>& AllVerbs();

}  // namespace lorv::tool
