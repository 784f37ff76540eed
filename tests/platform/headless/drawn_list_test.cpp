#include "platform/headless/drawing/drawn_list.h"

#include <gtest/gtest.h>

#include <random>

#include "tests/support/print.h"

namespace {

using lorv::Drawn;
using lorv::DrawnList;
using lorv::Region;
using Kind = Drawn::Kind;

constexpr int kSide = 200;

DrawnList Empty() {
  DrawnList list;
  list.Resize({kSide, kSide});
  return list;
}

void Fill(DrawnList& list, const CRect& rect, COLORREF colour = 0) {
  list.Add({Kind::Fill, rect, colour, CString(), false}, Region(rect), true);
}

void Text(DrawnList& list, const CRect& rect, LPCTSTR text) {
  list.Add({Kind::Text, rect, 0, CString(text), false}, Region(rect), false);
}

}  // namespace

TEST(DrawnList, FillsTogetherCoverWhatNoneCoversAlone) {
  DrawnList list = Empty();
  Text(list, CRect(10, 10, 150, 26), _T("long"));
  for (int x = 0; x < kSide; x += 20) Fill(list, CRect(x, 0, x + 20, 40));
  for (const Drawn& drawn : list.List()) EXPECT_NE(drawn.kind, Kind::Text);
}

TEST(DrawnList, WhatStillShowsALittleStays) {
  DrawnList list = Empty();
  Text(list, CRect(10, 10, 150, 26), _T("long"));
  Fill(list, CRect(0, 0, 149, 40));
  EXPECT_EQ(list.List().front().kind, Kind::Text);
  EXPECT_EQ(list.List().front().bounds, CRect(10, 10, 150, 26));
  Fill(list, CRect(149, 0, 150, 40));
  EXPECT_EQ(list.Count(), 2U);
}

TEST(DrawnList, TheSameOverItselfIsListedOnce) {
  DrawnList list = Empty();
  for (int i = 0; i < 1000; ++i) {
    Text(list, CRect(10, 10, 50, 26), _T("a"));
    Text(list, CRect(10, 40, 50, 56), _T("b"));
  }
  EXPECT_EQ(list.Count(), 2U);
}

TEST(DrawnList, PaintedAgainAndAgainItStaysAsItIs) {
  DrawnList list = Empty();
  const auto paint = [&] {
    Fill(list, CRect(0, 0, kSide, kSide), 1);
    for (int row = 0; row < 10; ++row) {
      Fill(list, CRect(0, row * 20, kSide, row * 20 + 1), 2);
      for (int column = 0; column < 5; ++column)
        Text(list, CRect(column * 40, row * 20 + 2, column * 40 + 30, row * 20 + 18), _T("cell"));
    }
  };
  paint();
  const auto first = list.List();
  EXPECT_EQ(first.size(), 61U);
  for (int i = 0; i < 300; ++i) paint();
  EXPECT_EQ(list.List(), first);
}

TEST(DrawnList, CellByCellItStaysAsLarge) {
  DrawnList list = Empty();
  std::mt19937 random(5);
  Fill(list, CRect(0, 0, kSide, kSide), 1);
  for (int i = 0; i < 20000; ++i) {
    const int x = static_cast<int>(random() % 10) * 20;
    const int y = static_cast<int>(random() % 10) * 20;
    Fill(list, CRect(x, y, x + 20, y + 20), 2);
    Text(list, CRect(x + 2, y + 2, x + 18, y + 18), i % 2 == 0 ? _T("even") : _T("odd"));
    ASSERT_LE(list.Count(), 201U);
  }
  // All cells were painted: the ground is covered.
  EXPECT_EQ(list.Count(), 200U);
}

TEST(DrawnList, TheOldestLeaveBeyondTheMost) {
  DrawnList list = Empty();
  CString text;
  for (std::size_t i = 0; i < DrawnList::kMaxDrawn + 10; ++i) {
    text.Format(_T("%d"), static_cast<int>(i));
    const int x = static_cast<int>(i % 190);
    const int y = static_cast<int>(i / 190 % 190);
    Text(list, CRect(x, y, x + 5, y + 5), text);
    ASSERT_LE(list.Count(), DrawnList::kMaxDrawn);
  }
  EXPECT_EQ(list.List().back().text, text);
}

TEST(DrawnList, CutsAndPutsWhatShows) {
  DrawnList list = Empty();
  Text(list, CRect(10, 10, 50, 26), _T("hidden"));
  Fill(list, CRect(0, 0, 100, 30), 1);
  Text(list, CRect(10, 20, 50, 36), _T("seen"));
  DrawnList other = Empty();
  Fill(other, CRect(0, 0, 60, 60), 9);
  other.Put(list.Cut(CRect(0, 0, 60, 30), SIZE{5, 5}), CRect(5, 5, 65, 35));
  const auto all = other.List();
  ASSERT_EQ(all.size(), 3U);
  EXPECT_EQ(all[1].bounds, CRect(5, 5, 65, 35));
  EXPECT_EQ(all[2].text, CString(_T("seen")));
  EXPECT_EQ(all[2].bounds, CRect(15, 25, 55, 35));
}
