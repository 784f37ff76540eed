#pragma once

#include <functional>
#include <vector>

#include "framework/text/cstring.h"

class CBCGPGridCtrl;

namespace lorv {

// What must be so that a command can be given.
enum class CommandWhen : int {
  kAlways,
  kCell,          // a cell is current
  kSelection,     // something is selected
  kEditableCell,  // the current cell takes an editor
  kOwnRows        // the table is not a virtual one
};

// Something that a user can do with a grid: what keys, menus, help and documentation say about it, and the
// function that does it.
struct GridCommand {
  CString name;  // for programs; lower case, words joined by _
  CString keys;  // as ChordsFromText reads them; empty: none
  CommandWhen when = CommandWhen::kAlways;
  bool in_editor = false;  // its keys work in the editor of a cell too, which is closed first
  bool own_key = false;    // the grid's own, done by itself: listed only
  CString chinese;
  CString english;
  // Whether anything was done. None: the command is known and cannot be given.
  std::function<bool(CBCGPGridCtrl&)> run;
  // What else must be so; none: nothing.
  std::function<bool(const CBCGPGridCtrl&)> enabled;
  // For commands that switch something: whether it is on.
  std::function<bool(const CBCGPGridCtrl&)> checked;
};

// The commands that each grid knows, in the order of menus and help. Those without a function are bound by
// who builds what they need.
COMM_LORV_API std::vector<GridCommand> KnownCommands();
// The same as a table of a Markdown document, with a head line: name, keys, when, Chinese, English.
COMM_LORV_API CString CommandsAsMarkdown(const std::vector<GridCommand>& commands);

}  // namespace lorv
