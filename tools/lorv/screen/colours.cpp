#include "tools/lorv/screen/colours.h"

// Colours of messages. Whether there are any is one switch for the whole program, as there is one terminal.

namespace lorv::tool {
namespace {

bool used = false;

constexpr const char* kBegin[] = {"\x1b[31m", "\x1b[33m", "\x1b[32m"};
constexpr const char* kEnd = "\x1b[0m";

}  // namespace

void UseColours(bool use) {
  used = use;
}

std::string Coloured(Colour colour, std::string_view text) {
  if (!used || text.empty()) return std::string(text);
  return kBegin[static_cast<std::size_t>(colour)] + std::string(text) + kEnd;
}

std::string ColouredMark(const std::string& caret_text) {
  const std::size_t end = caret_text.find('\n');
  if (!used || end == std::string::npos) return caret_text;
  // Without the line end, which would carry the colour on to the next line.
  const std::string below = caret_text.substr(end + 1, caret_text.size() - end - 2);
  return caret_text.substr(0, end + 1) + Coloured(Colour::kMark, below) + "\n";
}

}  // namespace lorv::tool
