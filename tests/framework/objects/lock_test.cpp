#include "framework/objects/lock.h"

#include <gtest/gtest.h>

#include <future>
#include <vector>

namespace {

// What the action gives on a thread of its own.
template <class Action>
auto Elsewhere(Action action) {
  return std::async(std::launch::async, action).get();
}

TEST(CCriticalSection, HeaderExample) {
  CCriticalSection section;
  EXPECT_TRUE(section.Lock(0));
  EXPECT_FALSE(Elsewhere([&] { return section.Lock(0); }));
  EXPECT_TRUE(section.Unlock());
}

TEST(CCriticalSection, IsLeftAsOftenAsEntered) {
  CCriticalSection section;
  EXPECT_TRUE(section.Lock());
  EXPECT_TRUE(section.Lock());
  EXPECT_TRUE(section.TryLock());
  EXPECT_TRUE(section.Unlock());
  EXPECT_TRUE(section.Unlock());
  EXPECT_FALSE(Elsewhere([&] { return section.TryLock(); }));
  EXPECT_TRUE(section.Unlock());
  EXPECT_FALSE(section.Unlock());
  EXPECT_TRUE(Elsewhere([&] { return section.TryLock() && section.Unlock(); }));
}

TEST(CCriticalSection, StrangerCannotUnlock) {
  CCriticalSection section;
  section.Lock();
  EXPECT_FALSE(Elsewhere([&] { return section.Unlock(); }));
  EXPECT_FALSE(Elsewhere([&] { return section.Lock(0); }));
  section.Unlock();
}

TEST(CCriticalSection, WaitEndsWithTheTime) {
  CCriticalSection section;
  section.Lock();
  EXPECT_FALSE(Elsewhere([&] { return section.Lock(20); }));
  section.Unlock();
}

TEST(CCriticalSection, GuardsACounterAgainstManyThreads) {
  CCriticalSection section;
  int counter = 0;
  std::vector<std::future<void>> threads;
  for (int t = 0; t < 4; ++t) {
    threads.push_back(std::async(std::launch::async, [&] {
      for (int i = 0; i < 2000; ++i) {
        CSingleLock lock(&section, TRUE);
        ++counter;
      }
    }));
  }
  for (auto& thread : threads) thread.get();
  EXPECT_EQ(counter, 8000);
}

TEST(CSingleLock, HeaderExample) {
  CCriticalSection section;
  const CSingleLock lock(&section, TRUE);
  EXPECT_TRUE(lock.IsLocked());
}

TEST(CSingleLock, LeavesAtTheEndOfItsScope) {
  CCriticalSection section;
  {
    CSingleLock lock(&section);
    EXPECT_FALSE(lock.IsLocked());
    EXPECT_TRUE(lock.Lock());
    EXPECT_TRUE(lock.Lock());
  }
  EXPECT_TRUE(Elsewhere([&] { return section.TryLock() && section.Unlock(); }));
}

TEST(CSingleLock, SaysWhenItDidNotGetIn) {
  CCriticalSection section;
  section.Lock();
  EXPECT_FALSE(Elsewhere([&] {
    CSingleLock lock(&section);
    return lock.Lock(0) || lock.IsLocked() || lock.Unlock();
  }));
  section.Unlock();
  CSingleLock none(nullptr, TRUE);
  EXPECT_FALSE(none.IsLocked());
  EXPECT_FALSE(none.Unlock());
}

}  // namespace
