#pragma once

#include "framework/ports/desktop_port.h"

namespace lorv::test {

// Makes, shows, paints, changes, hides and ends image tips of the desktop in force, in random order, while
// their threads paint by the system's clock. Fails where a thread is left behind. For the thread sanitizer
// above all.
void PlayTipScripts(Desktop& desktop, int count, unsigned seed);

}  // namespace lorv::test
