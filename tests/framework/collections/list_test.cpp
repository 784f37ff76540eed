#include "framework/collections/list.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/framework/collections/raised_fault.h"
#include "tests/support/print.h"

namespace lorv {
namespace {

using test::RaisesInvalidArg;
using test::Utf8;
using Numbers = CList<int, int>;

std::string Shown(const Numbers& list) {
  std::string text;
  for (POSITION at = list.GetHeadPosition(); at != nullptr;) text += std::to_string(list.GetNext(at)) + " ";
  return text;
}

std::string ShownBackwards(const Numbers& list) {
  std::string text;
  for (POSITION at = list.GetTailPosition(); at != nullptr;) text += std::to_string(list.GetPrev(at)) + " ";
  return text;
}

Numbers Of(std::initializer_list<int> values) {
  Numbers list(10);
  for (const int value : values) list.AddTail(value);
  return list;
}

TEST(CList, WalksBothWays) {
  const Numbers list = Of({1, 2, 3});
  EXPECT_EQ(Shown(list), "1 2 3 ");
  EXPECT_EQ(ShownBackwards(list), "3 2 1 ");
  EXPECT_EQ(list.GetCount(), 3);
  EXPECT_EQ(list.GetHead(), 1);
  EXPECT_EQ(list.GetTail(), 3);
}

TEST(CList, EmptyOneHasNoPlacesAndRefusesTaking) {
  Numbers list;
  EXPECT_TRUE(list.IsEmpty());
  EXPECT_EQ(list.GetHeadPosition(), nullptr);
  EXPECT_TRUE(RaisesInvalidArg([&] { list.RemoveHead(); }));
  EXPECT_TRUE(RaisesInvalidArg([&] { list.RemoveTail(); }));
  EXPECT_TRUE(RaisesInvalidArg([&] { list.GetHead(); }));
  EXPECT_TRUE(RaisesInvalidArg([&] { list.GetTail(); }));
  EXPECT_TRUE(RaisesInvalidArg([&] { list.RemoveAt(nullptr); }));
  EXPECT_TRUE(RaisesInvalidArg([&] { list.GetAt(nullptr) = 1; }));
  POSITION none = nullptr;
  EXPECT_TRUE(RaisesInvalidArg([&] { list.GetNext(none); }));
}

TEST(CList, InsertsAndRemovesAtEveryPlace) {
  Numbers list = Of({1, 3});
  const POSITION three = list.Find(3);
  list.InsertBefore(three, 2);
  list.InsertAfter(three, 4);
  list.InsertBefore(nullptr, 0);
  list.InsertAfter(nullptr, 5);
  EXPECT_EQ(Shown(list), "0 1 2 3 4 5 ");
  list.RemoveAt(three);
  EXPECT_EQ(list.RemoveHead(), 0);
  EXPECT_EQ(list.RemoveTail(), 5);
  EXPECT_EQ(Shown(list), "1 2 4 ");
  EXPECT_EQ(ShownBackwards(list), "4 2 1 ");
  list.SetAt(list.GetHeadPosition(), 9);
  EXPECT_EQ(list.GetHead(), 9);
}

TEST(CList, FindsBehindAPlaceAndByIndex) {
  const Numbers list = Of({7, 8, 7});
  const POSITION first = list.Find(7);
  EXPECT_EQ(first, list.GetHeadPosition());
  EXPECT_EQ(list.Find(7, first), list.GetTailPosition());
  EXPECT_EQ(list.Find(7, list.GetTailPosition()), nullptr);
  EXPECT_EQ(list.Find(5), nullptr);
  EXPECT_EQ(list.GetAt(list.FindIndex(1)), 8);
  EXPECT_EQ(list.FindIndex(3), nullptr);
  EXPECT_EQ(list.FindIndex(-1), nullptr);
}

TEST(CList, AddsWholeListsEvenItself) {
  Numbers list = Of({1, 2});
  list.AddTail(&list);
  EXPECT_EQ(Shown(list), "1 2 1 2 ");
  const Numbers front = Of({8, 9});
  list.AddHead(&front);
  EXPECT_EQ(Shown(list), "8 9 1 2 1 2 ");
  list.AddTail(static_cast<const Numbers*>(nullptr));
  EXPECT_EQ(list.GetSize(), 6);
}

TEST(CList, CopiesAreIndependentAndMovesEmpty) {
  Numbers list = Of({1, 2});
  Numbers copy = list;
  copy.AddTail(3);
  list = copy;
  copy.RemoveAll();
  EXPECT_EQ(Shown(list), "1 2 3 ");
  const Numbers moved = std::move(list);
  EXPECT_EQ(Shown(moved), "1 2 3 ");
}

TEST(CList, NamedListsHoldTheirKinds) {
  int number = 5;
  CPtrList pointers;
  pointers.AddHead(&number);
  EXPECT_EQ(pointers.GetHead(), &number);
  CStringList texts;
  texts.AddTail(_T("柱"));
  EXPECT_EQ(texts.Find(_T("柱")), texts.GetHeadPosition());
  EXPECT_EQ(Utf8(texts.RemoveHead()), "柱");
}

}  // namespace
}  // namespace lorv
