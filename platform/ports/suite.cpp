#include "platform/ports/suite.h"

namespace lorv {

CString WithSeparator(const CString& folder, TCHAR separator) {
  if (folder.IsEmpty()) return folder;
  const TCHAR last = folder[folder.GetLength() - 1];
  return last == '\\' || last == '/' ? folder : folder + separator;
}

}  // namespace lorv
