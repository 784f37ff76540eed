#include "module/global_setting.h"

#include <gtest/gtest.h>

#include <vector>

#include "tests/support/print.h"

namespace {

TEST(GlobalSetting, ExportedPointerIsTheOneObject) {
  ASSERT_NE(TasmerSet, nullptr);
  EXPECT_EQ(TasmerSet, gGlobalSetting::GetInstance());
  EXPECT_EQ(TasmerSet, gGlobalSetting::m_pGloblSet);
  EXPECT_EQ(gGlobalSetting::GetInstance(), gGlobalSetting::GetInstance());
}

TEST(GlobalSetting, InstanceIsMadeWhenThereIsNone) {
  gGlobalSetting* const before = gGlobalSetting::m_pGloblSet;
  gGlobalSetting::m_pGloblSet = nullptr;
  gGlobalSetting* const fresh = gGlobalSetting::GetInstance();
  EXPECT_NE(fresh, nullptr);
  EXPECT_EQ(gGlobalSetting::m_pGloblSet, fresh);
  gGlobalSetting::m_pGloblSet = before;
  delete fresh;
}

TEST(GlobalSetting, HeaderExampleAndDefaults) {
  const gGlobalSetting setting;
  EXPECT_EQ(setting.pi, 3.141592653589793);
  EXPECT_EQ(setting.tolerance, 0.0001);
  EXPECT_EQ(setting.double_3, 50.0);
  EXPECT_EQ(setting.byte_1, 0);
  EXPECT_EQ(setting.byte_2, 1);
  EXPECT_EQ(setting.short_1, 1);
  EXPECT_EQ(setting.integer_1, 2);
  EXPECT_EQ(setting.flag_4, 1);
  for (const int flag : {setting.flag_1, setting.flag_2, setting.flag_3, setting.flag_5, setting.flag_6,
                         setting.flag_7, setting.flag_8, setting.flag_9, setting.flag_10, setting.flag_11}) {
    EXPECT_EQ(flag, 0);
  }
  EXPECT_EQ(setting.integer_2, 1);
  EXPECT_EQ(setting.byte_3, 0);
  EXPECT_TRUE(setting.string_list.empty());
  EXPECT_EQ(setting.integer_3, 0);
  EXPECT_EQ(setting.value_list.GetSize(), 0);
  EXPECT_EQ(setting.value_list.GetCapacity(), 0);
  EXPECT_EQ(setting.byte_4, 0);
}

TEST(GlobalSetting, FieldsStandInTheirOrder) {
  const gGlobalSetting s;
  const std::vector<const void*> fields = {&s.pi,      &s.double_2,  &s.tolerance, &s.double_3,    &s.byte_1,
                                           &s.byte_2,  &s.short_1,   &s.integer_1, &s.flag_1,      &s.flag_2,
                                           &s.flag_3,  &s.flag_4,    &s.flag_5,    &s.flag_6,      &s.flag_7,
                                           &s.flag_8,  &s.integer_2, &s.byte_3,    &s.string_list, &s.flag_9,
                                           &s.flag_10, &s.flag_11,   &s.integer_3, &s.value_list,  &s.byte_4};
  for (std::size_t i = 1; i < fields.size(); ++i) EXPECT_LT(fields[i - 1], fields[i]) << i;
}

TEST(GlobalSetting, CopiesMemberByMember) {
  gGlobalSetting setting;
  setting.double_2 = 2.5;
  setting.string_list.Add(_T("墙"));
  setting.value_list.SetSize(3);
  setting.value_list[2] = 7;
  setting.byte_4 = 9;
  const gGlobalSetting copy(setting);
  gGlobalSetting assigned;
  assigned = setting;
  for (const gGlobalSetting* other : {&copy, const_cast<const gGlobalSetting*>(&assigned)}) {
    EXPECT_EQ(other->double_2, 2.5);
    ASSERT_EQ(other->string_list.size(), 1U);
    EXPECT_EQ(other->value_list[2], 7);
    EXPECT_EQ(other->byte_4, 9);
  }
}

TEST(ValueList, GrowsByItsRule) {
  const struct {
    int from;  // capacity reached by this size first
    int size;
    int capacity;
  } cases[] = {
      {0, 0, 0},
      {0, 1, 8},
      {0, 8, 8},
      {0, 9, 9},
      {8, 9, 16},
      {8, 16, 16},
      {8, 17, 17},
      {100, 101, 200},
      {100, 100, 100},
      {8191, 8192, 16382},
      {8192, 8193, 16384},
      {8193, 8194, 16385},
      {20000, 20001, 28192},
      {20000, 30000, 30000},
  };
  for (const auto& c : cases) {
    lorv::ValueList list;
    list.SetSize(c.from);
    const int reached = list.GetCapacity();
    EXPECT_EQ(reached, c.from > 0 && c.from < 8 ? 8 : c.from);
    list.SetSize(c.size);
    EXPECT_EQ(list.GetCapacity(), c.capacity) << c.from << " to " << c.size;
    EXPECT_EQ(list.GetSize(), c.size);
  }
}

TEST(ValueList, ItemsStayAndNewOnesAreZero) {
  lorv::ValueList list;
  list.SetSize(2);
  list[0] = 5;
  list[1] = 6;
  list.SetSize(1);
  list.SetSize(20);
  EXPECT_EQ(list[0], 5);
  EXPECT_EQ(list[1], 0);
  EXPECT_EQ(list[19], 0);
}

TEST(ValueList, NegativeSizeCountsAsNone) {
  lorv::ValueList list;
  list.SetSize(5);
  list.SetSize(-3);
  EXPECT_EQ(list.GetSize(), 0);
  EXPECT_EQ(list.GetCapacity(), 8);
}

TEST(ValueList, AssignmentGrowsOnlyWhenItMust) {
  lorv::ValueList small;
  small.SetSize(3);
  small[2] = 4;
  lorv::ValueList large;
  large.SetSize(50);
  large = small;
  EXPECT_EQ(large.GetCapacity(), 50);
  EXPECT_EQ(large.GetSize(), 3);
  EXPECT_EQ(large[2], 4);
  large.SetSize(20);
  small = large;
  EXPECT_EQ(small.GetCapacity(), 20);
  const lorv::ValueList& itself = small;
  small = itself;
  EXPECT_EQ(small.GetSize(), 20);
  const lorv::ValueList copy(small);
  EXPECT_EQ(copy.GetSize(), 20);
  EXPECT_EQ(copy[2], 4);
}

}  // namespace
