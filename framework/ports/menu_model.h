#pragma once

#include <memory>
#include <vector>

#include "framework/native/window_types.h"
#include "framework/text/cstring.h"

// What a popup menu holds: data that CMenu writes and a peer shows.
//
// Units: entries count from 0. Edges: an entry with a submenu has no command; a menu never holds itself.
// Submenus are shared with the menus that own them; a peer only reads them. One thread: that of the user
// interface.
namespace lorv {

struct MenuModel;

struct MenuEntry {
  UINT flags = MF_STRING;  // MF_GRAYED, MF_DISABLED, MF_CHECKED, MF_SEPARATOR, MF_MENUBREAK, MF_MENUBARBREAK
  UINT id = 0;             // the command; 0 for a submenu and a separator
  CString text;            // "&" before the key's letter, a tab before what stands at the right
  std::shared_ptr<const MenuModel> submenu;
};

struct MenuModel {
  std::vector<MenuEntry> entries;
};

}  // namespace lorv
