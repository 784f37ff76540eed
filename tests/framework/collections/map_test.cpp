#include "framework/collections/map.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/print.h"

namespace lorv {
namespace {

using test::Utf8;
using NumberMap = CMap<int, int, int, int>;

class Thing : public CObject {
 public:
  explicit Thing(double number) : value(number) {}
  double value;
};

TEST(CMap, HeaderExample) {
  NumberMap m;
  m[3] = 7;
  int v = 0;
  EXPECT_TRUE(m.Lookup(3, v));
  EXPECT_EQ(v, 7);
}

TEST(CMap, UnknownKeyLeavesTheValue) {
  const NumberMap m;
  int v = 5;
  EXPECT_FALSE(m.Lookup(1, v));
  EXPECT_EQ(v, 5);
  EXPECT_EQ(m.PLookup(1), nullptr);
}

TEST(CMap, WalksInTheOrderOfComing) {
  NumberMap m;
  for (const int key : {9, 4, 7, 4}) m.SetAt(key, key * 10);
  std::string seen;
  for (POSITION at = m.GetStartPosition(); at != nullptr;) {
    int key = 0;
    int value = 0;
    m.GetNextAssoc(at, key, value);
    seen += std::to_string(key) + ":" + std::to_string(value) + " ";
    if (key == 4) m.RemoveKey(key);
  }
  EXPECT_EQ(seen, "9:90 4:40 7:70 ");
  EXPECT_EQ(m.GetCount(), 2);
}

TEST(CMap, RemovesOneAndAll) {
  NumberMap m;
  m[1] = 2;
  EXPECT_FALSE(m.RemoveKey(5));
  EXPECT_TRUE(m.RemoveKey(1));
  EXPECT_TRUE(m.IsEmpty());
  EXPECT_EQ(m.GetStartPosition(), nullptr);
  m[1] = 3;
  m.RemoveAll();
  EXPECT_EQ(m.GetSize(), 0);
  int v = 0;
  EXPECT_FALSE(m.Lookup(1, v));
}

TEST(CMap, CopiesAreIndependent) {
  CMapStringToString m;
  m[_T("墙")] = _T("wall");
  CMapStringToString copy = m;
  copy[_T("墙")] = _T("x");
  copy[_T("梁")] = _T("beam");
  CString text;
  EXPECT_TRUE(m.Lookup(_T("墙"), text));
  EXPECT_EQ(Utf8(text), "wall");
  m = copy;
  EXPECT_EQ(m.GetCount(), 2);
  EXPECT_TRUE(m.Lookup(CString(_T("梁")), text));
  EXPECT_EQ(Utf8(text), "beam");
}

TEST(CMap, TextKeysDistinguishCaseAndNullIsEmpty) {
  CMapStringToPtr m;
  int a = 0;
  int b = 0;
  m.SetAt(_T("a"), &a);
  m.SetAt(_T("A"), &b);
  m.SetAt(nullptr, &b);
  void* found = nullptr;
  EXPECT_TRUE(m.Lookup(_T("a"), found));
  EXPECT_EQ(found, &a);
  EXPECT_TRUE(m.Lookup(_T(""), found));
  EXPECT_EQ(m.GetCount(), 3);
}

TEST(CMap, ManyKeysAreAllFound) {
  CMap<CString, LPCTSTR, int, int> m;
  m.InitHashTable(257);
  EXPECT_GE(m.GetHashTableSize(), 257u);
  CString key;
  for (int i = 0; i < 5000; ++i) {
    key.Format(_T("key%d"), i);
    m[key] = i;
  }
  for (int i = 0; i < 5000; ++i) {
    key.Format(_T("key%d"), i);
    const auto* pair = m.PLookup(key);
    ASSERT_NE(pair, nullptr) << i;
    EXPECT_EQ(pair->value, i);
  }
}

TEST(CTypedPtrMap, GivesPointersOfItsClass) {
  CTypedPtrMap<CMapStringToOb, CString, Thing*> m;
  Thing height(3);
  Thing width(4);
  m.SetAt(_T("H"), &height);
  m[_T("B")] = &width;
  Thing* found = nullptr;
  EXPECT_TRUE(m.Lookup(_T("B"), found));
  EXPECT_EQ(found->value, 4);
  EXPECT_EQ(m[_T("H")]->value, 3);
  found = m[_T("none")];
  EXPECT_EQ(found, nullptr);
  found = &height;
  EXPECT_FALSE(m.Lookup(_T("unknown"), found));
  EXPECT_EQ(found, &height);
  POSITION at = m.GetStartPosition();
  CString key;
  m.GetNextAssoc(at, key, found);
  EXPECT_EQ(Utf8(key), "H");
  EXPECT_EQ(found, &height);
}

}  // namespace
}  // namespace lorv
