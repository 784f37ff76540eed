#pragma once

#include <string>

namespace lorv {

// A value of the environment; empty if not set.
std::string EnvironmentValue(const char* name);

// The folder of this suite below a folder of the user, that an XDG variable names, else `fallback` below the
// home folder. No separator at its end; nothing is made.
std::string UserFolder(const char* variable, const char* fallback);

}  // namespace lorv
