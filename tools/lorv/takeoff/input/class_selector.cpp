#include "tools/lorv/takeoff/input/class_selector.h"

#include "tools/lorv/screen/display_width.h"
#include "tools/lorv/text/folded_text.h"

// Matches class names of models against the patterns of a rule. It is used once a class and rule, not for
// every component; what counts is that a pattern typed with many stars over a long name stays harmless.

namespace lorv::tool {
namespace {

// Greedy matching that remembers the last "*": linear for ordinary patterns, never worse than the
// product of both lengths.
bool Matches(std::string_view pattern, std::string_view name) {
  std::string_view star_pattern, star_name;
  bool star = false;
  while (!name.empty()) {
    if (!pattern.empty() && pattern[0] == '*') {
      pattern.remove_prefix(1);
      star = true;
      star_pattern = pattern;
      star_name = name;
      continue;
    }
    // Characters and not bytes: "?" stands for one character of any language.
    std::string_view rest_pattern = pattern, rest_name = name;
    const char32_t wanted = pattern.empty() ? 0 : TakeCharacter(rest_pattern);
    const bool fits = !pattern.empty() && (TakeCharacter(rest_name) == wanted || wanted == '?');
    if (!fits && !star) return false;
    if (!fits) {
      // The last star takes one character more; those before it need no second try, as what follows them has
      // fitted.
      TakeCharacter(star_name);
      rest_pattern = star_pattern;
      rest_name = star_name;
    }
    pattern = rest_pattern;
    name = rest_name;
  }
  // Stars alone may stand for nothing.
  return pattern.find_first_not_of('*') == std::string_view::npos;
}

// Cuts the next piece off a list. All three separators are on the keyboards of those who write rules.
std::string_view NextPiece(std::string_view& list) {
  std::size_t end = list.size(), width = 0;
  for (const std::string_view separator : {";", "；", "、"}) {
    const std::size_t at = list.find(separator);
    if (at < end) {
      end = at;
      width = separator.size();
    }
  }
  const std::string_view piece = list.substr(0, end);
  list.remove_prefix(end + width);
  return piece;
}

}  // namespace

ClassSelector::ClassSelector(std::string_view list) {
  while (!list.empty()) {
    std::string text = Folded(NextPiece(list));
    const bool out = !text.empty() && text[0] == '!';
    // Blanks behind the sign are no part of the pattern.
    if (out) text = Folded(std::string_view(text).substr(1));
    if (text.empty()) continue;
    // To take out of nothing would leave the rule without any class.
    if (out && patterns_.empty()) patterns_.push_back({"*", false});
    patterns_.push_back({std::move(text), out});
  }
}

bool ClassSelector::Fits(std::string_view name) const {
  const std::string folded = Folded(name);
  for (auto pattern = patterns_.rbegin(); pattern != patterns_.rend(); ++pattern) {
    if (Matches(pattern->text, folded)) return !pattern->out;
  }
  return false;
}

}  // namespace lorv::tool
