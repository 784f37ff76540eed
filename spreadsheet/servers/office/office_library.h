#pragma once

#include <memory>
#include <string>
#include <vector>

#include "spreadsheet/servers/office/office_port.h"

namespace lorv::office {

// Loads the module of the bridge and has it start an office; OfficeFault, with the reason, where there is no
// such module or no office. What is loaded stays so. One implementation a system.
std::unique_ptr<OfficeBridge> StartOffice(const OfficeStart& start = {});

}  // namespace lorv::office
