#include "platform/text/unit_order.h"

#include <gtest/gtest.h>

#include <set>

using lorv::UnitOrder;

TEST(UnitOrder, ByCodeEachUnitIsItsOwnWeight) {
  const UnitOrder& order = UnitOrder::ByCode();
  EXPECT_FALSE(order.IsBySound());
  for (unsigned code = 0; code < 0x10000; ++code) ASSERT_EQ(order.WeightOf(static_cast<TCHAR>(code)), code);
}

TEST(UnitOrder, NoTwoUnitsHaveOneWeight) {
  const UnitOrder& order = UnitOrder::BySound();
  std::set<std::uint16_t> weights;
  for (unsigned code = 0; code < 0x10000; ++code) weights.insert(order.WeightOf(static_cast<TCHAR>(code)));
  EXPECT_EQ(weights.size(), 0x10000U);
}

TEST(UnitOrder, OthersThanChineseStayByTheirCodes) {
  const UnitOrder& order = UnitOrder::BySound();
  for (unsigned code = 0; code < 0x10000; ++code) {
    const std::uint16_t weight = order.WeightOf(static_cast<TCHAR>(code));
    if (code < 0x4E00 || code > 0x9FFF)
      ASSERT_EQ(weight, code);
    else
      ASSERT_TRUE(weight >= 0x4E00 && weight <= 0x9FFF) << code;
  }
}

TEST(UnitOrder, HeaderExample) {
  const UnitOrder& order = UnitOrder::BySound();
  const bool before = order.WeightOf(0x677F) < order.WeightOf(0x6881);
  EXPECT_TRUE(before);
}

TEST(UnitOrder, BySoundWordsStandAsInADictionary) {
  const UnitOrder& order = UnitOrder::BySound();
  // ban, ci, liang, qiang, zhu: by their codes the third would not stand behind the second.
  const TCHAR sounds[] = {0x677F, 0x6B21, 0x6881, 0x5899, 0x67F1};
  for (std::size_t i = 1; i < std::size(sounds) && order.IsBySound(); ++i)
    EXPECT_LT(order.WeightOf(sounds[i - 1]), order.WeightOf(sounds[i])) << i;
  if (!order.IsBySound()) {
    EXPECT_EQ(order.WeightOf(0x6B21), 0x6B21);
  }
}
