#pragma once

#include <cstdint>
#include <string>

#include "framework/native/export.h"

namespace lorv {

// The bytes of one character behind the others. `code` is a number below 0x110000 and is not looked at
// further: a surrogate goes out as the three bytes of its number. Any thread.
//
//   std::string out;  AppendUtf8(out, 0x5899)  makes it "墙"
COMM_LORV_API void AppendUtf8(std::string& out, std::uint32_t code);

}  // namespace lorv
