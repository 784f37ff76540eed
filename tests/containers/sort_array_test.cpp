#include "containers/sort_array.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <random>
#include <set>

#include "containers/sorted_strings.h"
#include "containers/str_cmp.h"

namespace {

using IntArray = OxArray<int, OxVector<int>>;
using SortedInts = TSortArray<int, SortCompare<int, int, __int64>, IntArray>;
using ByAddress = SortCompare<LPCTSTR, LPCTSTR, __int64>;
using NameArray = TKeyArray<CStrCmp, LPCTSTR, ByAddress, OxArray<CStrCmp, OxVector<CStrCmp>>>;

class Names : public NameArray {
 public:
  __int64 CompareKey(const LPCTSTR* key, const CStrCmp& element) const override {
    return lorv::CompareWithoutCase(*key, element);
  }
};

// The place of a virtual operation in its class's table, as the platforms' common binary interface keeps it.
template <class Member>
std::size_t SlotOf(Member member) {
  std::uintptr_t place = 0;
  static_assert(sizeof member >= sizeof place);
  std::memcpy(&place, &member, sizeof place);
  return (place - 1) / sizeof(void*);
}

// Programs built against one version of the arrays call another one's by these places.
TEST(OxArray, SlotsStandInTheAgreedOrder) {
  using A = IntArray;
  EXPECT_EQ(SlotOf(static_cast<A& (A::*)(const A*)>(&A::Assign)), 0U);
  EXPECT_EQ(SlotOf(&A::Add), 1U);
  EXPECT_EQ(SlotOf(static_cast<A& (A::*)(const A&)>(&A::Assign)), 2U);
  EXPECT_EQ(SlotOf(static_cast<int& (A::*)(const int&)>(&A::Append)), 3U);
  EXPECT_EQ(SlotOf(static_cast<int& (A::*)(int&&)>(&A::Append)), 4U);
  EXPECT_EQ(SlotOf(&A::Grow), 5U);
  using S = SortedInts;
  EXPECT_EQ(SlotOf(&S::AddSorted), 6U);
  EXPECT_EQ(SlotOf(&S::Compare), 7U);
  EXPECT_EQ(SlotOf(static_cast<int& (S::*)(int, const int&)>(&S::InsertAt)), 8U);
  EXPECT_EQ(SlotOf(static_cast<int& (S::*)(int, int&&)>(&S::InsertAt)), 9U);
  EXPECT_EQ(SlotOf(&S::ReserveEmpty), 10U);
  EXPECT_EQ(SlotOf(&NameArray::CompareKey), 11U);
}

TEST(OxArray, CapacitiesFollowTheGrowthRule) {
  IntArray a;
  std::vector<std::size_t> capacities;
  for (int i = 0; i < 20; ++i) {
    a.Add(i);
    if (capacities.empty() || capacities.back() != a.capacity()) capacities.push_back(a.capacity());
  }
  EXPECT_EQ(capacities, (std::vector<std::size_t>{4, 8, 12, 18, 27}));
}

TEST(OxArray, GrowReportsWhetherItRaisedTheCapacity) {
  IntArray a;
  EXPECT_EQ(a.Grow(), 1);
  EXPECT_EQ(a.Grow(), 0);
}

TEST(OxArray, AddTakesAnElementOfItself) {
  OxArray<CString, OxVector<CString>> a;
  for (int i = 0; i < 4; ++i) a.Add(CString(_T("a text too long to be held inline")));
  ASSERT_EQ(a.size(), a.capacity());
  EXPECT_EQ(a.Add(a[0]), CString(_T("a text too long to be held inline")));
}

TEST(OxArray, AssignOfMissingArrayEmpties) {
  IntArray a;
  a.Add(1);
  EXPECT_EQ(&a.Assign(nullptr), &a);
  EXPECT_TRUE(a.empty());
}

TEST(OxArray, AssignCopiesAndStandsItself) {
  IntArray a, b;
  a.Add(1);
  a.Append(2);
  b.Add(9);
  b.Assign(a);
  EXPECT_EQ(b.size(), 2U);
  b.Assign(&b);
  EXPECT_EQ(b[1], 2);
}

TEST(SortArray, HeaderExample) {
  SortedInts a;
  a.AddSorted(7);
  EXPECT_EQ(a.AddSorted(3), 0);
}

TEST(SortArray, FirstElementGoesToIndexZero) {
  SortedInts a;
  EXPECT_EQ(a.AddSorted(5), 0);
}

TEST(SortArray, GreatestGoesToTheEndAndEqualChangesNothing) {
  SortedInts a;
  for (int v : {1, 3, 5}) a.AddSorted(v);
  EXPECT_EQ(a.AddSorted(9), 3);
  EXPECT_EQ(a.AddSorted(3), 1);
  EXPECT_EQ(a.size(), 4U);
}

TEST(SortArray, StaysSortedLikeASet) {
  std::mt19937 random(7);
  for (int round = 0; round < 200; ++round) {
    SortedInts a;
    std::set<int> expected;
    for (int i = 0; i < 60; ++i) {
      const int value = static_cast<int>(random() % 50);
      const int at = a.AddSorted(value);
      expected.insert(value);
      ASSERT_EQ(a[static_cast<std::size_t>(at)], value);
    }
    ASSERT_EQ(std::vector<int>(a.begin(), a.end()), std::vector<int>(expected.begin(), expected.end()));
  }
}

TEST(SortArray, FarApartIntegersCompareWrongly) {
  const SortCompare<int, int, __int64> compare;
  EXPECT_GT(compare(5, 3), 0);
  EXPECT_GT(compare(-2147483647, 2147483647), 0);
}

TEST(SortArray, PointersCompareByAddress) {
  const TCHAR text[] = {'b', 'a', 0};
  EXPECT_EQ(ByAddress()(text + 1, text), 1);
  EXPECT_EQ(ByAddress()(text, text + 1), -1);
}

TEST(SortArray, ReserveEmptyReservesOnlyWhenEmpty) {
  SortedInts a;
  EXPECT_EQ(a.ReserveEmpty(10), 1);
  EXPECT_GE(a.capacity(), 10U);
  a.AddSorted(1);
  EXPECT_EQ(a.ReserveEmpty(100), 0);
}

TEST(SortArray, AppendDoesNotSort) {
  SortedInts a;
  a.AddSorted(5);
  a.Append(1);
  EXPECT_EQ(a[1], 1);
}

TEST(SortArray, InsertAtGivesTheElement) {
  SortedInts a;
  a.AddSorted(5);
  EXPECT_EQ(a.InsertAt(0, 3), 3);
  EXPECT_EQ(a[0], 3);
}

TEST(KeyArray, FindsByKeyWithoutCase) {
  Names names;
  EXPECT_EQ(names.FindKey(_T("A")), -1);
  for (LPCTSTR name : {_T("H"), _T("b"), _T("L"), _T("墙")}) names.AddSorted(name);
  EXPECT_EQ(names.AddSorted(_T("B")), names.FindKey(_T("b")));
  EXPECT_EQ(names.size(), 4U);
  EXPECT_GE(names.FindKey(_T("h")), 0);
  EXPECT_GE(names.FindKey(_T("墙")), 0);
  EXPECT_EQ(names.FindKey(_T("Q")), -1);
}

TEST(KeyArray, NeverReserves) {
  Names names;
  EXPECT_EQ(names.ReserveEmpty(10), 0);
  EXPECT_EQ(names.capacity(), 0U);
}

TEST(KeyArray, UnderscoreSortsBeforeLetters) {
  Names names;
  names.AddSorted(_T("A"));
  EXPECT_EQ(names.AddSorted(_T("_")), 0);
}

TEST(SortedStrings, KeepsOrderAndRefusesDuplicates) {
  CSortCStringVector v;
  EXPECT_TRUE(v.SortAdd(_T("wall")));
  EXPECT_TRUE(v.SortAdd(_T("Beam")));
  EXPECT_TRUE(v.SortAdd(_T("slab")));
  EXPECT_FALSE(v.SortAdd(_T("beam")));
  ASSERT_EQ(v.size(), 3U);
  EXPECT_EQ(v[0], CString(_T("Beam")));
  EXPECT_EQ(v[2], CString(_T("wall")));
}

}  // namespace
