#include <array>

#include "framework/native/native_types.h"
#include "platform/text/unit_order.h"

// The order of Chinese texts on this system, whatever language it runs in: that by sound is its usual one.

namespace lorv {

namespace {

constexpr LCID kChinese = 0x0804;

}  // namespace

SystemOrder::SystemOrder() : native_(nullptr) {}

SystemOrder::~SystemOrder() = default;

std::string SystemOrder::KeyOf(TCHAR unit) const {
  std::array<unsigned char, 64> key{};
  // A sort key is bytes, whatever the parameter's type says.
  const int length = LCMapStringW(kChinese, LCMAP_SORTKEY, &unit, 1, reinterpret_cast<LPWSTR>(key.data()),
                                  static_cast<int>(key.size()));
  return length > 0 ? std::string(key.begin(), key.begin() + length) : std::string();
}

}  // namespace lorv
