#include "platform/ports/suite.h"

// Folders as the suite passes them around: with a separator at the end, and only one.

namespace lorv {

CString WithSeparator(const CString& folder, TCHAR separator) {
  if (folder.IsEmpty()) return folder;
  const TCHAR last = folder[folder.GetLength() - 1];
  return last == '\\' || last == '/' ? folder : folder + separator;
}

}  // namespace lorv
