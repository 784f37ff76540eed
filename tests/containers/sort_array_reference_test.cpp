// The sorted arrays against their plain, step-by-step telling, on random contents; the unsorted ones too.

#include <gtest/gtest.h>

#include <set>
#include <vector>

#include "containers/sort_array.h"
#include "containers/sorted_strings.h"
#include "containers/str_cmp.h"
#include "tests/reference/choice_source.h"
#include "tests/reference/reference_sorted.h"
#include "tests/support/print.h"

namespace lorv::test {
namespace {

using IntArray = TSortArray<int, SortCompare<int, int, __int64>, OxArray<int, OxVector<int>>>;

long long CompareInts(int a, int b) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) - static_cast<std::uint32_t>(b));
}

TEST(SortArrayReference, EverySmallArrayIsSearchedStepForStep) {
  // All arrays of even numbers up to a dozen elements, all keys in and between them.
  for (int count = 0; count <= 12; ++count) {
    IntArray array;
    std::vector<int> plain;
    for (int i = 0; i < count; ++i) {
      array.Add(2 * i);
      plain.push_back(2 * i);
    }
    for (int key = -2; key <= 2 * count + 1; ++key) {
      int position = -7;
      long expected = -7;
      const bool found = array.FindPosition(key, position);
      EXPECT_EQ(found, reference::FindPosition(plain, key, expected, CompareInts)) << count << ' ' << key;
      EXPECT_EQ(position, expected) << count << ' ' << key;
    }
  }
}

TEST(SortArrayReference, RandomInsertionsGiveTheSameIndicesAndOrder) {
  ChoiceSource random(7);
  for (int round = 0; round < 300; ++round) {
    IntArray array;
    std::vector<int> plain;
    // Narrow ranges bring duplicates, the whole range brings differences beyond 32 bits.
    const int range = round % 3 == 0 ? 20 : (round % 3 == 1 ? 2000 : 2147483647);
    for (int i = 0; i < 200; ++i) {
      const int value = static_cast<int>(random.Below(static_cast<std::size_t>(range))) - range / 2;
      ASSERT_EQ(array.AddSorted(value), reference::AddSorted(plain, value, CompareInts)) << round << ' ' << i;
    }
    ASSERT_TRUE(std::equal(array.begin(), array.end(), plain.begin(), plain.end())) << round;
  }
}

TEST(SortArrayReference, DifferencesBeyond32BitsMisleadBothAlike) {
  ChoiceSource random(11);
  for (int round = 0; round < 300; ++round) {
    IntArray array;
    std::vector<int> plain;
    for (int i = 0; i < 60; ++i) {
      const int value = static_cast<int>(random.Bits());
      ASSERT_EQ(array.AddSorted(value), reference::AddSorted(plain, value, CompareInts)) << round << ' ' << i;
    }
    ASSERT_TRUE(std::equal(array.begin(), array.end(), plain.begin(), plain.end())) << round;
  }
}

TEST(SortArrayReference, SearchesOfUnsortedArraysMissTheSameElements) {
  ChoiceSource random(13);
  for (int round = 0; round < 2000; ++round) {
    IntArray array;
    std::vector<int> plain;
    const int count = static_cast<int>(random.Below(16));
    for (int i = 0; i < count; ++i) {
      const int value = static_cast<int>(random.Below(10));
      array.Append(value);
      plain.push_back(value);
    }
    const int key = static_cast<int>(random.Below(12)) - 1;
    int position = -7;
    long expected = -7;
    ASSERT_EQ(array.FindPosition(key, position), reference::FindPosition(plain, key, expected, CompareInts));
    ASSERT_EQ(position, expected);
  }
}

// A keyed set of names, as the calculators hold them.
class NameSet : public TKeyArray<CStrCmp, LPCTSTR, SortCompare<LPCTSTR, LPCTSTR, __int64>,
                                 OxArray<CStrCmp, OxVector<CStrCmp>>> {
 public:
  __int64 CompareKey(const LPCTSTR* key, const CStrCmp& element) const override {
    return CompareWithoutCase(*key, static_cast<LPCTSTR>(element));
  }
};

CString RandomName(ChoiceSource& random) {
  static const TCHAR kUnits[] = {'a', 'A', 'b', 'Z', '_', '9', '[', 0x5899, 0xD800, ' '};
  CString name;
  const std::size_t length = random.OneIn(4) ? 18 + random.Below(6) : random.Below(4);
  for (unsigned i = 0; i < length; ++i) name += length > 4 ? TCHAR{'q'} : random.From(kUnits);
  if (length > 4 && random.OneIn(2)) name += TCHAR{'R'};
  return name;
}

TEST(SortArrayReference, NamesAreKeptAndFoundAlike) {
  ChoiceSource random(17);
  for (int round = 0; round < 200; ++round) {
    NameSet set;
    std::vector<reference::Text> plain;
    for (int i = 0; i < 60; ++i) {
      const CString name = RandomName(random);
      const reference::Text cut = reference::FirstTwenty(reference::Text(name.View()));
      ASSERT_EQ(set.AddSorted(CStrCmp(name)), reference::AddSorted(plain, cut, reference::CompareFolded))
          << Utf8(name);
      const CString other = RandomName(random);
      const reference::Text key(other.View());
      ASSERT_EQ(set.FindKey(other.GetString()), reference::FindKey(plain, key, reference::CompareFolded))
          << Utf8(other);
    }
    ASSERT_EQ(set.size(), plain.size());
    for (std::size_t i = 0; i < plain.size(); ++i) {
      ASSERT_EQ(Utf8(static_cast<LPCTSTR>(set[i])), Utf8(TextView(plain[i])));
    }
  }
}

TEST(SortArrayReference, SortedStringsKeepTheFirstOfEachName) {
  ChoiceSource random(19);
  for (int round = 0; round < 100; ++round) {
    CSortCStringVector list;
    std::set<reference::Text, reference::FoldedLess> plain;
    for (int i = 0; i < 50; ++i) {
      const CString name = RandomName(random);
      ASSERT_EQ(list.SortAdd(name), plain.insert(reference::Text(name.View())).second) << Utf8(name);
    }
    ASSERT_EQ(list.size(), plain.size());
    std::size_t i = 0;
    for (const reference::Text& text : plain) ASSERT_EQ(Utf8(list[i++]), Utf8(TextView(text)));
  }
}

}  // namespace
}  // namespace lorv::test
