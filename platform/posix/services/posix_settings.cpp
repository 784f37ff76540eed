#include "platform/ports/settings.h"

#include "platform/ports/files.h"
#include "platform/posix/services/user_folders.h"
#include "platform/text/ini_text.h"

// Settings from ini files, read by our own reader of the form. The user's profile, which Windows keeps in its
// registry, is an ini file in the folder for configuration.

namespace lorv {
namespace {

TextView ViewOf(LPCTSTR text) {
  return text == nullptr ? TextView() : TextView(text);
}

class PosixSettings : public Settings {
 public:
  int FileValue(LPCTSTR file, LPCTSTR section, LPCTSTR key, int fallback) override {
    const auto bytes = NativeFiles().ReadAll(file);
    if (!bytes) return fallback;
    const CString text = IniTextOf(*bytes, SuiteCodePage());
    return IniInteger(text.View(), ViewOf(section), ViewOf(key), fallback);
  }

  int ProfileValue(LPCTSTR section, LPCTSTR key, int fallback) override {
    const CString file = CString::FromUtf8(UserFolder("XDG_CONFIG_HOME", ".config") + "/profile.ini");
    return FileValue(file, section, key, fallback);
  }
};

}  // namespace

Settings& NativeSettings() {
  static PosixSettings settings;
  return settings;
}

}  // namespace lorv
