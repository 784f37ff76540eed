#include "tools/lorv/csv/text_decoder.h"

#include <algorithm>

#include "framework/text/utf8.h"
#include "platform/ports/platform.h"
#include "tools/lorv/command/verb.h"
#include "tools/lorv/csv/csv_limits.h"
#include "tools/lorv/language/spoken_language.h"

// Turns what spreadsheets and editors write, in any of four encodings, into UTF-8. It works on whole lines,
// since no character of any of them goes across a line end, and distinguishes GBK from UTF-8 by the first
// bytes that are not ASCII: the one is hardly ever valid as the other.

namespace lorv::tool {
namespace {

constexpr std::size_t kBlock = 1 << 18;

constexpr struct {
  const char* name;
  Encoding encoding;
} kNames[] = {{"auto", Encoding::kAuto},
              {"utf-8", Encoding::kUtf8},
              {"gbk", Encoding::kGbk},
              {"utf-16le", Encoding::kUtf16Little},
              {"utf-16be", Encoding::kUtf16Big}};

bool StartsWith(std::string_view text, std::string_view start) {
  return text.substr(0, start.size()) == start;
}

bool IsAscii(std::string_view bytes) {
  return std::all_of(bytes.begin(), bytes.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

// The smallest character of a sequence of two, three and four bytes: a smaller one is spelt too long.
constexpr unsigned kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};

// The bytes of the character at the front, 0 if it is broken. Characters spelt too long and halves of pairs
// are broken, too: the answer chooses the encoding of the whole file.
std::size_t CharacterLength(std::string_view bytes) {
  const auto byte = [&](std::size_t i) {
    return static_cast<unsigned>(static_cast<unsigned char>(bytes[i]));
  };
  const unsigned lead = byte(0);
  if (lead < 0x80) return 1;
  const std::size_t length = lead < 0xC0 ? 0 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF8 ? 4 : 0;
  if (length == 0 || bytes.size() < length) return 0;
  unsigned character = lead & (0x7Fu >> length);
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xC0u) != 0x80) return 0;
    character = character << 6 | (byte(i) & 0x3Fu);
  }
  const bool surrogate = character >= 0xD800 && character < 0xE000;
  return character < kSmallest[length] || character > 0x10FFFF || surrogate ? 0 : length;
}

// A count of lines in which CR, LF and CRLF are one end each.
long long LineEnds(std::string_view text) {
  long long count = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool pair = text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n';
    count += text[i] == '\n' || (text[i] == '\r' && !pair);
  }
  return count;
}

}  // namespace

Encoding EncodingByName(const std::string& name) {
  std::string known;
  for (const auto& entry : kNames) {
    if (name == entry.name) return entry.encoding;
    known += std::string(known.empty() ? "" : ", ") + entry.name;
  }
  throw BadInput(Say("there is no encoding \"{}\"; known are {}", {name, known}));
}

std::size_t ValidUtf8(std::string_view bytes) {
  std::size_t at = 0;
  while (at < bytes.size()) {
    const std::size_t length = CharacterLength(bytes.substr(at));
    if (length == 0) break;
    at += length;
  }
  return at;
}

void TextDecoder::Fail(std::string_view good, const std::string& message) const {
  throw BadInput(bytes_.Name() + Say(", line {}: ", {std::to_string(line_ + LineEnds(good))}) + Say(message));
}

bool TextDecoder::Fill() {
  if (ended_) return false;
  std::string block;
  bytes_.Read(block, kBlock);
  ended_ = block.empty();
  raw_ += block;
  return !ended_;
}

void TextDecoder::TakeMark(Encoding encoding, std::size_t size) {
  encoding_ = encoding;
  has_mark_ = true;
  raw_.erase(0, size);
}

// A mark wins over guessing, but not over what the user says: the same bytes may be text in GBK.
void TextDecoder::Recognise() {
  const bool unknown = encoding_ == Encoding::kAuto;
  if (StartsWith(raw_, "\xEF\xBB\xBF") && (unknown || encoding_ == Encoding::kUtf8)) {
    TakeMark(Encoding::kUtf8, 3);
  } else if (StartsWith(raw_, "\xFF\xFE") && (unknown || encoding_ == Encoding::kUtf16Little)) {
    TakeMark(Encoding::kUtf16Little, 2);
  } else if (StartsWith(raw_, "\xFE\xFF") && (unknown || encoding_ == Encoding::kUtf16Big)) {
    TakeMark(Encoding::kUtf16Big, 2);
    // The first character of a table is a title's or a digit: with one byte of two being zero it is UTF-16.
  } else if (unknown && raw_.size() >= 2 && (raw_[0] == 0) != (raw_[1] == 0)) {
    encoding_ = raw_[1] == 0 ? Encoding::kUtf16Little : Encoding::kUtf16Big;
  }
}

// The count of bytes at the front that end with a line end; of the whole rest at the end of the file.
std::size_t TextDecoder::WholeLines() const {
  if (ended_) return raw_.size();
  const std::size_t unit = Wide() ? 2 : 1;
  // A CR at the very end may be half of a CRLF: it waits for the next block.
  for (std::size_t at = raw_.size() / unit * unit; at >= unit; at -= unit) {
    const char high = unit == 1 ? '\0' : raw_[at - (encoding_ == Encoding::kUtf16Little ? 1 : 2)];
    const char low = unit == 1 ? raw_[at - 1] : raw_[at - (encoding_ == Encoding::kUtf16Little ? 2 : 1)];
    if (high == 0 && (low == '\n' || (low == '\r' && at + unit <= raw_.size()))) return at;
  }
  return 0;
}

std::string TextDecoder::CheckedUtf8(std::string_view raw) const {
  const std::size_t good = ValidUtf8(raw);
  if (good < raw.size()) {
    Fail(raw.substr(0, good), "this is not UTF-8; save the file as UTF-8, or name its encoding (--encoding)");
  }
  return std::string(raw);
}

std::string TextDecoder::FromGbk(std::string_view raw) const {
  // The code page itself never fails; this is the only trace of what it could not read.
  std::string utf8 = TextToUtf8(PortsInForce().code_page->ToText(raw));
  // What has no character comes back as "?"; a "?" of the file itself is one before and after.
  if (std::count(utf8.begin(), utf8.end(), '?') != std::count(raw.begin(), raw.end(), '?')) {
    Fail({}, "here or in a line below stands what is neither UTF-8 nor GBK; save the file as UTF-8");
  }
  return utf8;
}

std::string TextDecoder::FromUtf16(std::string_view raw) const {
  const std::size_t high = encoding_ == Encoding::kUtf16Little ? 1 : 0;
  std::basic_string<TCHAR> text;
  for (std::size_t i = 0; i + 1 < raw.size(); i += 2) {
    const auto byte = [&](std::size_t at) {
      return static_cast<unsigned>(static_cast<unsigned char>(raw[at]));
    };
    text += static_cast<TCHAR>(byte(i + high) << 8 | byte(i + 1 - high));
  }
  if (raw.size() % 2 != 0) Fail(TextToUtf8(text), "the file ends in the middle of a UTF-16 character");
  return TextToUtf8(text);
}

std::string TextDecoder::Decoded(std::string_view raw) {
  if (encoding_ == Encoding::kAuto) {
    // Not decided before there is need: a file may begin with a thousand lines of plain numbers.
    if (IsAscii(raw)) return std::string(raw);
    encoding_ = ValidUtf8(raw) == raw.size() ? Encoding::kUtf8 : Encoding::kGbk;
  }
  if (Wide()) return FromUtf16(raw);
  return encoding_ == Encoding::kGbk ? FromGbk(raw) : CheckedUtf8(raw);
}

bool TextDecoder::Next(std::string& utf8) {
  utf8.clear();
  if (!begun_) {
    Fill();
    Recognise();
    begun_ = true;
  }
  std::size_t count = WholeLines();
  while (count == 0 && !ended_) {
    // A file that is no text may have no line end at all, and would be read into memory as a whole.
    if (raw_.size() > kMaxCsvLine) {
      Fail({}, Say("a line of more than {} bytes: this is no table", {std::to_string(kMaxCsvLine)}));
    }
    Fill();
    count = WholeLines();
  }
  if (count == 0) return false;
  utf8 = Decoded(std::string_view(raw_).substr(0, count));
  raw_.erase(0, count);
  line_ += LineEnds(utf8);
  return true;
}

}  // namespace lorv::tool
