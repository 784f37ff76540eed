#pragma once

#include <optional>
#include <string_view>

#include "framework/text/text_compare.h"
#include "spreadsheet/servers/engine/areas/merge_list.h"

// Cell addresses as sheets write them: "B7" is row 6, column 1, both from 0.
namespace lorv::engine {

struct CellPlace {
  long row = 0;
  long column = 0;
};

// Nothing for what is no address of a sheet's cell. Dollar signs may stand before letters and digits.
std::optional<CellPlace> ParseCell(TextView text);
std::optional<CellPlace> ParseCell(std::string_view text);
// "A1:B2", or one cell.
std::optional<Area> ParseArea(std::string_view text);

// The letters of a column into a buffer of 3: how many they are.
int ColumnLetters(long column, char* out);

}  // namespace lorv::engine
