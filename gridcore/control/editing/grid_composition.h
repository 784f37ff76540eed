#pragma once

#include "framework/native/export.h"

class CBCGPGridCtrl;

namespace lorv {

// An input method composes in the open editor of the grid, and has the keys.
COMM_LORV_API bool IsComposing(const CBCGPGridCtrl& grid);

// Where the keys are the grid's: input methods are on where the current cell takes a text, and show their
// candidates at it.
void SettleComposition(const CBCGPGridCtrl& grid);

// What is composed and not committed goes into the text of the editor. Runs handlers.
void TakeComposed(CBCGPGridCtrl& grid);

}  // namespace lorv
