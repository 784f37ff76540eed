#include "platform/ports/settings.h"

// Settings by the system's ini functions, unchanged.

namespace lorv {
namespace {

class Win32Settings : public Settings {
 public:
  int FileValue(LPCTSTR file, LPCTSTR section, LPCTSTR key, int fallback) override {
    // The system gives a number without sign: what is beyond 31 bits comes out negative.
    return static_cast<int>(GetPrivateProfileIntW(section, key, fallback, file));
  }

  int ProfileValue(LPCTSTR section, LPCTSTR key, int fallback) override {
    return static_cast<int>(GetProfileIntW(section, key, fallback));
  }
};

}  // namespace

Settings& NativeSettings() {
  static Win32Settings settings;
  return settings;
}

}  // namespace lorv
