#include <algorithm>
#include <iterator>
#include <string_view>

#include "tools/lorv/archive/entry_name.h"

// Names that no file of Windows can have, as archives from other systems hold them. Such an entry is reported
// and left out: the system would write to a device, or under a name that no program can open again.

namespace lorv::tool {
namespace {

constexpr std::string_view kDevices[] = {"CON", "PRN", "AUX", "NUL"};
constexpr std::string_view kNumberedDevices[] = {"COM", "LPT"};

// "con.txt" is the console as well.
bool IsDevice(std::string_view part) {
  std::string stem(part.substr(0, part.find('.')));
  // Blanks at the end count for nothing to the system, nor do they here.
  while (stem.ends_with(' ')) stem.pop_back();
  for (char& c : stem) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
  if (std::find(std::begin(kDevices), std::end(kDevices), stem) != std::end(kDevices)) return true;
  const bool numbered = stem.size() == 4 && stem[3] >= '1' && stem[3] <= '9';
  const auto* const end = std::end(kNumberedDevices);
  return numbered && std::find(std::begin(kNumberedDevices), end, stem.substr(0, 3)) != end;
}

bool IsNoPart(std::string_view part) {
  const bool control = std::any_of(part.begin(), part.end(), [](char c) { return c > 0 && c < ' '; });
  // A point or a blank at the end is cut off by the system, and would make one name of two.
  return control || part.find_first_of("<>:\"|?*") != std::string_view::npos || part.ends_with('.') ||
         part.ends_with(' ') || IsDevice(part);
}

}  // namespace

std::string WithoutDrive(const std::string& path) {
  return path.size() > 1 && path[1] == ':' ? path.substr(2) : path;
}

bool IsNoNameHere(const std::string& name) {
  std::string_view rest = name;
  for (;;) {
    const std::size_t end = rest.find('/');
    const std::string_view part = rest.substr(0, end);
    // These lead somewhere and are looked at elsewhere, as names that may lead out.
    const bool walks = part.empty() || part == "." || part == "..";
    if (!walks && IsNoPart(part)) return true;
    if (end == std::string_view::npos) return false;
    rest = rest.substr(end + 1);
  }
}

}  // namespace lorv::tool
