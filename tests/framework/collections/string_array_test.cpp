#include "framework/collections/string_array.h"

#include <gtest/gtest.h>

#include "tests/framework/collections/raised_fault.h"
#include "tests/support/print.h"

namespace lorv {
namespace {

using test::RaisesInvalidArg;
using test::Utf8;

CStringArray Three() {
  CStringArray list;
  list.Add(_T("墙"));
  list.Add(_T("梁"));
  list.Add(_T("板"));
  return list;
}

TEST(CStringArray, HeaderExample) {
  CStringArray names;
  EXPECT_EQ(names.Add(_T("KL")), 0);
  EXPECT_TRUE(RaisesInvalidArg([&] { names.GetAt(5); }));
}

TEST(CStringArray, NewOneIsEmpty) {
  const CStringArray list;
  EXPECT_EQ(list.GetSize(), 0);
  EXPECT_EQ(list.GetCount(), 0);
  EXPECT_TRUE(list.IsEmpty());
  EXPECT_EQ(list.GetUpperBound(), -1);
}

TEST(CStringArray, AddGivesIndexAndNullIsTheEmptyText) {
  CStringArray list = Three();
  EXPECT_EQ(list.Add(static_cast<LPCTSTR>(nullptr)), 3);
  EXPECT_TRUE(list[3].IsEmpty());
  EXPECT_EQ(list.GetUpperBound(), 3);
}

TEST(CStringArray, EveryBadIndexRaisesInvalidArg) {
  CStringArray list = Three();
  const CStringArray& same = list;
  for (const int index : {-1, 3, 4, 2147483647, -2147483647 - 1}) {
    SCOPED_TRACE(index);
    EXPECT_TRUE(RaisesInvalidArg([&] { list.GetAt(index); }));
    EXPECT_TRUE(RaisesInvalidArg([&] { list.SetAt(index, _T("x")); }));
    EXPECT_TRUE(RaisesInvalidArg([&] { list.ElementAt(index); }));
    EXPECT_TRUE(RaisesInvalidArg([&] { list[index].Empty(); }));
    EXPECT_TRUE(RaisesInvalidArg([&] { (void)same[index]; }));
    EXPECT_TRUE(RaisesInvalidArg([&] { list.RemoveAt(index); }));
  }
  EXPECT_EQ(list.GetSize(), 3);
}

TEST(CStringArray, BadSizesAndCountsRaiseInvalidArg) {
  CStringArray list = Three();
  EXPECT_TRUE(RaisesInvalidArg([&] { list.SetSize(-1); }));
  EXPECT_TRUE(RaisesInvalidArg([&] { list.SetAtGrow(-1, _T("x")); }));
  EXPECT_TRUE(RaisesInvalidArg([&] { list.InsertAt(-1, _T("x")); }));
  EXPECT_TRUE(RaisesInvalidArg([&] { list.InsertAt(0, _T("x"), 0); }));
  EXPECT_TRUE(RaisesInvalidArg([&] { list.InsertAt(0, nullptr); }));
  EXPECT_TRUE(RaisesInvalidArg([&] { list.RemoveAt(0, -1); }));
  EXPECT_TRUE(RaisesInvalidArg([&] { list.RemoveAt(2, 2); }));
  EXPECT_TRUE(RaisesInvalidArg([&] { list.RemoveAt(1, 2147483647); }));
  EXPECT_EQ(list.GetSize(), 3);
}

TEST(CStringArray, SetAtGrowFillsTheGap) {
  CStringArray list = Three();
  list.SetAtGrow(5, _T("柱"));
  EXPECT_EQ(list.GetSize(), 6);
  EXPECT_TRUE(list[3].IsEmpty());
  EXPECT_EQ(Utf8(list[5]), "柱");
  list.SetAtGrow(0, list[5]);
  EXPECT_EQ(Utf8(list[0]), "柱");
}

TEST(CStringArray, SetAtGrowTakesItsOwnElementAcrossGrowing) {
  CStringArray list = Three();
  list.SetAtGrow(1000, list[1]);
  EXPECT_EQ(Utf8(list[1000]), "梁");
}

TEST(CStringArray, InsertsBeforeInsideAndBehindTheEnd) {
  CStringArray list = Three();
  list.InsertAt(0, _T("a"));
  list.InsertAt(2, list[0], 2);
  list.InsertAt(8, _T("z"));
  ASSERT_EQ(list.GetSize(), 9);
  EXPECT_EQ(Utf8(list[0] + list[1] + list[2] + list[3] + list[4] + list[5]), "a墙aa梁板");
  EXPECT_TRUE(list[6].IsEmpty());
  EXPECT_TRUE(list[7].IsEmpty());
  EXPECT_EQ(Utf8(list[8]), "z");
}

TEST(CStringArray, InsertsAndAppendsWholeArrays) {
  CStringArray list = Three();
  EXPECT_EQ(list.Append(list), 3);
  ASSERT_EQ(list.GetSize(), 6);
  EXPECT_EQ(Utf8(list[5]), "板");
  list.InsertAt(1, &list);
  ASSERT_EQ(list.GetSize(), 12);
  EXPECT_EQ(Utf8(list[1]), "墙");
  EXPECT_EQ(Utf8(list[7]), "梁");
}

TEST(CStringArray, RemovesOneSomeAndAll) {
  CStringArray list = Three();
  list.RemoveAt(1);
  EXPECT_EQ(Utf8(list[1]), "板");
  list.RemoveAt(2, 0);
  list.RemoveAt(0, 2);
  EXPECT_TRUE(list.IsEmpty());
  list = Three();
  list.RemoveAll();
  EXPECT_TRUE(list.IsEmpty());
}

TEST(CStringArray, CopyReplacesTheContents) {
  CStringArray list;
  list.Add(_T("old"));
  list.Copy(Three());
  EXPECT_EQ(list.GetSize(), 3);
  EXPECT_EQ(Utf8(list.GetData()[2]), "板");
  list.SetSize(1);
  EXPECT_EQ(Utf8(list[0]), "墙");
}

TEST(CUIntArray, HoldsTheWholeRangeAndStartsWithZero) {
  CUIntArray numbers;
  numbers.SetSize(2);
  EXPECT_EQ(numbers[0], 0u);
  numbers.SetAt(1, 4294967295u);
  EXPECT_EQ(numbers.GetAt(1), 4294967295u);
  EXPECT_EQ(numbers.Add(7), 2);
  EXPECT_TRUE(RaisesInvalidArg([&] { numbers.GetAt(3); }));
}

TEST(CArray, HeaderExample) {
  CArray<int> a;
  a.SetAtGrow(2, 7);
  EXPECT_EQ(a.GetSize(), 3);
  EXPECT_EQ(a[0], 0);
}

TEST(CArray, RangeLoopSeesEveryElement) {
  CArray<int> a;
  for (int i = 1; i <= 10; ++i) a.Add(i);
  int sum = 0;
  for (const int value : a) sum += value;
  EXPECT_EQ(sum, 55);
  EXPECT_EQ(a.IsKindOf(RUNTIME_CLASS(CObject)), TRUE);
}

}  // namespace
}  // namespace lorv
