#include "platform/ports/clock.h"

// The system's clock behind the port. Times that the calendar does not have become the first day, or 0 the
// other way.

namespace lorv {
namespace {

constexpr SYSTEMTIME kFirstDay = {1601, 1, 1, 1, 0, 0, 0, 0};

std::int64_t ToCount(const FILETIME& time) {
  return static_cast<std::int64_t>(static_cast<std::uint64_t>(time.dwHighDateTime) << 32 |
                                   time.dwLowDateTime);
}

FILETIME ToNative(std::int64_t time) {
  const auto bits = static_cast<std::uint64_t>(time);
  return {static_cast<DWORD>(bits), static_cast<DWORD>(bits >> 32)};
}

class Win32Clock : public Clock {
 public:
  SYSTEMTIME LocalTime() override {
    SYSTEMTIME local;
    GetLocalTime(&local);
    return local;
  }

  std::int64_t Now() override {
    FILETIME now;
    GetSystemTimeAsFileTime(&now);
    return ToCount(now);
  }

  SYSTEMTIME ToLocal(std::int64_t time) override {
    const FILETIME native = ToNative(time);
    SYSTEMTIME universal;
    SYSTEMTIME local;
    // Summer time counts by the date itself and not by today.
    const bool known = time >= 0 && FileTimeToSystemTime(&native, &universal) &&
                       SystemTimeToTzSpecificLocalTime(nullptr, &universal, &local);
    return known ? local : kFirstDay;
  }

  std::int64_t FromLocal(const SYSTEMTIME& local) override {
    SYSTEMTIME universal;
    FILETIME time;
    const bool known = TzSpecificLocalTimeToSystemTime(nullptr, &local, &universal) &&
                       SystemTimeToFileTime(&universal, &time);
    return known ? ToCount(time) : 0;
  }
};

}  // namespace

Clock& NativeClock() {
  static Win32Clock clock;
  return clock;
}

}  // namespace lorv
