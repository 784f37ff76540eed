#include "grid/editing/option_menu.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

using lorv::OptionEntries;
using lorv::OptionEntry;

TEST(OptionMenu, HeaderExample) {
  EXPECT_EQ(OptionEntries(32).back(), (OptionEntry{31, false, true}));
}

TEST(OptionMenu, NoOptionsNoEntries) {
  EXPECT_TRUE(OptionEntries(0).empty());
  EXPECT_TRUE(OptionEntries(-5).empty());
}

TEST(OptionMenu, ThirtyTwoOptionsTakeTwoColumns) {
  const auto entries = OptionEntries(32);
  EXPECT_EQ(std::count_if(entries.begin(), entries.end(),
                          [](const OptionEntry& entry) { return entry.begins_column; }),
            1);
  EXPECT_TRUE(std::none_of(entries.begin(), entries.end(),
                           [](const OptionEntry& entry) { return entry.opens_more; }));
}

TEST(OptionMenu, TheTenthColumnEndsWithMore) {
  const auto entries = OptionEntries(400);
  EXPECT_TRUE(entries[309].opens_more);
  EXPECT_FALSE(entries[309].begins_column);
  EXPECT_EQ(std::count_if(entries.begin(), entries.end(),
                          [](const OptionEntry& entry) { return entry.opens_more; }),
            1);
  EXPECT_TRUE(entries[310].begins_column) << "a multiple of 31 begins a column in the submenu, too";
  EXPECT_EQ(entries.size(), 400U);
}

TEST(OptionMenu, SubmenusFollowOneAnother) {
  // The entry behind "more" begins a column at once, so that a submenu has one entry less to its tenth
  // column.
  const auto entries = OptionEntries(100000);
  int columns = 1;
  for (const OptionEntry& entry : entries) {
    if (entry.begins_column) ++columns;
    if (entry.opens_more) {
      EXPECT_EQ(columns, lorv::kColumnsInMenu) << entry.option;
      columns = 1;
    }
  }
  EXPECT_EQ(entries[309 + 279].opens_more, true);
}
