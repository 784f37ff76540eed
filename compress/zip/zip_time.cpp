#include "compress/zip/zip_time.h"

#include <algorithm>
#include <cstdint>

#include "platform/ports/platform.h"

// Times of entries: two seconds of local time in the headers, seconds since 1970 in the field that newer
// tools write. Times outside either form become the nearest end of it, never a wrong year.

namespace lorv::zip {
namespace {

constexpr std::int64_t kTicksPerSecond = 10'000'000;
constexpr std::int64_t kUnixEpoch = 11'644'473'600;  // seconds from 1601 to 1970
constexpr WORD kFirstYear = 1980;
constexpr WORD kLastYear = 2107;
constexpr std::uint32_t kFirstDosTime = 0x00210000;
constexpr std::uint32_t kLastDosTime = 0xFF9FBF7D;

std::uint32_t Packed(const SYSTEMTIME& t) {
  const unsigned date = static_cast<unsigned>(t.wYear - kFirstYear) << 9 |
                        static_cast<unsigned>(t.wMonth) << 5 | static_cast<unsigned>(t.wDay);
  const unsigned time = static_cast<unsigned>(t.wHour) << 11 | static_cast<unsigned>(t.wMinute) << 5 |
                        static_cast<unsigned>(t.wSecond) / 2;
  return date << 16 | time;
}

}  // namespace

std::uint32_t ToDosTime(std::int64_t file_time) {
  const SYSTEMTIME local = PortsInForce().clock->ToLocal(file_time);
  if (local.wYear < kFirstYear) return kFirstDosTime;
  if (local.wYear > kLastYear) return kLastDosTime;
  return Packed(local);
}

std::int64_t FromDosTime(std::uint32_t dos_time) {
  SYSTEMTIME local = {};
  local.wYear = static_cast<WORD>(kFirstYear + (dos_time >> 25));
  local.wMonth = static_cast<WORD>(dos_time >> 21 & 15);
  local.wDay = static_cast<WORD>(dos_time >> 16 & 31);
  local.wHour = static_cast<WORD>(dos_time >> 11 & 31);
  local.wMinute = static_cast<WORD>(dos_time >> 5 & 63);
  local.wSecond = static_cast<WORD>((dos_time & 31) * 2);
  // The bits can hold what no calendar has; such a time is "none".
  if (local.wMonth < 1 || local.wMonth > 12 || local.wDay < 1 || local.wHour > 23 || local.wMinute > 59)
    return 0;
  return PortsInForce().clock->FromLocal(local);
}

std::uint32_t ToUnixTime(std::int64_t file_time) {
  const std::int64_t seconds = file_time / kTicksPerSecond - kUnixEpoch;
  return static_cast<std::uint32_t>(std::clamp<std::int64_t>(seconds, 0, UINT32_MAX));
}

std::int64_t FromUnixTime(std::uint32_t unix_time) {
  return (unix_time + kUnixEpoch) * kTicksPerSecond;
}

}  // namespace lorv::zip
