#pragma once

#include "framework/native/export.h"
#include "framework/native/native_types.h"

// Values of configuration files, and of the user's profile.
//
// Form: "[section]" lines, "key=value" lines; names without letter case, blanks around them count for
//   nothing; the first that fits counts. ";" begins a comment line.
// Result: `fallback` where the file, the section or the key is missing or the value is empty. A value is
//   read like this: a sign, "0x" for hexadecimal, digits up to the first other character; 32 bits are kept.
//   A value that begins with none is 0.
// Any thread; a file is read anew at each call.
namespace lorv {

class COMM_LORV_API Settings {
 public:
  Settings() = default;
  Settings(const Settings&) = delete;
  Settings& operator=(const Settings&) = delete;
  virtual ~Settings() = default;

  virtual int FileValue(LPCTSTR file, LPCTSTR section, LPCTSTR key, int fallback) = 0;
  virtual int ProfileValue(LPCTSTR section, LPCTSTR key, int fallback) = 0;
};

COMM_LORV_API Settings& NativeSettings();

}  // namespace lorv
