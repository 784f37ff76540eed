#pragma once

#include <cstdint>

#include "framework/native/native_types.h"

// Times as archives keep them, against file times: counts of 100 nanoseconds since 1601 in universal time,
// 0 for none.
namespace lorv::zip {

// Date and time of DOS in one number, the date in the high half: local time in steps of 2 seconds, 1980 to
// 2107. Times before count as 1980-01-01 00:00:00, later ones as the last that can be stored.
std::uint32_t ToDosTime(std::int64_t file_time);
// 0 for what is no date.
std::int64_t FromDosTime(std::uint32_t dos_time);

// Seconds since 1970 in universal time as unsigned 32 bits, which last until 2106; beyond them the nearer
// end.
std::uint32_t ToUnixTime(std::int64_t file_time);
std::int64_t FromUnixTime(std::uint32_t unix_time);

}  // namespace lorv::zip
