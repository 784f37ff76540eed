#include "grid/rows/cell_lines.h"

#include <algorithm>
#include <cstdint>
#include <limits>

#include "comm/AdLorvComm.h"

// How many lines a text takes in a cell. It is broken by widths alone: words are not kept together.

namespace lorv {

int CellLines(const CString& text, int width, const TextWidth& measure) {
  if (width < 1) return 1;
  CStringArray pieces;
  CAdLorvComm::DivideString(text, _T("\\n"), pieces);
  std::int64_t lines = 0;
  for (int i = 0; i < static_cast<int>(pieces.GetSize()); ++i)
    lines += (std::int64_t{measure(pieces[i])} + width - 1) / width;
  return static_cast<int>(std::min<std::int64_t>(lines, std::numeric_limits<int>::max()));
}

int RowLines(int needed, int most, int least) {
  return std::max(std::min(std::max(needed, 1), most), least);
}

}  // namespace lorv
