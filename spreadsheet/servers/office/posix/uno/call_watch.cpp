#include "spreadsheet/servers/office/posix/uno/call_watch.h"

#include <utility>

// The watch wakes up a few times within the limit, not with every call: beginning and ending a call costs a
// lock that nobody else holds. So a call is ended after its limit and a quarter of it at the most.

namespace lorv::office {

CallWatch::CallWatch(std::chrono::seconds limit, std::function<void()> expire)
    : limit_(limit), expire_(std::move(expire)), thread_([this] { Run(); }) {}

CallWatch::~CallWatch() {
  {
    const std::lock_guard hold(lock_);
    ended_ = true;
  }
  changed_.notify_one();
  thread_.join();
}

void CallWatch::Set(bool calling) {
  const std::lock_guard hold(lock_);
  calling_ = calling;
  if (calling) begin_ = std::chrono::steady_clock::now();
}

void CallWatch::Run() {
  const auto step = std::chrono::duration_cast<std::chrono::milliseconds>(limit_) / 4;
  std::unique_lock hold(lock_);
  while (!ended_) {
    changed_.wait_for(hold, step);
    if (!calling_ || std::chrono::steady_clock::now() - begin_ < limit_) continue;
    // Once a call; and without the lock, as the call's own end waits for it.
    calling_ = false;
    hold.unlock();
    expire_();
    hold.lock();
  }
}

}  // namespace lorv::office
