#include "platform/models/first_fault.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "platform/models/carried_fault.h"

TEST(FirstFault, AllPartsAreRunAndTheFirstExceptionGoesOn) {
  int parts = 0;
  lorv::FirstFault fault;
  fault.Run([&] { ++parts, throw std::runtime_error("first"); });
  fault.Run([&] { ++parts; });
  fault.Run([&] { ++parts, throw std::runtime_error("second"); });
  EXPECT_EQ(parts, 3);
  try {
    fault.Rethrow();
    FAIL() << "nothing was thrown";
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(error.what(), "first");
  }
  EXPECT_NO_THROW(fault.Rethrow());
}

TEST(CarriedFault, ComesBackBehindTheCallOut) {
  int after = 0;
  const auto call = [&] {
    return lorv::CarriedFault::CallOut([&] {
      lorv::CarriedFault::Guarded([]() -> bool { throw std::runtime_error("handler"); });
      return ++after;
    });
  };
  EXPECT_THROW(call(), std::runtime_error);
  EXPECT_EQ(after, 1);
  EXPECT_EQ(lorv::CarriedFault::CallOut([] { return 5; }), 5);
}

TEST(CarriedFault, ACallInTheMiddleDoesNotGetTheOuterOnesException) {
  int inner = 0;
  const auto call = [&] {
    return lorv::CarriedFault::CallOut([&] {
      lorv::CarriedFault::Guarded([]() -> bool { throw std::runtime_error("handler"); });
      inner = lorv::CarriedFault::CallOut([] { return 5; });
      return true;
    });
  };
  EXPECT_THROW(call(), std::runtime_error);
  EXPECT_EQ(inner, 5);
}

TEST(CarriedFault, EndsAtTheEdgeWhereNobodyWaits) {
  EXPECT_FALSE(lorv::CarriedFault::Guarded([]() -> bool { throw std::runtime_error("handler"); }));
  EXPECT_EQ(lorv::CarriedFault::CallOut([] { return 5; }), 5);
}
