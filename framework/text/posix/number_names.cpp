#include "framework/text/number_text.h"

// The two readers of numbers under the names that the suite calls. On Windows the C library has them;
// elsewhere they are these, over the same reader as everything else.

double _wtof(LPCTSTR text) {
  return text == nullptr ? 0.0 : lorv::ReadReal(text);
}

int _wtoi(LPCTSTR text) {
  return text == nullptr ? 0 : lorv::ReadInteger(text);
}
