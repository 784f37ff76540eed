#include "grid/clipboard/line_breaks.h"

// Neither form of a table has all of it: the text of an office keeps blanks and loses line breaks, its HTML
// the other way round.

namespace lorv {
namespace {

bool IsBlank(TCHAR unit) {
  return unit == ' ' || unit == '\t' || unit == '\r' || unit == '\n';
}

TextView TakeWord(TextView& text) {
  std::size_t from = 0;
  while (from < text.size() && IsBlank(text[from])) ++from;
  std::size_t end = from;
  while (end < text.size() && !IsBlank(text[end])) ++end;
  const TextView word = text.substr(from, end - from);
  text.remove_prefix(end);
  return word;
}

bool HaveSameWords(TextView one, TextView other) {
  for (;;) {
    const TextView word = TakeWord(one);
    if (word != TakeWord(other)) return false;
    if (word.empty()) return true;
  }
}

}  // namespace

void TakeLineBreaks(TextTable& table, const TextTable& html) {
  if (table.Rows() != html.Rows() || table.columns != html.columns) return;
  for (int row = 0; row < table.Rows(); ++row) {
    const std::size_t first = row == 0 ? 0 : table.row_ends[static_cast<std::size_t>(row) - 1];
    for (int column = 0; column < html.columns; ++column) {
      const auto plain = table.At(row, column);
      const auto broken = html.At(row, column);
      if (!plain || !broken || broken->find('\n') == TextView::npos) continue;
      if (plain->find_first_of(_T("\r\n")) != TextView::npos || !HaveSameWords(*plain, *broken)) continue;
      table.cells[first + static_cast<std::size_t>(column)] = table.store.emplace_back(*broken);
    }
  }
}

}  // namespace lorv
