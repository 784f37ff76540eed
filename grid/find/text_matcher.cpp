#include "grid/find/text_matcher.h"

// A plain search: texts of cells are short, and the first unit settles nearly every place.

namespace lorv {

namespace {

constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);

}  // namespace

TextMatcher::TextMatcher(const CString& wanted, bool match_case, bool whole)
    : wanted_(wanted), match_case_(match_case), whole_(whole) {
  for (int i = 0; i < wanted_.GetLength(); ++i) wanted_.SetAt(i, Folded(wanted_[i]));
}

bool TextMatcher::StandsAt(TextView text, std::size_t place) const {
  const TextView wanted = wanted_.View();
  for (std::size_t i = 0; i < wanted.size(); ++i)
    if (Folded(text[place + i]) != wanted[i]) return false;
  return true;
}

std::size_t TextMatcher::Next(TextView text, std::size_t from) const {
  const std::size_t length = wanted_.View().size();
  if (length == 0 || (whole_ && text.size() != length)) return kNowhere;
  for (std::size_t place = from; place + length <= text.size(); ++place)
    if (StandsAt(text, place)) return place;
  return kNowhere;
}

bool TextMatcher::Matches(TextView text) const {
  return Next(text, 0) != kNowhere;
}

CString TextMatcher::Replaced(TextView text, const CString& by, int& count) const {
  count = 0;
  CString replaced;
  std::size_t from = 0;
  for (std::size_t at = Next(text, 0); at != kNowhere; at = Next(text, from)) {
    replaced += CString(text.substr(from, at - from)) + by;
    // Behind what was replaced, so that a replacement that holds the text again ends.
    from = at + wanted_.View().size();
    ++count;
  }
  return replaced + CString(text.substr(from));
}

}  // namespace lorv
