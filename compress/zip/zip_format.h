#pragma once

#include <cstddef>
#include <cstdint>

// The constants of ZIP archives, shared by the writing and the reading side. All numbers in an archive are
// little-endian.
namespace lorv::zip {

inline constexpr std::uint32_t kLocalSignature = 0x04034b50;
inline constexpr std::uint32_t kDescriptorSignature = 0x08074b50;
inline constexpr std::uint32_t kCentralSignature = 0x02014b50;
inline constexpr std::uint32_t kEndSignature = 0x06054b50;
inline constexpr std::uint32_t kEnd64Signature = 0x06064b50;
inline constexpr std::uint32_t kLocator64Signature = 0x07064b50;

inline constexpr std::size_t kLocalBytes = 30;
inline constexpr std::size_t kCentralBytes = 46;
inline constexpr std::size_t kEndBytes = 22;
inline constexpr std::size_t kEnd64Bytes = 56;
inline constexpr std::size_t kLocator64Bytes = 20;
inline constexpr std::size_t kMaxComment = 0xFFFF;

inline constexpr std::uint32_t kVersionMadeBy = 0x0B17;  // NTFS, 2.3
inline constexpr std::uint32_t kVersionNeeded = 20;
inline constexpr std::uint32_t kFlagEncrypted = 0x1;
inline constexpr std::uint32_t kFlagDescriptor = 0x8;
inline constexpr std::uint32_t kFlagUtf8 = 0x800;
inline constexpr std::uint32_t kStored = 0;
inline constexpr std::uint32_t kDeflated = 8;

inline constexpr std::uint32_t kTimesExtra = 0x5455;        // "UT"
inline constexpr std::uint32_t kSizesExtra = 0x0001;        // sizes and offset beyond 32 bits
inline constexpr std::uint32_t kUnicodeNameExtra = 0x7075;  // "up": the name in UTF-8 beside the narrow one
inline constexpr unsigned char kUnicodeNameVersion = 1;
inline constexpr std::size_t kUnicodeNameHead = 5;  // the version, and the CRC of the narrow name
inline constexpr std::size_t kLocalTimesBytes = 13;
inline constexpr std::size_t kCentralTimesBytes = 5;
inline constexpr unsigned char kTimesFlags = 7;

// External attributes: those of Windows in the low word, and the type and rights of Unix.
inline constexpr std::uint32_t kUnixFile = 0x80000000;
inline constexpr std::uint32_t kUnixFolder = 0x40000000;
inline constexpr std::uint32_t kUnixType = 0xF0000000;
inline constexpr std::uint32_t kUnixRead = 0x01000000;
inline constexpr std::uint32_t kUnixWrite = 0x00800000;
inline constexpr std::uint32_t kUnixExecute = 0x00400000;
inline constexpr std::uint32_t kFolderAttributes = 0x41C00010;

// What one entry may have at most: its sizes are given as signed 32-bit numbers, its name as 260 characters
// with the terminator.
inline constexpr std::uint64_t kMaxEntryBytes = 0x7FFFFFFF;
inline constexpr std::size_t kNameUnits = 260;
// The extra fields of an entry have 65535 bytes together: two heads of 4, the local times, and this name.
inline constexpr std::size_t kMaxUnicodeName = 0xFFFF - 4 - 4 - kLocalTimesBytes - kUnicodeNameHead;
// What an archive may have at most: an offset has 32 bits, a count 16.
inline constexpr std::uint64_t kMaxArchiveBytes = 0xFFFFFFFF;
inline constexpr std::size_t kMaxEntries = 0xFFFF;

// Data is unpacked in blocks of this size.
inline constexpr std::size_t kBlock = 16384;

}  // namespace lorv::zip
