#include <ctime>

#include "platform/ports/clock.h"
#include "platform/posix/services/file_time.h"

// The system's clock as counts of 100 ns since 1601 and as calendar dates of the local zone. Dates outside
// the range that Windows knows become the first day, so both systems answer alike.

namespace lorv {
namespace {

constexpr std::int64_t kUnitsPerMillisecond = kUnitsPerSecond / 1000;
// The years that a SYSTEMTIME can have.
constexpr int kFirstYear = 1601;
constexpr int kLastYear = 30827;

SYSTEMTIME FromCalendar(const tm& calendar, std::int64_t units) {
  SYSTEMTIME local{};
  local.wYear = static_cast<WORD>(calendar.tm_year + 1900);
  local.wMonth = static_cast<WORD>(calendar.tm_mon + 1);
  local.wDayOfWeek = static_cast<WORD>(calendar.tm_wday);
  local.wDay = static_cast<WORD>(calendar.tm_mday);
  local.wHour = static_cast<WORD>(calendar.tm_hour);
  local.wMinute = static_cast<WORD>(calendar.tm_min);
  local.wSecond = static_cast<WORD>(calendar.tm_sec);
  local.wMilliseconds = static_cast<WORD>(units / kUnitsPerMillisecond);
  return local;
}

constexpr SYSTEMTIME kFirstDay = {kFirstYear, 1, 1, 1, 0, 0, 0, 0};

class PosixClock : public Clock {
 public:
  SYSTEMTIME LocalTime() override { return ToLocal(Now()); }

  std::int64_t Now() override {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    return FileTimeOf(now);
  }

  SYSTEMTIME ToLocal(std::int64_t time) override {
    // No such time exists in the form of files.
    if (time < 0) return kFirstDay;
    const std::time_t seconds = time / kUnitsPerSecond - kSecondsFrom1601To1970;
    tm calendar{};
    if (localtime_r(&seconds, &calendar) == nullptr) return kFirstDay;
    const int year = calendar.tm_year + 1900;
    if (year < kFirstYear || year > kLastYear) return kFirstDay;
    return FromCalendar(calendar, time % kUnitsPerSecond);
  }

  std::int64_t FromLocal(const SYSTEMTIME& local) override {
    if (local.wYear < kFirstYear || local.wYear > kLastYear || local.wMonth < 1 || local.wMonth > 12)
      return 0;
    tm calendar{};
    calendar.tm_year = local.wYear - 1900;
    calendar.tm_mon = local.wMonth - 1;
    calendar.tm_mday = local.wDay;
    calendar.tm_hour = local.wHour;
    calendar.tm_min = local.wMinute;
    calendar.tm_sec = local.wSecond;
    // Whether summer time held then, the system finds out.
    calendar.tm_isdst = -1;
    const std::int64_t seconds = mktime(&calendar) + kSecondsFrom1601To1970;
    if (seconds < 0) return 0;
    return seconds * kUnitsPerSecond + local.wMilliseconds * kUnitsPerMillisecond;
  }
};

}  // namespace

Clock& NativeClock() {
  static PosixClock clock;
  return clock;
}

}  // namespace lorv
