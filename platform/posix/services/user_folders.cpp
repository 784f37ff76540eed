#include "platform/posix/services/user_folders.h"

#include <cstdlib>

// Folders of the user by the desktop's standard. A variable that is no absolute path does not count, as the
// standard says.

namespace lorv {

std::string EnvironmentValue(const char* name) {
  const char* const value = std::getenv(name);  // NOLINT(concurrency-mt-unsafe): nothing of ours sets one
  return value == nullptr ? std::string() : std::string(value);
}

std::string UserFolder(const char* variable, const char* fallback) {
  std::string base = EnvironmentValue(variable);
  if (base.empty() || base[0] != '/') base = EnvironmentValue("HOME") + "/" + fallback;
  return base + "/Comm_LORV";
}

}  // namespace lorv
