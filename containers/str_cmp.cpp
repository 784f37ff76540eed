#include "containers/str_cmp.h"

int TStrCmp(LPCTSTR a, LPCTSTR b, bool ignoreCase) {
  if (a == b) return 0;
  if (a == nullptr) return -1;
  if (b == nullptr) return 1;
  return ignoreCase ? lorv::CompareWithoutCase(b, a) : lorv::CompareExact(b, a);
}
