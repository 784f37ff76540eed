#pragma once

#include <gtest/gtest.h>

#include <cstdlib>

#include "framework/ports/desktop_port.h"

// Handlers that destroy, make anew, move the focus and come back in at random, in every message of every
// window: whatever they do, nothing that is gone is touched. The address sanitizer's build watches it.
namespace lorv_test {

constexpr unsigned kRandomScripts = 10000;

// What a script's user does on one kind of desktop. It is also done in the middle of a message.
class RandomUser {
 public:
  RandomUser() = default;
  RandomUser(const RandomUser&) = delete;
  RandomUser& operator=(const RandomUser&) = delete;
  virtual ~RandomUser() = default;

  virtual lorv::Desktop& Desktop() = 0;
  virtual void Press(int key) = 0;
  virtual void Type(lorv::TextView text) = 0;
  virtual void Click(POINT screen) = 0;
  virtual void MoveMouse(POINT screen) = 0;
  virtual void LeftButton(bool down) = 0;
  virtual void RightButton(bool down) = 0;
  virtual void Wheel(int delta) = 0;
  virtual void Advance(DWORD milliseconds) = 0;
  virtual void Settle() = 0;
};

// Plays the script of that number; fails if a window is left.
void PlayRandomBehaviour(RandomUser& user, unsigned script);

// The script that a run begins with: the environment's LORV_TEST_FROM, to play one that failed by itself.
inline unsigned FirstRandomScript() {
  const char* const asked = std::getenv("LORV_TEST_FROM");
  return asked == nullptr ? 0 : static_cast<unsigned>(std::strtoul(asked, nullptr, 10));
}

// Plays the scripts before that number, each by a user of its own, up to the first that fails.
template <class User>
void PlayRandomScripts(unsigned scripts, void (*play)(RandomUser&, unsigned)) {
  for (unsigned script = FirstRandomScript(); script < scripts && !testing::Test::HasFailure(); ++script) {
    User user;
    try {
      play(user, script);
    } catch (...) {
      ADD_FAILURE() << "script " << script << " let an exception out";
    }
  }
}

}  // namespace lorv_test
