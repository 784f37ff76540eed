#include "tools/lorv/archive/entry_name.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <vector>

#include "compress/zip/zip_format.h"
#include "platform/ports/platform.h"

// Names of entries, from paths of this system to what an archive holds and any other system can
// take. Archives have a narrow name in the suite's code page, which older programs read, and one in Unicode
// beside it.

namespace lorv::tool {
namespace {

std::vector<std::string> Parts(const std::string& path) {
  std::vector<std::string> parts(1);
  for (const char c : path) {
    if (c == '/') {
      parts.emplace_back();
    } else {
      parts.back() += c;
    }
  }
  return parts;
}

bool IsHigh(unsigned unit) {
  return unit >= 0xD800 && unit < 0xDC00;
}
bool IsLow(unsigned unit) {
  return unit >= 0xDC00 && unit < 0xE000;
}

// The digits distinguish two characters that would both be "_"; the short form is for names without room.
std::string Escape(unsigned number, bool by_number) {
  std::array<char, 12> text{};
  std::snprintf(text.data(), text.size(), "#U%04X", number);
  return by_number ? text.data() : "_";
}

std::string Narrowed(TextView text, bool by_number) {
  const CodePage& code_page = *PortsInForce().code_page;
  std::string narrow;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const unsigned unit = static_cast<std::uint16_t>(text[at]);
    const std::string bytes = code_page.ToNarrow(text.substr(at, 1));
    // There and back: a code page may give a character that only looks like it.
    if (code_page.ToText(bytes) == text.substr(at, 1)) {
      narrow += bytes;
      // Both halves are one character, and get one number.
    } else if (IsHigh(unit) && at + 1 < text.size() && IsLow(static_cast<std::uint16_t>(text[at + 1]))) {
      const unsigned low = static_cast<std::uint16_t>(text[++at]);
      narrow += Escape(0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00), by_number);
    } else {
      narrow += Escape(unit, by_number);
    }
  }
  return narrow;
}

}  // namespace

// Both signs, as a path may come from a list that was made on the other system.
std::string EntryNameOf(std::string path) {
  std::replace(path.begin(), path.end(), '\\', '/');
  std::vector<std::string> kept;
  for (std::string& part : Parts(WithoutDrive(path))) {
    if (part.empty() || part == ".") continue;
    if (part != "..") {
      kept.push_back(std::move(part));
    } else if (!kept.empty()) {
      kept.pop_back();
    }
  }
  std::string name;
  for (const std::string& part : kept) name += (name.empty() ? "" : "/") + part;
  return name;
}

std::string NarrowEntryName(const std::string& name) {
  const CString text = CString::FromUtf8(name);
  std::string narrow = Narrowed(text.View(), true);
  // A name too long could not be packed at all: a poorer one can, and the full one stands beside it.
  return narrow.size() < zip::kNameUnits ? narrow : Narrowed(text.View(), false);
}

std::string UnicodeEntryName(const std::string& name, const std::string& narrow) {
  return name == narrow ? std::string() : name;
}

bool LeadsOut(const std::string& name) {
  if (name.empty() || name[0] == '/') return true;
  // A drive leads out on Windows; such a name is refused everywhere, so that an archive means the same.
  if (name.size() > 2 && name[1] == ':' && name[2] == '/') return true;
  const std::vector<std::string> parts = Parts(name);
  return std::find(parts.begin(), parts.end(), "..") != parts.end();
}

}  // namespace lorv::tool
