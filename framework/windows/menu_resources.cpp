#include "framework/windows/menu_resources.h"

#include <map>
#include <utility>

#include "framework/windows/menu_template.h"

// Menus by number. What a program added stands before the resources of the system, so that a program reads
// the same on systems that have none.

namespace lorv {
namespace {

constexpr UINT kLastNumber = 0xFFFF;

std::map<UINT, MenuModel>& AddedMenus() {
  static std::map<UINT, MenuModel> added;
  return added;
}

}  // namespace

void AddMenuResource(UINT number, MenuModel menu) {
  AddedMenus()[number] = std::move(menu);
}

std::optional<MenuModel> FindMenuResource(UINT number) {
  if (number == 0 || number > kLastNumber) return std::nullopt;
  const auto found = AddedMenus().find(number);
  return found != AddedMenus().end() ? std::optional(found->second)
                                     : ParseMenuTemplate(NativeMenuResource(number));
}

}  // namespace lorv
