#pragma once

#include <algorithm>
#include <utility>
#include <vector>

#include "framework/text/cstring.h"

namespace lorv {

// The lines of an edit's text as they are shown: where each begins, the breaks of the width included.
//
// Units: positions count 16-bit units; a line's end is CR LF and belongs to the line before it.
//   EditLines lines(_T("ab\r\nc"), {0, 4});  lines.Of(3)  gives 0, lines.Length(0) 2
class EditLines {
 public:
  // `starts` ascends and begins with 0.
  EditLines(CString text, std::vector<int> starts) : text_(std::move(text)), starts_(std::move(starts)) {}

  int Count() const { return static_cast<int>(starts_.size()); }
  // -1 before the text, the last line behind it.
  int Of(int position) const {
    return static_cast<int>(std::upper_bound(starts_.begin(), starts_.end(), position) - starts_.begin()) - 1;
  }
  // -1 for a line that does not exist.
  int Start(int line) const {
    return line < 0 || line >= Count() ? -1 : starts_[static_cast<std::size_t>(line)];
  }
  // Without its line end; 0 for a line that does not exist.
  int Length(int line) const {
    const int start = Start(line);
    if (start < 0) return 0;
    const int next = Start(line + 1);
    int end = next < 0 ? text_.GetLength() : next;
    if (next > 0 && EndsLine(end)) end -= 2;
    return end - start;
  }
  CString Text(int line) const { return text_.Mid(Start(line), Length(line)); }
  // Whether a line end stands before the position.
  bool EndsLine(int position) const {
    return text_.GetAt(position - 2) == _T('\r') && text_.GetAt(position - 1) == _T('\n');
  }

 private:
  CString text_;
  std::vector<int> starts_;
};

}  // namespace lorv
