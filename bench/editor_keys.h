#pragma once

#include "bench/grid_peer.h"
#include "framework/ports/desktop_port.h"

// What a user does with an editor, so that all sides of grid_bench hear of it in the same way.
namespace lorv_bench {

enum class Key { F2, Return, Digit };

// The key goes down and up where the focus is; `digit`: that of Key::Digit.
void Press(Key key, int digit = 0);

// Makes the top-level window of that handle the active one of the system.
void BringForward(HWND window);

// Opens an editor of that side, types a digit and closes it: whether the system's own editor was shown, had
// the focus in the active window and was painted, then lost the focus and left its text in the cell.
bool EditorWorks(GridPeer& side, int row, int column);

}  // namespace lorv_bench
