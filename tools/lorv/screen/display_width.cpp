#include "tools/lorv/screen/display_width.h"

#include <algorithm>

#include "tools/lorv/screen/character_width_table.h"

// How wide texts are on a terminal. Half of what the tool prints is Chinese, two columns a character, so
// neither bytes nor characters show where the next column of a table or the mark under a formula begins.

namespace lorv::tool {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool Holds(std::span<const CodeRange> ranges, char32_t character) {
  const auto after = std::upper_bound(ranges.begin(), ranges.end(), character,
                                      [](char32_t c, const CodeRange& range) { return c < range.first; });
  return after != ranges.begin() && character <= std::prev(after)->last;
}

// The count of bytes that a lead byte announces, 0 if it is none.
std::size_t SequenceLength(unsigned char lead) {
  if (lead < 0x80) return 1;
  // The two below would begin a spelling in two bytes of what takes one.
  if (lead < 0xC2) return 0;
  if (lead < 0xE0) return 2;
  if (lead < 0xF0) return 3;
  return lead < 0xF5 ? 4 : 0;
}

bool IsControl(char32_t c) {
  return c < 0x20 || (c >= 0x7F && c < 0xA0) || c == 0x2028 || c == 0x2029;
}

}  // namespace

char32_t TakeCharacter(std::string_view& text) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const std::size_t length = SequenceLength(byte(0));
  char32_t character = length == 1 ? byte(0) : length == 0 ? kReplacement : byte(0) & (0x7Fu >> length);
  std::size_t used = 1;
  for (; used < length; ++used) {
    if (used >= text.size() || (byte(used) & 0xC0) != 0x80) {
      character = kReplacement;
      break;
    }
    character = (character << 6) | (byte(used) & 0x3Fu);
  }
  // After a broken sequence one byte only: the next one may begin a character that is whole.
  text.remove_prefix(character == kReplacement ? 1 : used);
  return character;
}

int DisplayWidth(char32_t character) {
  if (IsControl(character)) return 0;
  // Nearly all text is here, and needs no search.
  if (character < 0x300) return 1;
  if (Holds(CharactersWithoutWidth(), character)) return 0;
  return Holds(WideCharacters(), character) ? 2 : 1;
}

int DisplayWidth(std::string_view text) {
  int columns = 0;
  while (!text.empty()) columns += DisplayWidth(TakeCharacter(text));
  return columns;
}

std::string PadRight(std::string_view text, int columns) {
  std::string padded(text);
  padded.append(static_cast<std::size_t>(std::max(0, columns - DisplayWidth(text))), ' ');
  return padded;
}

std::string PadLeft(std::string_view text, int columns) {
  return std::string(static_cast<std::size_t>(std::max(0, columns - DisplayWidth(text))), ' ') +
         std::string(text);
}

std::string Printable(std::string_view text) {
  std::string printable;
  while (!text.empty()) {
    const std::string_view before = text;
    const char32_t character = TakeCharacter(text);
    if (IsControl(character)) {
      printable += ' ';
      // As a terminal shows it; the byte itself might be taken for a beginning of something else.
    } else if (character == kReplacement) {
      printable += "\xEF\xBF\xBD";
    } else {
      printable += before.substr(0, before.size() - text.size());
    }
  }
  return printable;
}

std::string Shortened(std::string_view text, int columns) {
  if (DisplayWidth(text) <= columns) return std::string(text);
  std::string_view rest = text;
  std::size_t kept = 0;
  // Room for the three points at the end.
  for (int used = 0; !rest.empty();) {
    used += DisplayWidth(TakeCharacter(rest));
    if (used > columns - 3) break;
    kept = text.size() - rest.size();
  }
  return std::string(text.substr(0, kept)) + "...";
}

}  // namespace lorv::tool
