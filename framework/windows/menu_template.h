#pragma once

#include <optional>
#include <string_view>

#include "framework/native/export.h"
#include "framework/ports/menu_model.h"

// Menus as the resources of Windows programs hold them, in both forms (MENU and MENUEX).
namespace lorv {

constexpr int kMaxMenuDepth = 32;  // of menus within one another

// The menu that the bytes of a resource describe.
//
// Edges: nothing for bytes that are cut, of another form, or deeper than kMaxMenuDepth. Bitmaps and entries
//   that their owner draws come as plain texts.
// Pure; any thread.
COMM_LORV_API std::optional<MenuModel> ParseMenuTemplate(std::string_view bytes);

}  // namespace lorv
