#include "report/guard.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "framework/values/com_error.h"
#include "platform/headless/services/headless_platform.h"
#include "tests/report/counted_failure.h"

namespace lorv {
namespace {

class Guard : public testing::Test {
 protected:
  HeadlessPlatform machine_;
  ScopedPlatform scope_{machine_.Ports()};
};

TEST_F(Guard, BodyRunsOnceAndNothingHappensWithoutFailure) {
  int runs = 0;
  Guarded(LORV_HERE, [&] { ++runs; });
  EXPECT_EQ(runs, 1);
}

TEST_F(Guard, HeaderExampleKeepsTheResultSetBefore) {
  int result = 1;
  Guarded(LORV_HERE, [&]() -> void {
    result = 2;
    throw std::runtime_error("broken");
  });
  EXPECT_EQ(result, 2);
}

TEST_F(Guard, EveryKindIsHeldBack) {
  TCHAR text[] = {'a', 0};
  _com_error automation(-1);
  EXPECT_NO_THROW(Guarded(LORV_HERE, [&] { throw &automation; }));
  EXPECT_NO_THROW(Guarded(LORV_HERE, [&] { throw static_cast<LPTSTR>(text); }));
  EXPECT_NO_THROW(Guarded(LORV_HERE, [] { throw 5; }));
  EXPECT_NO_THROW(Guarded(LORV_HERE, [] { AfxThrowInvalidArgException(); }));
  EXPECT_NO_THROW(Guarded(LORV_HERE, [] { AfxThrowMemoryException(); }));
}

TEST_F(Guard, FailureObjectOfADerivedKindIsDeleted) {
  int deleted = 0;
  Guarded(LORV_HERE, [&] { throw new test::CountedFailure(deleted, _T("x")); });
  EXPECT_EQ(deleted, 1);
}

}  // namespace
}  // namespace lorv
