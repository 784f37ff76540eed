#include "spreadsheet/servers/office/posix/uno/file_url.h"

// Paths as the office wants them. Bytes and not characters are written in digits, so that a path of any
// code page comes back as it was.

namespace lorv::office {

std::string FileUrl(std::string_view path) {
  constexpr std::string_view kPlain = "/-_.~0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string url = "file://";
  for (const char c : path) {
    if (kPlain.find(c) != std::string_view::npos) {
      url += c;
      continue;
    }
    const auto byte = static_cast<unsigned char>(c);
    url += '%';
    url += kDigits[byte >> 4U];
    url += kDigits[byte & 15U];
  }
  return url;
}

}  // namespace lorv::office
