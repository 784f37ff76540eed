#pragma once

#include <exception>
#include <utility>

#include "framework/native/export.h"

// Carries an exception from a handler to the caller of the framework across the window system between them,
// through which no exception may pass: Win32, or the event loop of Qt.
//
// Guarded runs where the system calls us, and keeps what was thrown; CallOut runs where we call the system,
// and throws it again when the system has returned. So a caller of Send, Pump or Create sees the exception
// as if the system were not there. Edges: the first exception counts. One that no CallOut waits for (a
// program's own loop delivered the message) ends in Guarded. One thread: that of the user interface.
namespace lorv {

class COMM_LORV_API CarriedFault {
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

  // How many calls of this thread are within CallOut now: a loop within a loop has more of them.
  static int Depth() noexcept;

 private:
  // What was kept before this call belongs to the call around it.
  struct Waiting {
    Waiting() : outer(Begin()) {}
    Waiting(const Waiting&) = delete;
    Waiting& operator=(const Waiting&) = delete;
    ~Waiting() { End(std::move(outer)); }
    std::exception_ptr outer;
  };

  // The state of the thread stays within the library.
  static std::exception_ptr Begin() noexcept;
  static void End(std::exception_ptr outer) noexcept;
  static void Keep() noexcept;
  static void Rethrow();
};

}  // namespace lorv
