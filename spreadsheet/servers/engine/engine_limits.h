#pragma once

#include <cstddef>
#include <cstdint>

// What a workbook of the engine holds at most, and what a file may ask of it.
namespace lorv::engine {

constexpr long kMaxRows = 1048576;
constexpr long kMaxColumns = 16384;
constexpr std::size_t kMaxCellText = 32767;  // 16-bit units
constexpr std::size_t kMaxSheetName = 31;    // 16-bit units
constexpr std::size_t kMaxStyles = 65535;
constexpr std::size_t kMaxSheets = 10000;                       // of a file
constexpr std::size_t kMaxMerges = 1000000;                     // of a sheet
constexpr std::size_t kMaxCells = std::size_t{1} << 25;         // of a workbook
constexpr std::uint64_t kMaxUnpacked = std::uint64_t{1} << 30;  // bytes of all parts of a file together
constexpr std::size_t kMaxXmlToken = std::size_t{1} << 20;      // bytes of one mark or one run of text
constexpr std::size_t kMaxXmlDepth = 256;
constexpr std::size_t kMaxXmlNames = std::size_t{1} << 16;  // bytes of the names of all marks that are open
constexpr std::size_t kMaxFormatText = 1024;                // bytes of a number format in a file
constexpr double kStandardWidth = 8.43;                     // characters
constexpr double kMaxSheetColumnWidth = 255;                // characters
constexpr double kMaxFontSize = 409;                        // points

}  // namespace lorv::engine
