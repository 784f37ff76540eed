#include "gridcore/geometry/line_span.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "tests/support/whole_number_limits.h"

namespace {

using lorv::LineSpan;
using lorv::SpanAfterInsert;
using lorv::SpanAfterRemove;
using lorv::UnitedSpans;
using Spans = std::vector<LineSpan>;

// The lines of a table of which those of the span are marked, after the change.
LineSpan MarkedAfter(LineSpan span, int at, int count, bool insert) {
  std::vector<bool> marks(20, false);
  for (int line = span.first; line <= span.last; ++line) marks[static_cast<std::size_t>(line)] = true;
  const auto place = marks.begin() + at;
  if (insert) {
    // A line inside the span belongs to it.
    const bool inside = at > span.first && at <= span.last;
    marks.insert(place, static_cast<std::size_t>(count), inside);
  } else {
    marks.erase(place, place + count);
  }
  const auto first = std::find(marks.begin(), marks.end(), true);
  if (first == marks.end()) return {};
  const auto last = std::find(marks.rbegin(), marks.rend(), true);
  return {static_cast<int>(first - marks.begin()), static_cast<int>(marks.rend() - last) - 1};
}

}  // namespace

TEST(LineSpan, HeaderExamples) {
  EXPECT_EQ(SpanAfterInsert({3, 5}, 4, 2), (LineSpan{3, 7}));
  EXPECT_EQ(SpanAfterRemove({3, 5}, 0, 4), (LineSpan{0, 1}));
  EXPECT_EQ(UnitedSpans({{5, 6}, {1, 2}, {2, 3}, {4, 4}}), (Spans{{1, 6}}));
}

TEST(LineSpan, EverySmallChangeMovesSpansAsItMovesLines) {
  for (int first = 0; first < 6; ++first)
    for (int last = first; last < 8; ++last)
      for (int at = 0; at < 10; ++at)
        for (int count = 1; count < 6; ++count) {
          EXPECT_EQ(SpanAfterInsert({first, last}, at, count), MarkedAfter({first, last}, at, count, true))
              << first << ".." << last << " insert " << count << " at " << at;
          const LineSpan left = SpanAfterRemove({first, last}, at, count);
          const LineSpan wanted = MarkedAfter({first, last}, at, count, false);
          EXPECT_EQ(left.IsEmpty(), wanted.IsEmpty())
              << first << ".." << last << " remove " << count << " at " << at;
          if (!wanted.IsEmpty()) {
            EXPECT_EQ(left, wanted) << first << ".." << last << " remove " << count << " at " << at;
          }
        }
}

TEST(LineSpan, CountsOfNothingChangeNothing) {
  EXPECT_EQ(SpanAfterInsert({3, 5}, 0, 0), (LineSpan{3, 5}));
  EXPECT_EQ(SpanAfterInsert({3, 5}, 0, -4), (LineSpan{3, 5}));
  EXPECT_EQ(SpanAfterRemove({3, 5}, 0, -1), (LineSpan{3, 5}));
  EXPECT_TRUE(SpanAfterInsert({3, 2}, 0, 5).IsEmpty());
}

TEST(LineSpan, StaysWithinTheNumbersOfAnInt) {
  EXPECT_EQ(SpanAfterInsert({3, kMost - 1}, 0, kMost), (LineSpan{kMost, kMost}));
  EXPECT_EQ(SpanAfterRemove({3, kMost}, 5, kMost), (LineSpan{3, 4}));
}

TEST(LineSpan, UnitedSpansKeepGaps) {
  EXPECT_EQ(UnitedSpans({{8, 9}, {1, 2}, {4, 3}, {4, 5}}), (Spans{{1, 2}, {4, 5}, {8, 9}}));
  EXPECT_EQ(UnitedSpans({{0, kMost}, {3, 4}}), (Spans{{0, kMost}}));
  EXPECT_EQ(UnitedSpans({}), Spans());
}

TEST(LineSpan, MovedLinesAreThoseOfAPlainList) {
  EXPECT_EQ(lorv::LineAfterMove(3, 1, 4), 2);
  EXPECT_EQ(lorv::SpansAfterMove({0, 2}, 5, 1), (Spans{{0, 0}, {2, 3}}));
  EXPECT_EQ(lorv::SpansAfterMove({0, kMost}, 5, 1), (Spans{{0, kMost}}));
  EXPECT_TRUE(lorv::SpansAfterMove({2, 1}, 5, 1).empty());
  constexpr int kLines = 6;
  for (int code = 0; code < kLines * kLines * kLines * kLines; ++code) {
    const LineSpan span{code % kLines, code / kLines % kLines};
    const int from = code / (kLines * kLines) % kLines;
    const int to = code / (kLines * kLines * kLines);
    std::vector<int> plain(kLines);
    for (int line = 0; line < kLines; ++line) plain[static_cast<std::size_t>(line)] = line;
    plain.erase(plain.begin() + from);
    plain.insert(plain.begin() + to, from);
    Spans marked;
    for (int place = 0; place < kLines; ++place) {
      const int line = plain[static_cast<std::size_t>(place)];
      EXPECT_EQ(lorv::LineAfterMove(line, from, to), place);
      if (line >= span.first && line <= span.last) marked.push_back({place, place});
    }
    EXPECT_EQ(lorv::SpansAfterMove(span, from, to), UnitedSpans(marked))
        << span.first << span.last << from << to;
  }
}
