#include "framework/text/number_text.h"

double _wtof(LPCTSTR text) {
  return text == nullptr ? 0.0 : lorv::ReadReal(text);
}

int _wtoi(LPCTSTR text) {
  return text == nullptr ? 0 : lorv::ReadInteger(text);
}
