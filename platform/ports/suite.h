#pragma once

#include "framework/native/export.h"
#include "framework/text/cstring.h"

// What the suite says to its libraries about where things lie.
// Any thread.
namespace lorv {

// Stands for the address until the suite sets its own: a name that is never anybody's.
constexpr LPCTSTR kSupportAddress = _T("SMTP:support@suite.example");

class COMM_LORV_API Suite {
 public:
  Suite() = default;
  Suite(const Suite&) = delete;
  Suite& operator=(const Suite&) = delete;
  virtual ~Suite() = default;

  // The folder of the suite; ends in a separator. By default what COMM_LORV_ROOT names in the environment,
  // else the folder of the main program.
  virtual CString RootFolder() = 0;
  // A path in the folder of the user's own files of the suite: the folder is what stands before its last
  // separator. By default what COMM_LORV_USER names, else the folder "Comm_LORV" among the user's
  // application data, made at need.
  virtual CString UserPath() = 0;
  // Where failure reports are mailed to, with the kind of address before it: by default what
  // COMM_LORV_SUPPORT names, else kSupportAddress.
  virtual CString SupportAddress() = 0;
};

COMM_LORV_API Suite& NativeSuite();

// A folder's path with one separator of this system at its end; the empty path stays empty.
COMM_LORV_API CString WithSeparator(const CString& folder, TCHAR separator);

}  // namespace lorv
