#include "gridcore/table/blocked_list.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

namespace {

struct Row {
  int name = 0;
  lorv::ListPlace place;
};
using Rows = lorv::BlockedList<Row, &Row::place>;

std::vector<Row> MakeRows(int count) {
  std::vector<Row> rows(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) rows[static_cast<std::size_t>(i)].name = i;
  return rows;
}

std::vector<int> Names(const Rows& rows) {
  std::vector<int> names;
  rows.ForEach([&](const Row& row) { names.push_back(row.name); });
  return names;
}

void ExpectSame(const Rows& rows, const std::vector<Row*>& plain) {
  ASSERT_EQ(rows.Size(), static_cast<int>(plain.size()));
  for (std::size_t i = 0; i < plain.size(); ++i) {
    ASSERT_EQ(rows.At(static_cast<int>(i)), plain[i]) << "index " << i;
    ASSERT_EQ(rows.IndexOf(*plain[i]), static_cast<int>(i)) << "index " << i;
  }
}

}  // namespace

TEST(BlockedList, HeaderExample) {
  Row a;
  Row b;
  Rows rows;
  rows.Insert(0, a);
  rows.Insert(0, b);
  EXPECT_EQ(rows.IndexOf(a), 1);
}

TEST(BlockedList, OutsideThereIsNothing) {
  Row a;
  Row stranger;
  Rows rows;
  EXPECT_EQ(rows.At(0), nullptr);
  EXPECT_EQ(rows.Take(0), nullptr);
  rows.Insert(0, a);
  EXPECT_EQ(rows.At(-1), nullptr);
  EXPECT_EQ(rows.At(1), nullptr);
  EXPECT_EQ(rows.Take(1), nullptr);
  EXPECT_EQ(rows.IndexOf(stranger), -1);
}

TEST(BlockedList, IndicesOutsideInsertAtTheEnds) {
  auto store = MakeRows(3);
  Rows rows;
  rows.Insert(5, store[0]);
  rows.Insert(std::numeric_limits<int>::max(), store[1]);
  rows.Insert(std::numeric_limits<int>::min(), store[2]);
  EXPECT_EQ(Names(rows), (std::vector<int>{2, 0, 1}));
}

TEST(BlockedList, WhatWasTakenStandsInNoList) {
  Row a;
  Rows one;
  Rows other;
  one.Insert(0, a);
  EXPECT_EQ(other.IndexOf(a), -1);
  EXPECT_EQ(one.Take(0), &a);
  EXPECT_EQ(one.IndexOf(a), -1);
  other.Insert(0, a);
  EXPECT_EQ(one.IndexOf(a), -1);
  EXPECT_EQ(other.IndexOf(a), 0);
  other.Clear();
  EXPECT_EQ(other.IndexOf(a), -1);
  EXPECT_EQ(other.Size(), 0);
}

TEST(BlockedList, ArrangedInAnyOrder) {
  auto store = MakeRows(2000);
  Rows rows;
  std::vector<Row*> order;
  for (Row& row : store) {
    rows.Insert(rows.Size(), row);
    order.insert(order.begin(), &row);
  }
  rows.Arrange(order);
  ExpectSame(rows, order);
}

TEST(BlockedList, AnyChangesGiveWhatAVectorGives) {
  for (unsigned seed = 1; seed <= 6; ++seed) {
    std::mt19937 random(seed);
    auto store = MakeRows(3000);
    std::vector<Row*> spare;
    for (Row& row : store) spare.push_back(&row);
    std::vector<Row*> plain;
    Rows rows;
    for (int step = 0; step < 6000; ++step) {
      const bool grows = step < 3000 ? random() % 4 != 0 : random() % 4 == 0;
      // Many changes at one place, so that blocks fill and empty.
      const auto at =
          plain.empty() ? 0
                        : random() % (seed % 2 == 0 ? plain.size() : std::min<std::size_t>(plain.size(), 9));
      if (grows && !spare.empty()) {
        rows.Insert(static_cast<int>(at), *spare.back());
        plain.insert(plain.begin() + static_cast<std::ptrdiff_t>(at), spare.back());
        spare.pop_back();
      } else if (!plain.empty()) {
        spare.push_back(plain[at]);
        EXPECT_EQ(rows.Take(static_cast<int>(at)), plain[at]);
        plain.erase(plain.begin() + static_cast<std::ptrdiff_t>(at));
      }
      if (!plain.empty()) {
        const auto asked = random() % plain.size();
        ASSERT_EQ(rows.At(static_cast<int>(asked)), plain[asked]) << "seed " << seed << ", step " << step;
        ASSERT_EQ(rows.IndexOf(*plain[asked]), static_cast<int>(asked))
            << "seed " << seed << ", step " << step;
      }
    }
    ExpectSame(rows, plain);
  }
}
