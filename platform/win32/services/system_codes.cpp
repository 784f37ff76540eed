#include "framework/native/native_types.h"
#include "platform/text/code_table.h"

namespace lorv {

SystemCodes::SystemCodes() = default;

SystemCodes::~SystemCodes() = default;

unsigned SystemCodes::UnitOf(std::string_view bytes) const {
  WCHAR units[4] = {};
  const int count = MultiByteToWideChar(kNarrowCodePage, MB_ERR_INVALID_CHARS, bytes.data(),
                                        static_cast<int>(bytes.size()), units, 4);
  return count == 1 ? units[0] : 0;
}

}  // namespace lorv
