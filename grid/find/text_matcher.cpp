#include "grid/find/text_matcher.h"

#include "grid/find/pattern_program.h"

// A plain search: texts of cells are short, and the first unit settles nearly every place.

namespace lorv {

namespace {

constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);

}  // namespace

TextMatcher::TextMatcher(const CString& wanted, bool match_case, bool whole)
    : wanted_(wanted), match_case_(match_case), whole_(whole) {
  for (int i = 0; i < wanted_.GetLength(); ++i) wanted_.SetAt(i, Folded(wanted_[i]));
}

TextMatcher TextMatcher::ForPattern(const CString& pattern, bool match_case, bool whole) {
  TextMatcher matcher(CString(), match_case, whole);
  // Nothing is looked for, as with a text.
  if (pattern.IsEmpty()) return matcher;
  auto made = std::make_shared<const TextPattern>(pattern.View(), match_case);
  // By itself first: what brackets around it would make of a bad one is another pattern.
  if (whole && made->IsValid())
    made = std::make_shared<const TextPattern>((_T("^(?:") + pattern + _T(")$")).View(), match_case);
  matcher.pattern_ = std::move(made);
  return matcher;
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
  TextPattern::Places places;
  if (pattern_ != nullptr) return pattern_->Find(text, 0, places);
  return Next(text, 0) != kNowhere;
}

CString TextMatcher::Replaced(TextView text, const CString& by, int& count) const {
  if (pattern_ != nullptr) return ReplacedByPattern(text, by, count);
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

CString TextMatcher::ReplacedByPattern(TextView text, const CString& by, int& count) const {
  count = 0;
  CString replaced;
  std::size_t kept = 0;  // up to where the text has been taken over
  std::size_t from = 0;
  TextPattern::Places places;
  while (from <= text.size() && pattern_->Find(text, from, places)) {
    const auto first = static_cast<std::size_t>(places[0].from);
    const auto end = static_cast<std::size_t>(places[0].to);
    replaced += CString(text.substr(kept, first - kept)) + TextPattern::Replacement(text, places, by);
    kept = end;
    // Behind a place without a character the search goes on a character further.
    from = end > first ? end : end + (end < text.size() ? CodeOf(text, end).units : 1);
    ++count;
  }
  return replaced + CString(text.substr(kept));
}

}  // namespace lorv
