#pragma once

#include <vector>

#include "framework/ports/transfer_data.h"

// Content as the system hands it from program to program, on the clipboard and in a drag: a block of global
// memory for each format. Any thread, one at a time for a block.
namespace lorv {

// The system's number of a format by our name for it.
UINT NumberOfFormat(const CString& format);
// The formats that the content has, text first; by the system's numbers.
std::vector<UINT> NumbersOf(const TransferData& data);
// A new block with the content in that format, the caller's to free; null where it has none.
HGLOBAL BlockOf(const TransferData& data, UINT number);

// What stands in a block, which stays the caller's; empty for null.
CString TextOfBlock(HGLOBAL block);
std::vector<BYTE> BytesOfBlock(HGLOBAL block, const CString& format);

}  // namespace lorv
