#include "grid/gestures/fill_rule.h"

#include <gtest/gtest.h>

#include <random>
#include <utility>
#include <vector>

#include "grid/gestures/column_steps.h"
#include "tests/grid/gestures/columns.h"

namespace {

using lorv_test::Columns;
using Range = CBCGPGridRange;
using Cell = CBCGPGridItemID;
using Pairs = std::vector<std::pair<Cell, Cell>>;

Pairs PairsOf(const Range& source, const Range& target, bool across, bool forward,
              const lorv::ColumnView& columns) {
  Pairs pairs;
  lorv::FillPairs(source, target, across, forward, columns, [&](const Cell& from, const Cell& to) {
    pairs.emplace_back(from, to);
    return true;
  });
  return pairs;
}

std::vector<int> GivenRows(const Range& source, const Range& target, bool forward) {
  std::vector<int> rows(static_cast<std::size_t>(target.m_nBottom - target.m_nTop + 1), -1);
  for (const auto& [from, to] : PairsOf(source, target, false, forward, Columns(1, {})))
    rows[static_cast<std::size_t>(to.m_nRow - target.m_nTop)] = from.m_nRow;
  return rows;
}

std::vector<int> GivenColumns(const Range& source, const Range& target, bool forward,
                              const lorv::ColumnView& columns) {
  std::vector<int> given(static_cast<std::size_t>(target.m_nRight - target.m_nLeft + 1), -9);
  for (const auto& [from, to] : PairsOf(source, target, true, forward, columns))
    given[static_cast<std::size_t>(to.m_nColumn - target.m_nLeft)] = from.m_nColumn;
  return given;
}

}  // namespace

TEST(FillRule, HeaderExample) {
  EXPECT_EQ(PairsOf({0, 0, 0, 1}, {0, 2, 0, 4}, false, true, Columns(1, {})),
            (Pairs{{{0, 0}, {2, 0}}, {{1, 0}, {3, 0}}, {{0, 0}, {4, 0}}}));
}

TEST(FillRule, DownwardsTheSourceRepeats) {
  EXPECT_EQ(GivenRows({0, 0, 0, 2}, {0, 3, 0, 9}, true), (std::vector<int>{0, 1, 2, 0, 1, 2, 0}));
}

TEST(FillRule, UpwardsTheNearestTargetGetsTheNearestSource) {
  EXPECT_EQ(GivenRows({0, 5, 0, 7}, {0, 3, 0, 4}, false), (std::vector<int>{6, 7}));
}

TEST(FillRule, HiddenTargetColumnsUseUpNoSource) {
  EXPECT_EQ(GivenColumns({0, 0, 1, 0}, {2, 0, 5, 0}, true, Columns(6, {3})), (std::vector<int>{0, -9, 1, 0}));
}

TEST(FillRule, HiddenSourceColumnsAreReplacedForOneCopy) {
  EXPECT_EQ(GivenColumns({0, 0, 2, 0}, {3, 0, 6, 0}, true, Columns(7, {1})), (std::vector<int>{0, 2, 2, 0}));
  EXPECT_EQ(GivenColumns({4, 0, 6, 0}, {0, 0, 3, 0}, false, Columns(7, {5})), (std::vector<int>{6, 4, 4, 6}));
}

TEST(FillRule, ASourceWithoutAShownNeighbourGivesNoColumn) {
  EXPECT_EQ(GivenColumns({1, 0, 2, 0}, {0, 0, 0, 0}, false, Columns(3, {2})), (std::vector<int>{1}));
  EXPECT_EQ(GivenColumns({0, 0, 0, 0}, {1, 0, 1, 0}, false, Columns(2, {0})), (std::vector<int>{-1}));
}

TEST(FillRule, HiddenColumnsOfADownwardFillGetNothing) {
  const Pairs pairs = PairsOf({0, 0, 2, 0}, {0, 1, 2, 1}, false, true, Columns(3, {1}));
  EXPECT_EQ(pairs, (Pairs{{{0, 0}, {1, 0}}, {{0, 2}, {1, 2}}}));
}

TEST(FillRule, RangesThatDoNotAlignAreRefused) {
  const auto refuse = [](const Range& source, const Range& target, bool across) {
    bool called = false;
    const bool done =
        lorv::FillPairs(source, target, across, true, Columns(9, {}), [&](const Cell&, const Cell&) {
          called = true;
          return true;
        });
    return !done && !called;
  };
  EXPECT_TRUE(refuse({0, 0, 1, 1}, {0, 2, 2, 3}, false));
  EXPECT_TRUE(refuse({0, 0, 1, 1}, {2, 0, 3, 2}, true));
  EXPECT_TRUE(refuse({0, 0, 1, 1}, {2, 0, 3, 1}, false));
  EXPECT_TRUE(refuse({}, {0, 2, 1, 3}, false));
  EXPECT_TRUE(refuse({0, 0, 1, 1}, {0, 3, 1, 2}, false));
  EXPECT_FALSE(refuse({0, 0, 1, 1}, {2, 0, 3, 1}, true));
}

TEST(FillRule, ACopyThatGivesFalseIsTheLast) {
  for (const bool across : {false, true}) {
    int copies = 0;
    const auto stop = [&](const Cell&, const Cell&) { return ++copies < 3; };
    const Range target = across ? Range(2, 0, 3, 1) : Range(0, 2, 1, 5);
    EXPECT_TRUE(lorv::FillPairs({0, 0, 1, 1}, target, across, true, Columns(4, {}), stop));
    EXPECT_EQ(copies, 3);
  }
}

// The value of each line follows from its distance alone.
TEST(FillRule, AnyFillRepeatsTheSourceByDistance) {
  std::mt19937 random(7);
  const auto below = [&](int most) { return static_cast<int>(random() % static_cast<unsigned>(most)); };
  for (int round = 0; round < 2000; ++round) {
    const int height = 1 + below(5);
    const int top = 20 + below(5);
    const int length = 1 + below(12);
    const bool forward = below(2) == 0;
    const int first = forward ? top + height : top - length;
    const std::vector<int> rows =
        GivenRows({0, top, 0, top + height - 1}, {0, first, 0, first + length - 1}, forward);
    const std::vector<int> columns = GivenColumns(
        {top, 0, top + height - 1, 0}, {first, 0, first + length - 1, 0}, forward, Columns(60, {}));
    for (int at = 0; at < length; ++at) {
      const int distance = forward ? at : length - 1 - at;
      const int wanted = forward ? top + distance % height : top + height - 1 - distance % height;
      ASSERT_EQ(rows[static_cast<std::size_t>(at)], wanted) << "round " << round << ", line " << at;
      ASSERT_EQ(columns[static_cast<std::size_t>(at)], wanted) << "round " << round << ", column " << at;
    }
  }
}
