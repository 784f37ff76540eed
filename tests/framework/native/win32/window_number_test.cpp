#include <gtest/gtest.h>

#include "framework/native/window_types.h"

namespace {

struct Row {
  const char* name;
  long long ours;
  long long theirs;
};

#define LORV_NUMBER(type, name, value)                         \
  Row{#name, static_cast<long long>(static_cast<type>(value)), \
      static_cast<long long>(static_cast<type>(name))},
const Row kRows[] = {
#include "framework/native/posix/window_number_table.inc"
};
#undef LORV_NUMBER

}  // namespace

TEST(WindowNumbers, AreTheSystems) {
  for (const Row& row : kRows) EXPECT_EQ(row.ours, row.theirs) << row.name;
  EXPECT_GT(std::size(kRows), 600U);
}
