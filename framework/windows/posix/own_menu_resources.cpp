#include "framework/windows/menu_resources.h"

// Programs have no resources here: menus are those that AddMenuResource has added.

namespace lorv {

std::string NativeMenuResource(UINT /*number*/) {
  return {};
}

}  // namespace lorv
