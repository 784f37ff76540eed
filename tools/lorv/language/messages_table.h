#pragma once

#include <span>
#include <string_view>

namespace lorv::tool {

// A message by its English text, with "{}" where a value stands; the values come in the same order in both.
struct Message {
  std::string_view english;
  std::string_view chinese;
};

std::span<const Message> Messages();

}  // namespace lorv::tool
