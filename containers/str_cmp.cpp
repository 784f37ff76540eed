#include "containers/str_cmp.h"

// The suite's comparison of key texts. Its order is turned round, b against a, which sorted data rely on;
// null comes before every text.

int TStrCmp(LPCTSTR a, LPCTSTR b, bool ignoreCase) {
  if (a == b) return 0;
  if (a == nullptr) return -1;
  if (b == nullptr) return 1;
  return ignoreCase ? lorv::CompareWithoutCase(b, a) : lorv::CompareExact(b, a);
}
