#include "grid/clipboard/html_table.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>

#include "framework/text/utf8.h"
#include "framework/text/utf8_bytes.h"

// A table as HTML, written and read. Reading is tolerant, as every program writes another HTML, and goes over
// the text once.

namespace lorv {
namespace {

constexpr std::string_view kBlanks = " \t\r\n\f";
// A plain <br> begins another row in some spreadsheets. Those that know conditional comments get one that
// does not; the others take the line feed.
constexpr std::string_view kBreak =
    "<!--[if mso]><br style=\"mso-data-placement:same-cell;\"><![endif]-->&#10;";

void AppendEscaped(std::string& html, TextView text) {
  const std::string bytes = TextToUtf8(text);
  for (std::size_t at = 0; at < bytes.size(); ++at) {
    const char c = bytes[at];
    // HTML folds blanks, but for those in the middle of a line.
    const bool edge = at == 0 || at + 1 == bytes.size() || bytes[at - 1] == ' ' || bytes[at - 1] == '\n';
    if (c == '&') {
      html += "&amp;";
    } else if (c == '<') {
      html += "&lt;";
    } else if (c == '>') {
      html += "&gt;";
    } else if (c == '\n') {
      html += kBreak;
    } else if (c == '\r') {
      if (at + 1 == bytes.size() || bytes[at + 1] != '\n') html += kBreak;
    } else if (c == ' ' && edge) {
      html += "&nbsp;";
    } else {
      html += c;
    }
  }
}

std::string ColourText(COLORREF colour) {
  std::array<char, 8> text = {};
  std::snprintf(text.data(), text.size(), "#%02X%02X%02X", unsigned{GetRValue(colour)},
                unsigned{GetGValue(colour)}, unsigned{GetBValue(colour)});
  return text.data();
}

char Lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::string Lowered(std::string_view text) {
  std::string lowered(text);
  std::transform(lowered.begin(), lowered.end(), lowered.begin(), Lower);
  return lowered;
}

void AppendCodePoint(std::string& text, unsigned long code) {
  // A break that is not one ends as a plain space, as a cell has it.
  if (code == 0xA0) code = ' ';
  if (code == 0 || code > 0x10FFFF || (code >= 0xD800 && code < 0xE000)) code = 0xFFFD;
  AppendUtf8(text, static_cast<std::uint32_t>(code));
}

// Appends what the entity stands for; false: the name between & and ; is none.
bool AppendEntity(std::string& text, std::string_view name) {
  constexpr std::array<std::pair<std::string_view, char>, 6> kNamed = {
      {{"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}, {"nbsp", ' '}}};
  for (const auto& [known, unit] : kNamed)
    if (name == known) return text += unit, true;
  if (name.size() < 2 || name.front() != '#') return false;
  const bool hex = Lower(name[1]) == 'x';
  const std::string_view digits = name.substr(hex ? 2 : 1);
  unsigned long code = 0;
  const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), code, hex ? 16 : 10);
  if (read.ec == std::errc::invalid_argument || read.ptr != digits.data() + digits.size()) return false;
  // A number too long for any type is no character either.
  AppendCodePoint(text, read.ec == std::errc() ? code : 0);
  return true;
}

// A colour as "#rrggbb"; none for other ways of writing one.
COLORREF ColourOf(std::string_view text) {
  const std::size_t at = text.find('#');
  if (at == std::string_view::npos || text.size() < at + 7) return kNoColour;
  unsigned number = 0;
  const char* const first = text.data() + at + 1;
  const auto read = std::from_chars(first, first + 6, number, 16);
  if (read.ptr != first + 6) return kNoColour;
  return RGB(number >> 16U & 0xFFU, number >> 8U & 0xFFU, number & 0xFFU);
}

// The value of an attribute within a tag in lower case; empty: it has none.
std::string_view Attribute(std::string_view tag, std::string_view name) {
  for (std::size_t at = tag.find(name); at != std::string_view::npos; at = tag.find(name, at + 1)) {
    const bool begins = at > 0 && kBlanks.find(tag[at - 1]) != std::string_view::npos;
    std::size_t from = tag.find_first_not_of(kBlanks, at + name.size());
    if (!begins || from == std::string_view::npos || tag[from] != '=') continue;
    from = tag.find_first_not_of(kBlanks, from + 1);
    if (from == std::string_view::npos) return {};
    const char quote = tag[from];
    if (quote != '"' && quote != '\'') return tag.substr(from, tag.find_first_of(kBlanks, from) - from);
    const std::size_t end = tag.find(quote, from + 1);
    return tag.substr(from + 1, end == std::string_view::npos ? end : end - from - 1);
  }
  return {};
}

int SpanOf(std::string_view tag, std::string_view name) {
  const std::string_view text = Attribute(tag, name);
  int span = 1;
  std::from_chars(text.data(), text.data() + text.size(), span);
  // A cell that claims to be a million columns wide is a mistake, or an attack.
  return std::clamp(span, 1, kMaxHtmlColumns);
}

// A declaration of a style attribute, "background:#FF0000" and the like.
COLORREF StyleColour(std::string_view style, std::string_view name) {
  for (std::size_t at = style.find(name); at != std::string_view::npos; at = style.find(name, at + 1)) {
    const char before = at == 0 ? ';' : style[at - 1];
    if (before != ';' && before != ' ') continue;
    return ColourOf(style.substr(at, style.find(';', at) - at));
  }
  return kNoColour;
}

class HtmlReader {
 public:
  explicit HtmlReader(std::string_view html) : html_(html) {}

  TextTable Read() {
    while (at_ < html_.size() && !ended_) {
      if (html_[at_] == '<')
        ReadTag();
      else
        ReadText();
    }
    EndRow();
    for (CellExtent& extent : table_.extents) extent.rows = std::min(extent.rows, table_.Rows() - extent.row);
    std::erase_if(table_.extents, [](const CellExtent& extent) { return extent.rows < 1; });
    return std::move(table_);
  }

 private:
  void ReadTag() {
    if (html_.substr(at_, 4) == "<!--") return SkipBehind("-->");
    const std::size_t end = TagEnd();
    const std::string tag = Lowered(html_.substr(at_ + 1, end - at_ - 1));
    at_ = std::min(html_.size(), end + 1);
    const std::string name =
        tag.substr(0, tag.find_first_of(" \t\r\n\f/", tag.empty() || tag[0] != '/' ? 0 : 1));
    if (name == "style" || name == "script") return SkipBehind("</" + name);
    if (name == "table") ++depth_;
    if (name == "/table" && depth_ > 0 && --depth_ == 0) ended_ = true;
    if (depth_ == 1) TakeTag(name, tag);
    if (name == "br" || (name == "/p" && cell_open_)) cell_ += '\n';
  }

  // The end of a tag; a > within quotes is none.
  std::size_t TagEnd() const {
    char quote = 0;
    for (std::size_t at = at_ + 1; at < html_.size(); ++at) {
      const char c = html_[at];
      if (quote == 0 && c == '>') return at;
      if (quote == 0 && (c == '"' || c == '\''))
        quote = c;
      else if (c == quote)
        quote = 0;
    }
    return html_.size();
  }

  void SkipBehind(std::string_view what) {
    const std::string_view rest = html_.substr(at_);
    const auto alike = [](char a, char b) { return Lower(a) == b; };
    const auto found = std::search(rest.begin(), rest.end(), what.begin(), what.end(), alike);
    at_ += static_cast<std::size_t>(found - rest.begin());
    if (found != rest.end()) at_ += what.size();
  }

  void TakeTag(const std::string& name, std::string_view tag) {
    if (name == "tr") {
      EndRow();
      row_open_ = true;
    } else if (name == "/tr") {
      EndRow();
    } else if (name == "td" || name == "th") {
      EndCell();
      row_open_ = cell_open_ = true;
      extent_ = {};
      extent_.rows = SpanOf(tag, "rowspan");
      extent_.columns = SpanOf(tag, "colspan");
      const std::string_view style = Attribute(tag, "style");
      extent_.back = StyleColour(style, "background");
      if (extent_.back == kNoColour) extent_.back = ColourOf(Attribute(tag, "bgcolor"));
      extent_.text = StyleColour(style, "color");
    } else if (name == "/td" || name == "/th") {
      EndCell();
    } else if (name == "font" && cell_open_ && extent_.text == kNoColour) {
      extent_.text = ColourOf(Attribute(tag, "color"));
    }
  }

  void ReadText() {
    const std::size_t end = std::min(html_.size(), html_.find('<', at_));
    const std::string_view piece = html_.substr(at_, end - at_);
    at_ = end;
    if (!cell_open_) return;
    for (std::size_t at = 0; at < piece.size(); ++at) {
      if (kBlanks.find(piece[at]) != std::string_view::npos) {
        blank_waits_ = !cell_.empty() && cell_.back() != '\n';
        continue;
      }
      if (std::exchange(blank_waits_, false) && cell_.back() != '\n') cell_ += ' ';
      at += TakeUnit(piece.substr(at));
    }
  }

  // Takes a character or an entity; how many bytes it has beyond the first.
  std::size_t TakeUnit(std::string_view piece) {
    constexpr std::size_t kLongestEntity = 10;
    if (piece.front() == '&') {
      const std::size_t end = piece.substr(0, kLongestEntity).find(';');
      if (end != std::string_view::npos && AppendEntity(cell_, piece.substr(1, end - 1))) return end;
    }
    if (piece.substr(0, 2) == "\xC2\xA0") return cell_ += ' ', 1;
    cell_ += piece.front();
    return 0;
  }

  void EndCell() {
    if (!cell_open_) return;
    cell_open_ = blank_waits_ = false;
    while (!cell_.empty() && cell_.back() == '\n') cell_.pop_back();
    SkipCovered();
    const std::size_t used = RowLength();
    const bool full = IsFull();
    ended_ = ended_ || full;
    if (used < kMaxHtmlColumns && !full) {
      extent_.row = table_.Rows();
      extent_.column = static_cast<int>(used);
      extent_.columns = std::min(extent_.columns, kMaxHtmlColumns - extent_.column);
      table_.cells.emplace_back(table_.store.emplace_back(Utf8ToText(cell_)));
      for (int more = 1; more < extent_.columns; ++more) table_.cells.emplace_back();
      const bool plain = extent_.rows == 1 && extent_.columns == 1;
      if (!plain || extent_.back != kNoColour || extent_.text != kNoColour) table_.extents.push_back(extent_);
      if (extent_.rows > 1) Cover();
    }
    cell_.clear();
  }

  bool IsFull() const { return table_.cells.size() >= kMaxHtmlTable; }
  std::size_t RowLength() const {
    return table_.cells.size() - (table_.row_ends.empty() ? 0 : table_.row_ends.back());
  }

  // Rows that cells above reach into, by column.
  void Cover() {
    const auto end = static_cast<std::size_t>(extent_.column) + static_cast<std::size_t>(extent_.columns);
    if (covered_.size() < end) covered_.resize(end);
    for (auto at = static_cast<std::size_t>(extent_.column); at < end; ++at)
      covered_[at] = extent_.row + extent_.rows;
  }

  void SkipCovered() {
    while (RowLength() < covered_.size() && covered_[RowLength()] > table_.Rows() && !IsFull())
      table_.cells.emplace_back();
  }

  void EndRow() {
    EndCell();
    if (!std::exchange(row_open_, false)) return;
    SkipCovered();
    table_.EndRow();
  }

  std::string_view html_;
  std::size_t at_ = 0;
  int depth_ = 0;
  bool ended_ = false;
  bool row_open_ = false;
  bool cell_open_ = false;
  bool blank_waits_ = false;
  std::string cell_;
  CellExtent extent_;
  std::vector<int> covered_;
  TextTable table_;
};

}  // namespace

void AppendHtmlCell(std::string& html, const HtmlCell& cell) {
  html += "<td";
  if (cell.extent.columns > 1) html += " colspan=" + std::to_string(cell.extent.columns);
  if (cell.extent.rows > 1) html += " rowspan=" + std::to_string(cell.extent.rows);
  std::string style;
  if (cell.extent.back != kNoColour) style += "background:" + ColourText(cell.extent.back) + ";";
  if (cell.extent.text != kNoColour) style += "color:" + ColourText(cell.extent.text) + ";";
  if (cell.literal) style += "mso-number-format:'\\@';";
  if (!style.empty()) html += " style=\"" + style + "\"";
  // The same in words of an office.
  if (cell.literal) html += " sdnum=\"1033;0;@\"";
  if (cell.extent.back != kNoColour) html += " bgcolor=\"" + ColourText(cell.extent.back) + "\"";
  html += '>';
  AppendEscaped(html, cell.text);
  html += "</td>";
}

TextTable ReadHtmlTable(std::string_view html) {
  return HtmlReader(html).Read();
}

}  // namespace lorv
