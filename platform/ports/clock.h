#pragma once

#include <cstdint>

#include "framework/native/export.h"
#include "framework/native/native_types.h"

// The time of day.
//
// Units: file times are counts of 100 nanoseconds since 1601 in universal time; SYSTEMTIME has milliseconds.
// Any thread.
namespace lorv {

class COMM_LORV_API Clock {
 public:
  Clock() = default;
  Clock(const Clock&) = delete;
  Clock& operator=(const Clock&) = delete;
  virtual ~Clock() = default;

  virtual SYSTEMTIME LocalTime() = 0;
  virtual std::int64_t Now() = 0;
  // A file time as the local time of then, and back. A time out of range gives 1601-01-01, and 0.
  virtual SYSTEMTIME ToLocal(std::int64_t time) = 0;
  virtual std::int64_t FromLocal(const SYSTEMTIME& local) = 0;
};

COMM_LORV_API Clock& NativeClock();

}  // namespace lorv
