#pragma once

#include "framework/native/export.h"
#include "framework/native/native_types.h"

class CBCGPGridItem;

// Messages that a grid sends and posts; their numbers hold from the first grid on.
//
// An editor was closed with its text taken over: w is the grid's id, l the record that ends the edit.
extern COMM_LORV_API UINT BCGM_GRID_ITEM_ENDINPLACEEDIT;
// Posted to a grid: lay out again.
extern COMM_LORV_API UINT BCGM_GRID_ADJUST_LAYOUT;

namespace lorv {

// Why an editor was opened. Bits of one word.
enum BeginEditReason : DWORD {
  kBeginByCall = 0,
  kBeginByKey = 0x400,
  kBeginByCharacter = 0x800,
  kBeginByMouse = 0x1000,
  kBeginByDoubleClick = 0x10000
};

// Why one was closed. The first four are the direction of a key that left the cell.
enum EndEditReason : DWORD {
  kEndByCall = 0,
  kEndUpwards = 0x1,
  kEndDownwards = 0x2,
  kEndToLeft = 0x4,
  kEndToRight = 0x8,
  kEndByReturn = 0x210,
  kEndByEscape = 0x400,
  kEndByFocus = 0x800,
  kEndByMouse = 0x1000
};

// How the text of a fresh editor is selected.
enum EditorSelection : int { kSelectNothing = 0, kSelectCaretAtEnd = 1, kSelectWhole = 4 };

// Takes the numbers of the registered messages from the desktop in force.
void RegisterGridMessages();

}  // namespace lorv

// What BCGM_GRID_ITEM_ENDINPLACEEDIT carries; the sender's, for the call only.
struct BCGPGRID_ENDEDIT {
  CBCGPGridItem* pItem = nullptr;
  int nRow = -1;
  int nColumn = -1;
  DWORD dwReason = 0;
};
