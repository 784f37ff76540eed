#include "tools/lorv/formula/caret_text.h"

#include <algorithm>
#include <vector>

#include "framework/text/utf8.h"
#include "tools/lorv/screen/display_width.h"

// Shows where in a formula something is wrong: the formula, and a mark below. Columns of the terminal are
// counted and not characters, as formulas are half Chinese; a long one is cut to what stands around the mark.

namespace lorv::tool {
namespace {

constexpr int kIndent = 4;
constexpr int kGapText = 3;  // "..."
// On a terminal that is narrower still lines break, which is better than to show nothing.
constexpr int kNarrowest = 20;

// A character of the formula as it is shown.
struct Shown {
  std::string text;
  int columns;
  int unit;  // of the formula, where it begins
};

std::vector<Shown> Characters(const CString& formula) {
  std::vector<Shown> shown;
  // The unit behind the last one is the zero at the end, so the look ahead stays inside.
  for (int unit = 0; unit < formula.GetLength();) {
    const auto lead = static_cast<unsigned>(formula[unit]);
    const auto next = static_cast<unsigned>(formula[unit + 1]);
    const bool pair = lead >= 0xD800 && lead < 0xDC00 && next >= 0xDC00 && next < 0xE000;
    const std::string text = Printable(formula.Mid(unit, pair ? 2 : 1).ToUtf8());
    shown.push_back({text, DisplayWidth(text), unit});
    unit += pair ? 2 : 1;
  }
  return shown;
}

// The characters [first, last) that fit around the marked one.
struct Window {
  std::size_t first;
  std::size_t last;
};

Window Around(const std::vector<Shown>& shown, std::size_t mark, int columns) {
  Window window{std::min(mark, shown.size()), std::min(mark + 1, shown.size())};
  int used = window.first < window.last ? shown[window.first].columns : 0;
  // To the left first, then to the right, one character each in turn.
  for (bool grown = true; grown;) {
    grown = false;
    if (window.first > 0 && used + shown[window.first - 1].columns <= columns) {
      used += shown[--window.first].columns;
      grown = true;
    }
    if (window.last < shown.size() && used + shown[window.last].columns <= columns) {
      used += shown[window.last++].columns;
      grown = true;
    }
  }
  return window;
}

}  // namespace

std::string CaretText(const CString& formula, int position, int length, int columns) {
  // A fault of no length still marks its place.
  const std::vector<Shown> shown = Characters(formula);
  const int end = position + std::max(1, length);
  std::size_t mark = 0;
  // A mark in the middle of a character of two units is one below all of it.
  while (mark < shown.size() &&
         (mark + 1 < shown.size() ? shown[mark + 1].unit : formula.GetLength()) <= position)
    ++mark;
  int whole = 0;
  for (const Shown& character : shown) whole += character.columns;
  const int room = std::max(kNarrowest, columns - kIndent - 1);
  Window window{0, shown.size()};
  if (whole > room) window = Around(shown, mark, room - 2 * kGapText);

  std::string line(kIndent, ' '), below(kIndent, ' '), marks;
  if (window.first > 0) {
    line += "...";
    below += "   ";
  }
  for (std::size_t i = window.first; i < window.last; ++i) {
    line += shown[i].text;
    const auto width = static_cast<std::size_t>(shown[i].columns);
    if (i < mark) below.append(width, ' ');
    // A character without width gets a mark, too: it may be the very thing that is wrong.
    if (i >= mark && shown[i].unit < end) marks.append(std::max<std::size_t>(width, 1), '^');
  }
  if (window.last < shown.size()) line += "...";
  return line + "\n" + below + (marks.empty() ? "^" : marks) + "\n";
}

}  // namespace lorv::tool
