#include <gtest/gtest.h>

#include <array>
#include <thread>

#include "platform/choice/desktop_choice.h"

TEST(DesktopChoiceThreads, FirstUsesAtOnceGetOneDesktop) {
  EXPECT_FALSE(lorv::ChosenKind().has_value());
  std::array<lorv::Desktop*, 8> seen = {};
  {
    std::array<std::thread, 8> users;
    for (std::size_t i = 0; i < users.size(); ++i)
      users[i] = std::thread([&seen, i] { seen[i] = &lorv::DesktopInForce(); });
    for (std::thread& user : users) user.join();
  }
  for (const lorv::Desktop* const desktop : seen) EXPECT_EQ(desktop, &lorv::DesktopInForce());
  EXPECT_TRUE(lorv::ChosenKind().has_value());
}
