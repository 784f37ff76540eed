#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace lorv::office {

// Ends what takes too long: calls `expire` on a thread of its own when a watched call has not ended within
// the limit. A call to another process has no limit by itself.
class CallWatch {
 public:
  CallWatch(std::chrono::seconds limit, std::function<void()> expire);
  CallWatch(const CallWatch&) = delete;
  CallWatch& operator=(const CallWatch&) = delete;
  ~CallWatch();

  // A call, for a scope. Calls do not nest.
  class Scope {
   public:
    explicit Scope(CallWatch& watch) : watch_(watch) { watch_.Set(true); }
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;
    ~Scope() { watch_.Set(false); }

   private:
    CallWatch& watch_;
  };

 private:
  void Set(bool calling);
  void Run();

  std::chrono::seconds limit_;
  std::function<void()> expire_;
  std::mutex lock_;
  std::condition_variable changed_;
  bool calling_ = false;
  bool ended_ = false;
  std::chrono::steady_clock::time_point begin_;
  std::thread thread_;
};

}  // namespace lorv::office
