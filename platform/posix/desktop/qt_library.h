#pragma once

#include <memory>
#include <string>
#include <vector>

#include "framework/ports/desktop_port.h"

namespace lorv {

// Where the library of Qt's windows may be: beside this one, then where the system looks.
std::vector<std::string> PlacesOfQtLibrary();

// A desktop of the first library that loads. DesktopFailure names every place if none does, or if one
// loads that is no such library or has no screen to show windows on. What is loaded stays so.
std::unique_ptr<Desktop> DesktopOfLibrary(const std::vector<std::string>& places);

}  // namespace lorv
