#include "framework/text/utf8.h"

#include <cstdint>

#include "framework/text/utf8_bytes.h"

// UTF-8 to 16-bit units and back. Nothing is refused: broken bytes and lone surrogates become U+FFFD, one for
// each byte or unit that begins no character, so that a damaged file can still be shown and its length stays
// bounded by its bytes.

namespace lorv {
namespace {

constexpr std::uint32_t kReplacement = 0xFFFD;

struct LeadByte {
  std::size_t extra;       // bytes that follow
  std::uint32_t bits;      // payload of the lead byte
  std::uint32_t smallest;  // code points below are overlong
};

bool Classify(unsigned char byte, LeadByte& lead) {
  // C0 and C1 could only begin overlong forms; from F5 on nothing is a code point.
  if (byte >= 0xC2 && byte <= 0xDF) {
    lead = {1, byte & 0x1Fu, 0x80};
  } else if (byte >= 0xE0 && byte <= 0xEF) {
    lead = {2, byte & 0x0Fu, 0x800};
  } else if (byte >= 0xF0 && byte <= 0xF4) {
    lead = {3, byte & 0x07u, 0x10000};
  } else {
    return false;
  }
  return true;
}

bool IsCodePoint(std::uint32_t code, std::uint32_t smallest) {
  return code >= smallest && code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
}

// Reads one character at `at` and moves behind it; a byte that begins none gives the replacement.
std::uint32_t ReadCharacter(std::string_view bytes, std::size_t& at) {
  const auto first = static_cast<unsigned char>(bytes[at++]);
  if (first < 0x80) return first;
  LeadByte lead{};
  if (!Classify(first, lead) || bytes.size() - at < lead.extra) return kReplacement;
  std::uint32_t code = lead.bits;
  for (std::size_t i = 0; i < lead.extra; ++i) {
    const auto byte = static_cast<unsigned char>(bytes[at + i]);
    if ((byte & 0xC0) != 0x80) return kReplacement;
    code = code << 6 | (byte & 0x3Fu);
  }
  // Overlong forms and surrogates are refused: one character must not have two spellings.
  if (!IsCodePoint(code, lead.smallest)) return kReplacement;
  // Only for a whole character; else the next byte is looked at for itself.
  at += lead.extra;
  return code;
}

void AppendUnits(std::basic_string<TCHAR>& out, std::uint32_t code) {
  if (code < 0x10000) {
    out.push_back(static_cast<TCHAR>(code));
    return;
  }
  code -= 0x10000;
  out.push_back(static_cast<TCHAR>(0xD800 + (code >> 10)));
  out.push_back(static_cast<TCHAR>(0xDC00 + (code & 0x3FF)));
}

std::uint32_t ReadUnits(TextView text, std::size_t& at) {
  const auto unit = static_cast<std::uint32_t>(text[at++]);
  if (unit < 0xD800 || unit > 0xDFFF) return unit;
  if (unit > 0xDBFF || at == text.size()) return kReplacement;
  const auto next = static_cast<std::uint32_t>(text[at]);
  if (next < 0xDC00 || next > 0xDFFF) return kReplacement;
  ++at;
  return 0x10000 + ((unit - 0xD800) << 10) + (next - 0xDC00);
}

}  // namespace

void AppendUtf8(std::string& out, std::uint32_t code) {
  const auto put = [&out](std::uint32_t byte) { out.push_back(static_cast<char>(byte)); };
  if (code < 0x80) {
    put(code);
  } else if (code < 0x800) {
    put(0xC0 | code >> 6);
    put(0x80 | (code & 0x3F));
  } else if (code < 0x10000) {
    put(0xE0 | code >> 12);
    put(0x80 | (code >> 6 & 0x3F));
    put(0x80 | (code & 0x3F));
  } else {
    put(0xF0 | code >> 18);
    put(0x80 | (code >> 12 & 0x3F));
    put(0x80 | (code >> 6 & 0x3F));
    put(0x80 | (code & 0x3F));
  }
}

std::basic_string<TCHAR> Utf8ToText(std::string_view bytes) {
  std::basic_string<TCHAR> out;
  out.reserve(bytes.size());
  for (std::size_t at = 0; at < bytes.size();) AppendUnits(out, ReadCharacter(bytes, at));
  return out;
}

std::string TextToUtf8(TextView text) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) AppendUtf8(out, ReadUnits(text, at));
  return out;
}

}  // namespace lorv
