#pragma once

#include "framework/native/export.h"
#include "framework/native/native_types.h"

// The result codes of the ZIP layer, and their texts.
namespace lorv {

inline constexpr DWORD kZipOk = 0;
inline constexpr DWORD kZipLast = 1;  // to FormatZipMessage only: the last result
inline constexpr DWORD kZipNoDuplicate = 0x100;
inline constexpr DWORD kZipNoFile = 0x200;
inline constexpr DWORD kZipNoMemory = 0x300;
inline constexpr DWORD kZipWriteFailed = 0x400;
inline constexpr DWORD kZipNotFound = 0x500;
inline constexpr DWORD kZipMore = 0x600;
inline constexpr DWORD kZipCorrupt = 0x700;
inline constexpr DWORD kZipReadFailed = 0x800;
inline constexpr DWORD kZipArguments = 0x10000;
inline constexpr DWORD kZipNotInMemory = 0x20000;
inline constexpr DWORD kZipMemoryFull = 0x30000;
inline constexpr DWORD kZipFailedBefore = 0x40000;
inline constexpr DWORD kZipEnded = 0x50000;
inline constexpr DWORD kZipWrongSize = 0x60000;
inline constexpr DWORD kZipPartlyUnzipped = 0x70000;
inline constexpr DWORD kZipMixed = 0x80000;
inline constexpr DWORD kZipNotReady = 0x1000000;
inline constexpr DWORD kZipUnseekable = 0x2000000;
inline constexpr DWORD kZipChanged = 0x4000000;
inline constexpr DWORD kZipFlation = 0x5000000;

// Writes the text of a result code, cut to `size` with its terminator; nothing where `size` is 0.
// Code 1 stands for the last result of either side. Result: the length of the full text.
// One thread at a time, as the last results are shared by the module.
//
//   FormatZipMessage(0x200, text, 80)  gives 24, text is "Couldn't create/open file"
COMM_LORV_API unsigned FormatZipMessage(DWORD code, char* text, unsigned size);

// The last result of the side that creates archives, and of the one that opens them.
COMM_LORV_API DWORD LastZipCreation();
COMM_LORV_API DWORD LastZipOpening();

// Each keeps a result as its side's last and gives it back.
DWORD KeepZipCreation(DWORD result);
DWORD KeepZipOpening(DWORD result);

}  // namespace lorv
