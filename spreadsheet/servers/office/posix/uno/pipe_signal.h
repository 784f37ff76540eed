#pragma once

#include <signal.h>

#include <ctime>

namespace lorv::office {

// Holds back the signal for writing into a pipe that nobody reads any more, for a scope. The office's library
// writes without a care for it, and by default it ends the process. Threads that are started in the scope
// hold it back for good.
class PipeSignalHeld {
 public:
  PipeSignalHeld() {
    sigset_t pending;
    sigpending(&pending);
    was_pending_ = sigismember(&pending, SIGPIPE) != 0;
    sigset_t one = Only();
    pthread_sigmask(SIG_BLOCK, &one, &before_);
  }
  PipeSignalHeld(const PipeSignalHeld&) = delete;
  PipeSignalHeld& operator=(const PipeSignalHeld&) = delete;
  ~PipeSignalHeld() {
    const sigset_t one = Only();
    const timespec at_once = {};
    // What came meanwhile is ours; what was there before is the host's.
    if (!was_pending_) sigtimedwait(&one, nullptr, &at_once);
    pthread_sigmask(SIG_SETMASK, &before_, nullptr);
  }

 private:
  static sigset_t Only() {
    sigset_t one;
    sigemptyset(&one);
    sigaddset(&one, SIGPIPE);
    return one;
  }

  bool was_pending_ = false;
  sigset_t before_{};
};

}  // namespace lorv::office
