#include "tools/lorv/archive/entry_name.h"

namespace lorv::tool {

std::string WithoutDrive(const std::string& path) {
  return path;
}

bool IsNoNameHere(const std::string& /*name*/) {
  return false;
}

}  // namespace lorv::tool
