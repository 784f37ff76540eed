#pragma once

#include "framework/ports/transfer_data.h"
#include "grid/clipboard/cell_area.h"

namespace lorv {

// The cells as a clipboard takes them: text with tabs, and HTML up to kMaxHtmlCells. Without a text where
// that would be longer than kMaxCopiedUnits.
TransferData CopiedCells(const CBCGPBasicGridCtrl& grid, const CellArea& area);

}  // namespace lorv
