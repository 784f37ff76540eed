#pragma once

// What the exchange with spreadsheets takes at most, and the codes that it shares with the programs.
namespace lorv {

// Alignments that take effect in a sheet; any other leaves a cell's alignment alone.
constexpr int kAlignLeft = -4131;
constexpr int kAlignCentre = -4108;
constexpr int kAlignRight = -4152;

// What one read takes at most.
constexpr long kMaxReadRows = 100000;
constexpr long kMaxReadColumns = 100;
// A selection of more columns is the whole sheet.
constexpr long kMaxSelectedColumns = 100000;
// A written table of more cells keeps the sheet's own font.
constexpr long long kMaxFontCells = 1000;
// The widest column that a text makes.
constexpr long kMaxTextWidth = 80;

}  // namespace lorv
