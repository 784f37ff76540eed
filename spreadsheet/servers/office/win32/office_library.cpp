#include "spreadsheet/servers/office/office_library.h"

// On Windows programs are reached by their automation; there is no bridge to an office.

namespace lorv::office {

std::unique_ptr<OfficeBridge> StartOffice(const OfficeStart& /*start*/) {
  throw OfficeFault{true, _T("there is no bridge to an office on Windows")};
}

}  // namespace lorv::office
