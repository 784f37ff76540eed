#pragma once

#include <string>
#include <string_view>

namespace lorv::office {

// The address of an absolute path in UTF-8, as the office takes it.
//
//   FileUrl("/a b")  gives "file:///a%20b"
std::string FileUrl(std::string_view path);

}  // namespace lorv::office
