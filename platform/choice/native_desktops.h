#pragma once

#include <memory>

#include "platform/choice/desktop_choice.h"

// The desktops that this system has. For the choice only, which see for failures.
namespace lorv {

// What is taken if no call has chosen.
DesktopKind UsualDesktop();
std::unique_ptr<Desktop> MakeDesktop(DesktopKind kind);

}  // namespace lorv
