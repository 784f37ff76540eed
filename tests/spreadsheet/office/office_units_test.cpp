#include <gtest/gtest.h>
#include <signal.h>

#include <atomic>
#include <thread>

#include "spreadsheet/servers/office/posix/uno/call_watch.h"
#include "spreadsheet/servers/office/posix/uno/file_url.h"
#include "spreadsheet/servers/office/posix/uno/pipe_signal.h"

// Parts of the bridge that need no office.

namespace lorv::office {
namespace {

TEST(FileUrl, HeaderExample) {
  EXPECT_EQ(FileUrl("/a b"), "file:///a%20b");
}

TEST(FileUrl, EveryByteThatIsNoPlainLetterIsCoded) {
  EXPECT_EQ(FileUrl("/墙#1?%.xls"), "file:///%E5%A2%99%231%3F%25.xls");
  EXPECT_EQ(FileUrl("/az/AZ-09_.~"), "file:///az/AZ-09_.~");
  EXPECT_EQ(FileUrl(""), "file://");
}

TEST(CallWatch, ACallThatTakesTooLongExpiresOnce) {
  std::atomic<int> expired = 0;
  {
    CallWatch watch(std::chrono::seconds(1), [&] { ++expired; });
    { const CallWatch::Scope call(watch); }
    EXPECT_EQ(expired, 0);
    const CallWatch::Scope call(watch);
    for (int i = 0; i < 1000 && expired == 0; ++i) std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  EXPECT_EQ(expired, 1);
}

TEST(CallWatch, BetweenCallsNothingExpires) {
  std::atomic<int> expired = 0;
  CallWatch watch(std::chrono::seconds(1), [&] { ++expired; });
  std::this_thread::sleep_for(std::chrono::milliseconds(1600));
  EXPECT_EQ(expired, 0);
}

TEST(PipeSignalHeld, TheSignalEndsNobodyAndIsGoneAfterwards) {
  {
    const PipeSignalHeld held;
    raise(SIGPIPE);
  }
  sigset_t pending;
  sigpending(&pending);
  EXPECT_EQ(sigismember(&pending, SIGPIPE), 0);
  sigset_t blocked;
  pthread_sigmask(SIG_BLOCK, nullptr, &blocked);
  EXPECT_EQ(sigismember(&blocked, SIGPIPE), 0);
}

}  // namespace
}  // namespace lorv::office
