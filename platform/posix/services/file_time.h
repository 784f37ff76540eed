#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <ctime>

// Times of files: counts of 100 nanoseconds since 1601 on our side, seconds since 1970 on the system's.
namespace lorv {

constexpr std::int64_t kUnitsPerSecond = 10'000'000;
constexpr std::int64_t kNanosecondsPerUnit = 100;
constexpr std::int64_t kSecondsFrom1601To1970 = 11'644'473'600;

inline std::int64_t FileTimeOf(const timespec& time) {
  return (time.tv_sec + kSecondsFrom1601To1970) * kUnitsPerSecond + time.tv_nsec / kNanosecondsPerUnit;
}

// A time of 0 is one to be left as it is.
inline timespec NativeTimeOf(std::int64_t time) {
  if (time == 0) return {0, UTIME_OMIT};
  const std::int64_t behind = time % kUnitsPerSecond;
  return {time / kUnitsPerSecond - kSecondsFrom1601To1970, behind * kNanosecondsPerUnit};
}

}  // namespace lorv
