#include "tools/lorv/text/json_text.h"

#include <cmath>

#include "framework/text/number_text.h"
#include "framework/text/utf8.h"

namespace lorv::tool {

void JsonText::NewLine() {
  text_ += '\n';
  text_.append(static_cast<std::size_t>(depth_) * 2, ' ');
}

void JsonText::BeforeValue() {
  if (after_key_) {
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
  for (int digits = 15; digits < 17; ++digits) {
    std::string text = RealToText(value, 'g', digits);
    if (ReadReal(Utf8ToText(text)) == value) return text;
  }
  return RealToText(value, 'g', 17);
}

std::string PlainReal(double value) {
  if (value == 0) return "0";
  return RealToText(value, 'g', 15);
}

}  // namespace lorv::tool
