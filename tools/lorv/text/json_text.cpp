#include "tools/lorv/text/json_text.h"

#include <charconv>
#include <cmath>

#include "framework/text/number_text.h"
#include "framework/text/utf8.h"

// JSON as it is written, piece by piece, with the numbers that a program gets and those that people read.
// Nothing is kept but the text: a verb writes each object once, in its order.

namespace lorv::tool {
namespace {

// Numbers in between are written without an exponent by both rules for digits.
constexpr double kLeastPlain = 1e-4;
constexpr double kMostPlain = 1e15;
constexpr std::size_t kPlainDigits = 15;

}  // namespace

void JsonText::NewLine() {
  text_ += '\n';
  text_.append(static_cast<std::size_t>(depth_) * 2, ' ');
}

void JsonText::BeforeValue() {
  if (after_key_) {
    // A value behind its key stands on the key's line.
    after_key_ = false;
    return;
  }
  if (!first_) text_ += ',';
  first_ = false;
  if (depth_ > 0) NewLine();
}

void JsonText::Open(char bracket) {
  BeforeValue();
  text_ += bracket;
  ++depth_;
  first_ = true;
}

void JsonText::Close(char bracket) {
  --depth_;
  if (!first_) NewLine();
  text_ += bracket;
  first_ = false;
}

JsonText& JsonText::Key(std::string_view key) {
  BeforeValue();
  Quoted(key);
  text_ += ": ";
  after_key_ = true;
  return *this;
}

void JsonText::Quoted(std::string_view utf8) {
  static constexpr char kHex[] = "0123456789abcdef";
  text_ += '"';
  for (const char c : utf8) {
    const auto code = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\') {
      text_ += '\\';
      text_ += c;
      // Written by name, as it is the one control character that texts of several lines hold.
    } else if (c == '\n') {
      text_ += "\\n";
    } else if (code < 0x20) {
      text_ += "\\u00";
      text_ += kHex[code >> 4];
      text_ += kHex[code & 15];
    } else {
      text_ += c;
    }
  }
  text_ += '"';
}

void JsonText::String(std::string_view utf8) {
  BeforeValue();
  Quoted(utf8);
}

void JsonText::Number(double value) {
  BeforeValue();
  text_ += std::isfinite(value) ? ShortestReal(value) : "null";
}

void JsonText::Number(long long value) {
  BeforeValue();
  text_ += std::to_string(value);
}

void JsonText::Bool(bool value) {
  BeforeValue();
  text_ += value ? "true" : "false";
}

void JsonText::Null() {
  BeforeValue();
  text_ += "null";
}

std::string ShortestReal(double value) {
  if (value == 0) return "0";
  // Fifteen digits give most numbers back, seventeen all of them.
  for (int digits = 15; digits < 17; ++digits) {
    std::string text = RealToText(value, 'g', digits);
    if (ReadReal(Utf8ToText(text)) == value) return text;
  }
  return RealToText(value, 'g', 17);
}

// The shortest digits are those of 15 where there are no more of them: they cost a third.
std::string PlainReal(double value) {
  if (value == 0) return "0";
  const double size = std::fabs(value);
  if (size >= kLeastPlain && size < kMostPlain) {
    char text[40];
    const std::string_view digits(
        text, std::to_chars(text, text + sizeof text, value, std::chars_format::fixed).ptr);
    const std::size_t first = digits.find_first_of("123456789");
    const std::size_t point = digits.find('.');
    const bool point_within = point != std::string_view::npos && point > first;
    if (digits.size() - first - (point_within ? 1 : 0) <= kPlainDigits) return std::string(digits);
  }
  return RealToText(value, 'g', 15);
}

}  // namespace lorv::tool
