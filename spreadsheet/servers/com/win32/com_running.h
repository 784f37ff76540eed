#pragma once

#include <memory>

#include "spreadsheet/connection/spreadsheet_system.h"

namespace lorv::com {

// The system's table of running objects, from its beginning; null where any step to it fails.
std::unique_ptr<RunningObjects> WalkRunningObjects();

}  // namespace lorv::com
