#include "platform/posix/services/native_path.h"

#include <algorithm>

#include "framework/text/utf8.h"

// A path of the library as the system wants it: UTF-8, and "/" for each "\". A "\" in a file's name cannot be
// written then; the library's own paths are made with "\" and must lead to the same files everywhere.

namespace lorv {

std::string NativePath(LPCTSTR path) {
  if (path == nullptr) return {};
  std::string native = TextToUtf8(path);
  std::replace(native.begin(), native.end(), '\\', '/');
  return native;
}

}  // namespace lorv
