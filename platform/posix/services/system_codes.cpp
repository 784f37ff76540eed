#include <iconv.h>

#include <array>

#include "platform/text/code_table.h"

// One code of the code page by the system's conversion, to fill our own table. A code that gives more than
// one unit, or not all of its bytes, has none.

namespace lorv {

SystemCodes::SystemCodes() : native_(iconv_open("UTF-16BE", "CP936")) {}

SystemCodes::~SystemCodes() {
  if (native_ != reinterpret_cast<iconv_t>(-1)) iconv_close(native_);
}

unsigned SystemCodes::UnitOf(std::string_view bytes) const {
  if (native_ == reinterpret_cast<iconv_t>(-1)) return 0;
  std::array<char, 8> in{};
  std::array<char, 8> out{};
  bytes.copy(in.data(), in.size());
  char* from = in.data();
  char* to = out.data();
  std::size_t from_left = bytes.size();
  std::size_t to_left = out.size();
  const std::size_t result = iconv(native_, &from, &from_left, &to, &to_left);
  // Back to the first state, whatever the bytes left behind.
  iconv(native_, nullptr, nullptr, nullptr, nullptr);
  if (result != 0 || from_left != 0 || to_left != out.size() - 2) return 0;
  return static_cast<unsigned>(static_cast<unsigned char>(out[0]) << 8 | static_cast<unsigned char>(out[1]));
}

}  // namespace lorv
