#pragma once

#include <optional>
#include <string>

#include "framework/native/export.h"
#include "framework/ports/menu_model.h"

// Menus that programs know by number.
namespace lorv {

// The menu that LoadMenu of that number finds from now on; one that was added before is replaced. Where
// programs have no resources this is how a menu gets its number; on Windows it stands before the resources.
// One thread: that of the user interface.
COMM_LORV_API void AddMenuResource(UINT number, MenuModel menu);

// What was added for the number, else the resource of the program, else that of this library; nothing for a
// number from 65536 on and for an unknown one.
COMM_LORV_API std::optional<MenuModel> FindMenuResource(UINT number);

// The bytes of the system's menu resource of that number (1 to 65535); empty where there is none.
std::string NativeMenuResource(UINT number);

}  // namespace lorv
