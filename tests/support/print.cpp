#include "tests/support/print.h"

#include <ostream>

void PrintTo(const CString& text, std::ostream* out) {
  *out << '"' << text.ToUtf8() << '"';
}

namespace lorv::test {

std::string Utf8(const CString& text) {
  return text.ToUtf8();
}

std::string Utf8(TextView text) {
  return TextToUtf8(text);
}

std::string Utf8(LPCTSTR text) {
  return text == nullptr ? "(null)" : TextToUtf8(text);
}

}  // namespace lorv::test
