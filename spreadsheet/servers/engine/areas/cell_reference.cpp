#include "spreadsheet/servers/engine/areas/cell_reference.h"

#include <algorithm>

#include "spreadsheet/servers/engine/engine_limits.h"

// Addresses of cells in files and in calls, read from bytes and from text units by one function. Whole files
// are read through it, so it neither copies nor throws; what is no address of a sheet gives nothing.

namespace lorv::engine {
namespace {

constexpr long kLetters = 26;

template <class View>
std::optional<CellPlace> Parse(View text) {
  std::size_t at = 0;
  const auto skip_dollar = [&] {
    if (at < text.size() && text[at] == '$') ++at;
  };
  skip_dollar();
  long column = 0;
  const std::size_t letters = at;
  // Both loops stop as soon as the number is beyond a sheet, so that no text overflows it.
  for (; at < text.size() && IsAsciiLetter(static_cast<TCHAR>(text[at])) && column <= kMaxColumns; ++at) {
    column = column * kLetters + (ToUpper(static_cast<TCHAR>(text[at])) - 'A' + 1);
  }
  const bool has_letters = at > letters;
  skip_dollar();
  long row = 0;
  const std::size_t digits = at;
  for (; at < text.size() && text[at] >= '0' && text[at] <= '9' && row <= kMaxRows; ++at) {
    row = row * 10 + (static_cast<long>(text[at]) - '0');
  }
  const bool whole = has_letters && at > digits && at == text.size();
  if (!whole || column > kMaxColumns || row < 1 || row > kMaxRows) return std::nullopt;
  return CellPlace{row - 1, column - 1};
}

}  // namespace

std::optional<CellPlace> ParseCell(TextView text) {
  return Parse(text);
}

std::optional<CellPlace> ParseCell(std::string_view text) {
  return Parse(text);
}

std::optional<Area> ParseArea(std::string_view text) {
  const std::size_t colon = text.find(':');
  const auto first = Parse(text.substr(0, colon));
  const auto last = colon == std::string_view::npos ? first : Parse(text.substr(colon + 1));
  if (!first || !last) return std::nullopt;
  // Corners may come in any order.
  return Union({first->row, first->column, first->row, first->column},
               {last->row, last->column, last->row, last->column});
}

int ColumnLetters(long column, char* out) {
  int count = 0;
  // The digits of this notation run from 1 to 26: there is no zero in it.
  for (long rest = column + 1; rest > 0; rest = (rest - 1) / kLetters) {
    out[count++] = static_cast<char>('A' + (rest - 1) % kLetters);
  }
  std::reverse(out, out + count);
  return count;
}

}  // namespace lorv::engine
