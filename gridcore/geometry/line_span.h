#pragma once

#include <vector>

#include "framework/native/export.h"

namespace lorv {

// Consecutive rows or columns, both ends within.
struct LineSpan {
  int first = 0;
  int last = -1;

  bool IsEmpty() const { return last < first; }
  friend bool operator==(const LineSpan&, const LineSpan&) = default;
};

// Where a span stands after lines were put in or taken out. Everything that belongs to lines of a table moves
// by these two: selections, merged cells, the current cell.
//
// Units: lines count from 0. `before` is the line in front of which the new ones stand.
// Edges: lines put in inside a span make it longer, in front of its first line they push it. What is taken
//   out shortens it; a span that loses all its lines is empty. No result exceeds the numbers of an int.
// Pure functions; any thread.
//
//   SpanAfterInsert({3, 5}, 4, 2)  gives {3, 7};  SpanAfterRemove({3, 5}, 0, 4)  gives {0, 1}
COMM_LORV_API LineSpan SpanAfterInsert(LineSpan span, int before, int count);
COMM_LORV_API LineSpan SpanAfterRemove(LineSpan span, int first, int count);

// Where lines stand after the line `from` was taken out and put in again, so that it has the number `to`. Of
// a span there may be several pieces, ascending: one that the line left keeps it as a piece of its own, one
// that it came into stands at both its sides. Edges: `to` is a number of what is there; a line moved to its
// own place changes nothing.
//
//   LineAfterMove(3, 1, 4)  gives 2;  SpansAfterMove({0, 2}, 5, 1)  gives {{0, 0}, {2, 3}}
COMM_LORV_API int LineAfterMove(int line, int from, int to);
COMM_LORV_API std::vector<LineSpan> SpansAfterMove(LineSpan span, int from, int to);

// The same lines as spans in ascending order that neither meet nor touch.
//
//   UnitedSpans({{5, 6}, {1, 2}, {2, 3}, {4, 4}})  gives {{1, 6}}
COMM_LORV_API std::vector<LineSpan> UnitedSpans(std::vector<LineSpan> spans);

}  // namespace lorv
