#pragma once

#include "framework/objects/exceptions.h"
#include "framework/values/com_error.h"

// The last line of defence: makes a report of what a guarded function caught.
//
// The report names the failure, the module and its version, the place in the source and the free memory. It
//   is appended to the user's "ErrorInfo.er" or, where the product flags hold 0x1000, shown to the user.
// `file` and `line` are the place in the source; `signature` is the full text of the catching function's
//   signature and goes to the suite's stack report only. `module` is the module to name: null for the main
//   program. Null texts count as empty.
// Result: none, and no failure leaves these functions: a log that does not open is passed over in silence.
// The failure object is deleted; the automation failure and the text stay the caller's.
// Any thread that can write a file; reports of two threads may mix in the log.
//
//   try { Work(); } catch (CException* e) { ReportCustErrorEx(e, _T("a.cpp"), _T("void Work()"), 5, nullptr);
//   }

// A null `caught` reports something unknown and asks the suite's stack report, if it is loaded.
COMM_LORV_API void ReportCustErrorEx(CException* caught, LPCTSTR file, LPCTSTR signature, int line,
                                     const HINSTANCE& module);

// The message is the failure's description, and empty without one.
COMM_LORV_API void ReportCustErrorEx(_com_error* caught, LPCTSTR file, LPCTSTR signature, int line,
                                     const HINSTANCE& module);

COMM_LORV_API void ReportCustErrorEx(LPCTSTR text, LPCTSTR file, LPCTSTR signature, int line,
                                     const HINSTANCE& module);
