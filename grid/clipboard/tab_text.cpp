#include "grid/clipboard/tab_text.h"

#include <algorithm>

// The tab text of spreadsheets. Reading goes over the text once: a scan for a closing quote stops at the
// first quote that can close nothing, and no two scans pass over the same stretch.

namespace lorv {
namespace {

constexpr TCHAR kTab = '\t';
constexpr TCHAR kQuote = '"';

bool EndsCell(TextView text, std::size_t at) {
  return at >= text.size() || text[at] == kTab || text[at] == '\r' || text[at] == '\n';
}

class TabReader {
 public:
  explicit TabReader(TextView text) : text_(text) {}

  TextTable Read() {
    while (at_ < text_.size()) ReadRow();
    return std::move(table_);
  }

 private:
  void ReadRow() {
    ReadCell();
    while (at_ < text_.size() && text_[at_] == kTab) {
      ++at_;
      ReadCell();
    }
    if (at_ < text_.size() && text_[at_] == '\r') ++at_;
    // CR LF is one line end; LF alone is another.
    if (at_ < text_.size() && text_[at_] == '\n') ++at_;
    table_.EndRow();
  }

  void ReadCell() {
    if (at_ < text_.size() && text_[at_] == kQuote && ReadQuoted()) return;
    const std::size_t first = at_;
    while (!EndsCell(text_, at_)) ++at_;
    table_.cells.push_back(text_.substr(first, at_ - first));
  }

  bool ReadQuoted() {
    std::size_t quotes = 0;
    std::size_t at = at_ + 1;
    for (;;) {
      at = text_.find(kQuote, at);
      if (at == TextView::npos) return false;
      if (EndsCell(text_, at + 1)) break;
      // A quote in the middle of an unquoted text, as in 5" pipe: it is taken as it stands.
      if (text_[at + 1] != kQuote) return false;
      ++quotes;
      at += 2;
    }
    const TextView inside = text_.substr(at_ + 1, at - at_ - 1);
    at_ = at + 1;
    table_.cells.push_back(quotes == 0 ? inside : WithSingleQuotes(inside));
    return true;
  }

  TextView WithSingleQuotes(TextView inside) {
    std::basic_string<TCHAR>& kept = table_.store.emplace_back();
    kept.reserve(inside.size());
    for (std::size_t at = 0; at < inside.size(); at += inside[at] == kQuote ? std::size_t{2} : std::size_t{1})
      kept += inside[at];
    return kept;
  }

  TextView text_;
  std::size_t at_ = 0;
  TextTable table_;
};

}  // namespace

TextTable ReadTabText(TextView text) {
  return TabReader(text).Read();
}

void AppendTabCell(std::basic_string<TCHAR>& text, TextView cell) {
  const auto breaks = [](TCHAR unit) { return unit == kTab || unit == '\r' || unit == '\n'; };
  const bool quoted =
      !cell.empty() && (cell.front() == kQuote || std::any_of(cell.begin(), cell.end(), breaks));
  if (!quoted) {
    text += cell;
    return;
  }
  text += kQuote;
  for (std::size_t at = 0; at < cell.size(); ++at) {
    const bool of_pair = cell[at] == '\r' && at + 1 < cell.size() && cell[at + 1] == '\n';
    // Within a cell spreadsheets write line feeds alone; a whole pair would end the row for some.
    if (of_pair) continue;
    if (cell[at] == kQuote) text += kQuote;
    text += cell[at];
  }
  text += kQuote;
}

}  // namespace lorv
