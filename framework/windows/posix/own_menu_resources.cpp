#include "framework/windows/menu_resources.h"

namespace lorv {

std::string NativeMenuResource(UINT /*number*/) {
  return {};
}

}  // namespace lorv
