#include "platform/models/carried_fault.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <thread>

namespace {

using lorv::CarriedFault;

// What an operation throws, as text; "nothing" if it comes back.
template <class Operation>
std::string Thrown(Operation operation) {
  try {
    operation();
  } catch (const std::exception& fault) {
    return fault.what();
  } catch (int number) {
    return std::to_string(number);
  }
  return "nothing";
}

// A handler as the window system calls it: what it throws must not come out here.
int Handle(const char* fault) {
  return CarriedFault::Guarded([fault] {
    if (fault != nullptr) throw std::runtime_error(fault);
    return 5;
  });
}

}  // namespace

TEST(FaultOnItsWay, WithoutAFaultAnswersPassThrough) {
  EXPECT_EQ(Handle(nullptr), 5);
  EXPECT_EQ(CarriedFault::CallOut([] { return Handle(nullptr) + 1; }), 6);
}

TEST(FaultOnItsWay, AFaultComesOutOfTheCallThatWaits) {
  int answer = -1;
  EXPECT_EQ(Thrown([&] {
              CarriedFault::CallOut([&] {
                answer = Handle("first");
                return 0;
              });
            }),
            "first");
  // The system got the answer of a handler that does nothing.
  EXPECT_EQ(answer, 0);
  EXPECT_EQ(Thrown([] { CarriedFault::CallOut([] { return Handle(nullptr); }); }), "nothing");
}

TEST(FaultOnItsWay, TheFirstOfSeveralCounts) {
  EXPECT_EQ(Thrown([] {
              CarriedFault::CallOut([] {
                Handle("first");
                Handle("second");
                return Handle(nullptr);
              });
            }),
            "first");
}

TEST(FaultOnItsWay, WithNobodyWaitingItEnds) {
  EXPECT_EQ(Thrown([] { Handle("nobody waits"); }), "nothing");
  // And does not come up at the next call.
  EXPECT_EQ(Thrown([] { CarriedFault::CallOut([] { return 0; }); }), "nothing");
}

TEST(FaultOnItsWay, AFaultInsideAHandlersOwnCallIsThatCalls) {
  std::string inner;
  const auto handler = [&inner] {
    return CarriedFault::Guarded([&inner] {
      inner = Thrown([] { CarriedFault::CallOut([] { return Handle("inner"); }); });
      return 1;
    });
  };
  EXPECT_EQ(Thrown([&] { CarriedFault::CallOut(handler); }), "nothing");
  EXPECT_EQ(inner, "inner");
}

TEST(FaultOnItsWay, TheCallAroundKeepsItsOwn) {
  std::string inner;
  EXPECT_EQ(Thrown([&] {
              CarriedFault::CallOut([&] {
                Handle("outer");
                inner = Thrown([] { CarriedFault::CallOut([] { return Handle("inner"); }); });
                return Handle(nullptr);
              });
            }),
            "outer");
  EXPECT_EQ(inner, "inner");
}

TEST(FaultOnItsWay, WhatTheCallItselfThrowsLeavesNothingBehind) {
  EXPECT_EQ(Thrown([] {
              CarriedFault::CallOut([]() -> int {
                Handle("kept");
                throw 7;
              });
            }),
            "7");
  EXPECT_EQ(Thrown([] { CarriedFault::CallOut([] { return 0; }); }), "nothing");
  EXPECT_EQ(Thrown([] { Handle("nobody waits"); }), "nothing");
}

TEST(FaultOnItsWay, AnyKindIsCarried) {
  EXPECT_EQ(
      Thrown([] { CarriedFault::CallOut([] { return CarriedFault::Guarded([]() -> int { throw 42; }); }); }),
      "42");
}

// Each thread keeps faults of its own and gives back what it took, in whatever order the system ends its
// variables.
TEST(FaultOnItsWay, ThreadsThatCarriedFaultsEnd) {
  for (int i = 0; i < 200; ++i) {
    std::string inner;
    std::thread([&inner] {
      Thrown([&] {
        CarriedFault::CallOut([&] {
          Handle("outer");
          inner = Thrown([] { CarriedFault::CallOut([] { return Handle("inner"); }); });
          return 0;
        });
      });
    }).join();
    ASSERT_EQ(inner, "inner") << i;
  }
}

TEST(FaultOnItsWay, CallsWithinCallsAreCounted) {
  EXPECT_EQ(CarriedFault::Depth(), 0);
  CarriedFault::CallOut([] {
    EXPECT_EQ(CarriedFault::Depth(), 1);
    CarriedFault::CallOut([] {
      EXPECT_EQ(CarriedFault::Depth(), 2);
      std::thread([] { EXPECT_EQ(CarriedFault::Depth(), 0); }).join();
      return 0;
    });
    EXPECT_EQ(CarriedFault::Depth(), 1);
    return 0;
  });
  EXPECT_EQ(CarriedFault::Depth(), 0);
}
