#pragma once

#include <memory>

#include "framework/text/cstring.h"
#include "grid/find/text_pattern.h"

namespace lorv {

// Whether texts hold a text, and what they are with another one in its place.
//
// Letter case folds for ASCII letters only. Occurrences do not overlap: they are taken from the left, each
// behind the one before. An empty text is found nowhere.
// One object serves any number of texts; any thread.
//
//   TextMatcher(_T("c3"), false, false).Replaced(_T("C30c3"), _T("C4"), n)  gives "C40C4", n 2
class COMM_LORV_API TextMatcher {
 public:
  TextMatcher(const CString& wanted, bool match_case, bool whole);
  // What is wanted is a regular expression, and a replacement names its groups (text_pattern.h). One that
  // cannot be read is found nowhere. What fits without a character is found, and put in front of the next.
  static TextMatcher ForPattern(const CString& pattern, bool match_case, bool whole);

  bool Matches(TextView text) const;
  // `count` is set to how many there were.
  CString Replaced(TextView text, const CString& by, int& count) const;

 private:
  TCHAR Folded(TCHAR c) const {
    return match_case_ || c < _T('A') || c > _T('Z') ? c : static_cast<TCHAR>(c | 0x20);
  }
  bool StandsAt(TextView text, std::size_t place) const;
  std::size_t Next(TextView text, std::size_t from) const;
  CString ReplacedByPattern(TextView text, const CString& by, int& count) const;

  CString wanted_;
  bool match_case_;
  bool whole_;
  std::shared_ptr<const TextPattern> pattern_;  // null: the text stands for itself
};

}  // namespace lorv
