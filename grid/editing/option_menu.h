#pragma once

#include <vector>

#include "framework/native/export.h"

namespace lorv {

// How a long list of options is laid out as a popup menu: columns of 31 entries, ten columns a menu, what
// follows in a submenu behind the entry "更多".
//
// From how many options a list opens as a menu rather than as a list of the editor.
constexpr int kMenuFromOptions = 32;
constexpr int kOptionsInColumn = 31;
constexpr int kColumnsInMenu = 10;
// The command of option i is kFirstOptionCommand + i.
constexpr int kFirstOptionCommand = 57665;

struct OptionEntry {
  int option = 0;
  bool opens_more = false;  // stands for a submenu that all later entries go to; its own option is not shown
  bool begins_column = false;  // the first entry of a further column

  friend bool operator==(const OptionEntry&, const OptionEntry&) = default;
};

// One entry for each option, in order. An option whose place the entry "更多" takes cannot be chosen: of each
// 310 options the last one is lost in that way. Edges: a count of 0 or below gives no entries. Pure; any
// thread.
//
//   OptionEntries(32).back()  gives {31, false, true}: the 32nd option begins the second column
COMM_LORV_API std::vector<OptionEntry> OptionEntries(int count);

}  // namespace lorv
