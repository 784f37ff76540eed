#include "platform/posix/services/native_path.h"

#include <algorithm>

#include "framework/text/utf8.h"

namespace lorv {

std::string NativePath(LPCTSTR path) {
  if (path == nullptr) return {};
  std::string native = TextToUtf8(path);
  std::replace(native.begin(), native.end(), '\\', '/');
  return native;
}

}  // namespace lorv
