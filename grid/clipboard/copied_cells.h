#pragma once

#include "framework/ports/transfer_data.h"
#include "grid/clipboard/cell_area.h"

namespace lorv {

// The cells as a clipboard takes them: text with tabs, and HTML up to kMaxHtmlCells.
TransferData CopiedCells(const CBCGPBasicGridCtrl& grid, const CellArea& area);

}  // namespace lorv
