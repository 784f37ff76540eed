#include "spreadsheet/servers/engine/xlsx/xml_feed.h"

#include <charconv>
#include <cstdint>
#include <cstring>

#include "framework/text/utf8_bytes.h"
#include "spreadsheet/servers/engine/engine_failure.h"
#include "spreadsheet/servers/engine/engine_limits.h"

// XML in blocks as they are unpacked, reported mark by mark. It knows as much of XML as workbooks use: no
// document types, UTF-8 only, prefixes cut off. What cannot end (a mark, a run of text, nesting and the names
// in it) has limits, so that a hostile file costs no more than those.

namespace lorv::engine {
namespace {

constexpr std::size_t kNone = std::string_view::npos;

[[noreturn]] void Refuse() {
  Fail(_T("工作簿文件已损坏：其中的XML无效。"));
}

bool IsXmlBlank(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

// Prefixes are a writer's choice: the same elements come as "c" and as "x:c".
std::string_view LocalName(std::string_view name) {
  const std::size_t colon = name.find(':');
  return colon == kNone ? name : name.substr(colon + 1);
}

// The place of the ">" that ends a mark; quotes may hold others. npos where it has not come yet.
std::size_t EndOfTag(std::string_view mark) {
  for (std::size_t at = 1; at < mark.size(); ++at) {
    const char c = mark[at];
    if (c == '>') return at;
    if (c != '"' && c != '\'') continue;
    at = mark.find(c, at + 1);
    if (at == kNone) return kNone;
  }
  return kNone;
}

std::uint32_t NumberedCharacter(std::string_view digits) {
  const bool hex = !digits.empty() && (digits[0] == 'x' || digits[0] == 'X');
  if (hex) digits.remove_prefix(1);
  std::uint32_t code = 0;
  const auto [end, error] =
      std::from_chars(digits.data(), digits.data() + digits.size(), code, hex ? 16 : 10);
  // Zero, halves of pairs and what is beyond Unicode are no characters in any document.
  const bool whole = error == std::errc() && end == digits.data() + digits.size();
  if (!whole || code == 0 || code > 0x10FFFF || (code & 0xFFFFF800) == 0xD800) Refuse();
  return code;
}

void AppendEntity(std::string_view name, std::string& out) {
  if (name == "amp") {
    out += '&';
  } else if (name == "lt") {
    out += '<';
  } else if (name == "gt") {
    out += '>';
  } else if (name == "quot") {
    out += '"';
  } else if (name == "apos") {
    out += '\'';
  } else if (!name.empty() && name[0] == '#') {
    AppendUtf8(out, NumberedCharacter(name.substr(1)));
  } else {
    Refuse();
  }
}

}  // namespace

// What stands wrong between attributes refuses the file: the rest of the mark could mean anything.
bool XmlAttributes::Next(Attribute& attribute) {
  std::size_t at = 0;
  while (at < rest_.size() && IsXmlBlank(rest_[at])) ++at;
  const std::size_t equals = rest_.find('=', at);
  if (equals == kNone) return false;
  std::size_t name_end = equals;
  while (name_end > at && IsXmlBlank(rest_[name_end - 1])) --name_end;
  std::size_t quote = equals + 1;
  while (quote < rest_.size() && IsXmlBlank(rest_[quote])) ++quote;
  if (quote >= rest_.size() || (rest_[quote] != '"' && rest_[quote] != '\'')) Refuse();
  const std::size_t end = rest_.find(rest_[quote], quote + 1);
  if (end == kNone) Refuse();
  const std::string_view name = rest_.substr(at, name_end - at);
  attribute.name = LocalName(name);
  attribute.prefix = name.substr(0, name.size() - attribute.name.size());
  attribute.value = rest_.substr(quote + 1, end - quote - 1);
  rest_.remove_prefix(end + 1);
  return true;
}

std::string_view XmlAttributes::Find(std::string_view name, bool prefixed) const {
  XmlAttributes walk = *this;
  Attribute attribute;
  while (walk.Next(attribute)) {
    // "id" and "r:id" of one mark are two things.
    if (attribute.name == name && attribute.prefix.empty() != prefixed) return attribute.value;
  }
  return {};
}

std::string_view XmlAttributes::Value(std::string_view name) const {
  return Find(name, false);
}

std::string_view XmlAttributes::PrefixedValue(std::string_view name) const {
  return Find(name, true);
}

void XmlFeed::Feed(std::string_view block) {
  if (kept_.empty()) {
    // The usual way: a block is read where it lies, and only its cut end is copied.
    kept_.assign(block.substr(Take(block)));
  } else {
    kept_.append(block);
    kept_.erase(0, Take(kept_));
  }
  if (kept_.size() > kMaxXmlToken) Refuse();
}

void XmlFeed::Finish() {
  if (!open_.empty() || !seen_root_) Refuse();
}

// Gives how much of it is done with; the rest comes again with more behind it.
std::size_t XmlFeed::Take(std::string_view from) {
  std::size_t done = 0;
  if (!begun_) {
    // The mark of the encoding may come in pieces.
    if (from.size() < 4) return 0;
    begun_ = true;
    if (from.substr(0, 3) == "\xEF\xBB\xBF") done = 3;
    // UTF-16 and UTF-32 are allowed by the standard and written by none of the programs.
    if (from[0] == '\xFF' || from[0] == '\xFE' || from[0] == 0) Refuse();
  }
  while (done < from.size()) {
    const std::size_t mark = from.find('<', done);
    // A run of text is reported only when its end is there: so no entity is ever cut in two.
    if (mark == kNone) break;
    if (mark > done && !open_.empty()) handler_.Text(from.substr(done, mark - done), false);
    const std::string_view rest = from.substr(mark);
    // 0 or the mark's place: it comes again, with more behind it.
    if (rest.size() < 2) return mark;
    const std::size_t length = rest[1] == '!' || rest[1] == '?' ? TakeSpecial(rest) : TakeTag(rest);
    if (length == 0) return mark;
    done = mark + length;
  }
  return done;
}

std::size_t XmlFeed::TakeSpecial(std::string_view mark) {
  const auto length_to = [&](std::string_view closing, std::size_t opening) -> std::size_t {
    const std::size_t end = mark.find(closing, opening);
    return end == kNone ? 0 : end + closing.size();
  };
  if (mark[1] == '?') return length_to("?>", 2);
  constexpr std::string_view kLiteral = "<![CDATA[";
  if (mark.size() < kLiteral.size()) return 0;
  if (mark.starts_with("<!--")) return length_to("-->", 4);
  // A document type may hold entities that unfold without end: no workbook has one.
  if (!mark.starts_with(kLiteral)) Refuse();
  const std::size_t length = length_to("]]>", kLiteral.size());
  if (length != 0 && !open_.empty())
    handler_.Text(mark.substr(kLiteral.size(), length - kLiteral.size() - 3), true);
  return length;
}

std::size_t XmlFeed::TakeTag(std::string_view mark) {
  const std::size_t end = EndOfTag(mark);
  if (end == kNone) return 0;
  if (mark[1] == '/') {
    Close(mark.substr(2, end - 2));
  } else {
    Open(mark.substr(1, end - 1));
  }
  return end + 1;
}

void XmlFeed::Open(std::string_view inside) {
  const bool empty = !inside.empty() && inside.back() == '/';
  if (empty) inside.remove_suffix(1);
  std::size_t length = 0;
  while (length < inside.size() && !IsXmlBlank(inside[length])) ++length;
  const std::string_view written = inside.substr(0, length);
  const std::string_view name = LocalName(written);
  // One document holds one root; what follows it would be another one.
  if (name.empty() || (open_.empty() && seen_root_) || open_.size() >= kMaxXmlDepth) Refuse();
  if (open_names_.size() + written.size() > kMaxXmlNames) Refuse();
  seen_root_ = true;
  open_.push_back(open_names_.size());
  open_names_ += written;
  handler_.Start(name, XmlAttributes(inside.substr(length)));
  // Handlers see no difference between an empty mark and a pair of them.
  if (empty) Close(written);
}

void XmlFeed::Close(std::string_view inside) {
  while (!inside.empty() && IsXmlBlank(inside.back())) inside.remove_suffix(1);
  // The wrong mark closed means that something between the two is missing: its cells could be anywhere.
  if (open_.empty() || std::string_view(open_names_).substr(open_.back()) != inside) Refuse();
  handler_.End(LocalName(inside));
  open_names_.resize(open_.back());
  open_.pop_back();
}

void AppendXmlText(std::string_view raw, bool literal, std::string& out) {
  std::size_t at = 0;
  while (at < raw.size()) {
    const std::size_t next = raw.find_first_of(literal ? "\r" : "\r&", at);
    out.append(raw.substr(at, next == kNone ? kNone : next - at));
    if (next == kNone) return;
    at = next + 1;
    if (raw[next] == '\r') {
      out += '\n';
      // CR LF and a lone CR are one line end, as the standard wants them before
      // anything else looks at the text.
      if (at < raw.size() && raw[at] == '\n') ++at;
      continue;
    }
    const std::size_t end = raw.find(';', at);
    if (end == kNone) Refuse();
    AppendEntity(raw.substr(at, end - at), out);
    at = end + 1;
  }
}

}  // namespace lorv::engine
