#include "grid/columns/column_texts.h"

#include <cmath>
#include <cstdint>
#include <numeric>

#include "comm/AdLorvComm.h"
#include "framework/text/number_text.h"

// Columns as the suite's files and dialogs write them: names in one text, widths in another. Nothing is
// refused: widths that are missing have their default, those too many are passed over.

namespace lorv {
namespace {

std::vector<CString> PiecesOf(const CString& text) {
  CStringArray list;
  CAdLorvComm::ParseStringToArray(text, list, _T(','));
  std::vector<CString> pieces;
  pieces.reserve(static_cast<std::size_t>(list.GetSize()));
  for (int i = 0; i < static_cast<int>(list.GetSize()); ++i) pieces.push_back(list[i]);
  return pieces;
}

int NumberOf(const CString& piece) {
  return ReadInteger({piece.GetString(), static_cast<std::size_t>(piece.GetLength())});
}

int WidthOrDefault(int width) {
  return width == 0 ? kDefaultColumnWidth : width;
}

}  // namespace

std::vector<DeclaredColumn> DeclaredColumns(const CString& names, const CString& widths) {
  const std::vector<CString> given = PiecesOf(widths);
  std::vector<DeclaredColumn> columns;
  for (const CString& name : PiecesOf(names)) {
    DeclaredColumn column{name, kDefaultColumnWidth, false};
    if (columns.size() < given.size()) {
      const int width = NumberOf(given[columns.size()]);
      column.width = WidthOrDefault(width);
      // Kept with a width, which it has when it is shown.
      column.hidden = width == 0;
    }
    columns.push_back(column);
  }
  return columns;
}

std::vector<int> WidthsFromText(const CString& text) {
  std::vector<int> widths;
  if (text.IsEmpty()) return widths;
  for (const CString& piece : PiecesOf(text)) widths.push_back(WidthOrDefault(NumberOf(piece)));
  return widths;
}

CString WidthsToText(const std::vector<int>& widths) {
  CString text;
  for (const int width : widths) {
    CString piece;
    piece.Format(_T("%d,"), width);
    text += piece;
  }
  return text.Left(text.GetLength() - 1);
}

std::vector<int> ProportionalWidths(std::vector<int> widths, int new_total) {
  const auto total = std::accumulate(widths.begin(), widths.end(), std::int64_t{0});
  // All hidden, or none there: nothing to share by.
  if (total == 0) return widths;
  std::int64_t given = 0;
  for (int& width : widths) {
    width = static_cast<int>(
        std::floor(double{static_cast<double>(width)} * new_total / static_cast<double>(total)));
    given += width;
  }
  // Rounding left some pixels over: the last column takes them, so that the columns end where the grid does.
  widths.back() += static_cast<int>(new_total - given);
  return widths;
}

}  // namespace lorv
