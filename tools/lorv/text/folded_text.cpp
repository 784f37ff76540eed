#include "tools/lorv/text/folded_text.h"

// The one way in which names of columns, classes and words of rules are made alike before they are compared.
// ASCII letters only: what other alphabets call a capital depends on the language, and Chinese has none.

namespace lorv::tool {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";

}  // namespace

std::string Folded(std::string_view utf8) {
  const std::size_t first = utf8.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  std::string folded(utf8.substr(first, utf8.find_last_not_of(kBlanks) - first + 1));
  for (char& c : folded) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return folded;
}

}  // namespace lorv::tool
