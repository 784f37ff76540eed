#include <locale.h>

#include <array>
#include <cstring>

#include "framework/text/utf8.h"
#include "platform/text/unit_order.h"

// The order of the system's Chinese locale, whatever locale the process has. Its characters stand by sound.

namespace lorv {

SystemOrder::SystemOrder()
    : native_(newlocale(LC_COLLATE_MASK | LC_CTYPE_MASK, "zh_CN.UTF-8", static_cast<locale_t>(nullptr))) {}

SystemOrder::~SystemOrder() {
  if (native_ != nullptr) freelocale(static_cast<locale_t>(native_));
}

std::string SystemOrder::KeyOf(TCHAR unit) const {
  if (native_ == nullptr) return {};
  const std::string text = TextToUtf8({&unit, 1});
  std::array<char, 64> key{};
  const std::size_t length = strxfrm_l(key.data(), text.c_str(), key.size(), static_cast<locale_t>(native_));
  return length < key.size() ? std::string(key.data(), length) : std::string();
}

}  // namespace lorv
