#pragma once

#include <cstdint>

// The constants of the LZARI stream, shared by its writer and its reader. docs/formats/lzari.md describes the
// stream in full.
namespace lorv::lzari {

inline constexpr int kWindow = 4096;          // bytes that a match can reach back into
inline constexpr int kLongest = 60;           // longest match
inline constexpr int kThreshold = 2;          // a match of this length or less goes out as a literal
inline constexpr int kNil = kWindow;          // the empty link of the search tree
inline constexpr int kSymbols = 314;          // 256 literals, then the lengths 3 to 60
inline constexpr int kMaxCumulative = 32767;  // at this total the frequencies are halved
inline constexpr int kHeaderBytes = 4;        // the count of plain bytes

// Precision of the coder: 17 bits, so that range times total stays within 32.
inline constexpr int kCodeBits = 17;
inline constexpr std::uint32_t kQ1 = 0x8000;
inline constexpr std::uint32_t kQ2 = 0x10000;
inline constexpr std::uint32_t kQ3 = 0x18000;
inline constexpr std::uint32_t kQ4 = 0x20000;

// A symbol costs at least log2(32767 / 32454) bits, whatever the text: so a bit of code never stands for
// more plain bytes than this as a literal, and for fewer as a match, whose position alone costs 9 bits.
inline constexpr std::uint64_t kMostPlainBytesPerBit = 73;

// A count of plain bytes has 32 bits.
inline constexpr std::int64_t kMaxPlainBytes = 0xFFFFFFFF;

}  // namespace lorv::lzari
