#pragma once

#include <exception>
#include <utility>

// The way of an exception from a handler to the caller of the framework, past the system in between, through
// which no exception may pass.
//
// Guarded runs at the system's edge towards us and keeps what was thrown; CallOut runs at our edge towards
// the system and throws it again when the system has come back. So a caller of Send, Pump or Create sees the
// exception as if the system were not there. Edges: the first exception counts. One that nobody of ours waits
// for (a program's own loop delivered the message)
//   ends at the edge. One thread: that of the user interface.
namespace lorv {

class CarriedFault {
 public:
  template <class Work>
  static auto Guarded(Work work) noexcept -> decltype(work()) {
    try {
      return work();
    } catch (...) {
      Keep();
      return {};
    }
  }

  template <class Work>
  static auto CallOut(Work work) {
    const Waiting waiting;
    auto result = work();
    Rethrow();
    return result;
  }

 private:
  struct Waiting {
    Waiting() { ++waiting_; }
    Waiting(const Waiting&) = delete;
    Waiting& operator=(const Waiting&) = delete;
    ~Waiting() { --waiting_; }
  };

  static void Keep() noexcept {
    if (waiting_ > 0 && kept_ == nullptr) kept_ = std::current_exception();
  }
  static void Rethrow() {
    if (kept_ != nullptr) std::rethrow_exception(std::exchange(kept_, nullptr));
  }

  static thread_local int waiting_;
  static thread_local std::exception_ptr kept_;
};

}  // namespace lorv
