#include "framework/windows/menu_resources.h"

#include <map>
#include <utility>

#include "framework/windows/menu_template.h"

namespace lorv {
namespace {

constexpr UINT kLastNumber = 0xFFFF;

std::map<UINT, MenuModel>& Told() {
  static std::map<UINT, MenuModel> told;
  return told;
}

}  // namespace

void AddMenuResource(UINT number, MenuModel menu) {
  Told()[number] = std::move(menu);
}

std::optional<MenuModel> FindMenuResource(UINT number) {
  if (number == 0 || number > kLastNumber) return std::nullopt;
  const auto found = Told().find(number);
  return found != Told().end() ? std::optional(found->second) : ParseMenuTemplate(NativeMenuResource(number));
}

}  // namespace lorv
