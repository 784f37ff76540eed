#include "platform/win32/desktop/carried_fault.h"

namespace lorv {

thread_local int CarriedFault::waiting_ = 0;
thread_local std::exception_ptr CarriedFault::kept_;

}  // namespace lorv
