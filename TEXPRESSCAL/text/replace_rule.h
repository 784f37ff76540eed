#pragma once

#include "TEXPRESSCAL/text/text_edit.h"
#include "TEXPRESSCAL/text/unit_search.h"

// The plain replacement under ReplaceStr and the rewriting of operators, for every kind of text
// (text_edit.h).
namespace lorv {

// A text is searched and replaced this often at most by one call; what remains stays as it is.
constexpr int kMaxReplacements = 100;

// A replacement that would do nothing, or change the letter case alone, is never made.
inline bool IsChange(TextView old, TextView fresh) {
  return old.size() != fresh.size() || CompareWithoutCase(old, fresh) != 0;
}

// Plain replacement from `from` on, letter case counting. What is put in is not searched again. The count of
// replacements: 0 when either text is empty or both differ in letter case only.
template <class Edit>
int ReplaceFrom(Edit& edit, std::size_t from, TextView old, TextView fresh, bool all) {
  if (old.empty() || fresh.empty() || !IsChange(old, fresh)) return 0;
  int count = 0;
  while (count < kMaxReplacements) {
    const std::size_t hit = FindText(edit.Text(), edit.Length(), from, old);
    if (hit == TextView::npos) break;
    edit.Splice(hit, old.size(), fresh);
    from = hit + fresh.size();
    ++count;
    if (!all) break;
  }
  return count;
}

}  // namespace lorv
