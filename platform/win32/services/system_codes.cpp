#include "framework/native/native_types.h"
#include "platform/text/code_table.h"

// One code of the code page by the system's conversion, to fill our own table. What gives more than one unit
// has none.

namespace lorv {

SystemCodes::SystemCodes() = default;

SystemCodes::~SystemCodes() = default;

unsigned SystemCodes::UnitOf(std::string_view bytes) const {
  WCHAR units[4] = {};
  // Strictly: without the flag the system would put a sign in the place of what is none.
  const int count = MultiByteToWideChar(kNarrowCodePage, MB_ERR_INVALID_CHARS, bytes.data(),
                                        static_cast<int>(bytes.size()), units, 4);
  return count == 1 ? units[0] : 0;
}

}  // namespace lorv
