#pragma once

#include <algorithm>
#include <filesystem>
#include <string>

#include "spreadsheet/servers/office/posix/uno/file_url.h"
#include "spreadsheet/servers/office/posix/uno/uno_text.h"

namespace lorv::office {

// The address of a path of the library: "\" parts folders as "/" does, and a relative path starts at the
// working folder of this process, which is not the office's.
inline rtl::OUString AddressOf(const Text& path) {
  const rtl::OString bytes = rtl::OUStringToOString(ToUno(path), RTL_TEXTENCODING_UTF8);
  std::string native(bytes.getStr(), static_cast<std::size_t>(bytes.getLength()));
  std::replace(native.begin(), native.end(), '\\', '/');
  return ToUno(FileUrl(std::filesystem::absolute(native).lexically_normal().string()).c_str());
}

}  // namespace lorv::office
