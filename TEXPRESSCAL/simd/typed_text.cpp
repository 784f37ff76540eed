#include "TEXPRESSCAL/simd/typed_text.h"

#include <algorithm>

// Whether the same formula is set again, many units at a step. The comparison may read behind the end of the
// caller's text as far as its page goes, never beyond: what is not the caller's text cannot make two texts
// equal, since the terminator is compared with them.

namespace lorv {
namespace {

// The units are read by no call: the sanitizers would watch what is called.
using Word [[gnu::may_alias, gnu::aligned(1)]] = std::uint64_t;
constexpr std::size_t kWordUnits = sizeof(Word) / sizeof(TCHAR);

}  // namespace

// Room to the end of the last step, so that the comparison needs no rest loop.
void TypedText::Remember(TextView text) {
  const BlockLoops* loops = nullptr;
  UsableBlockLoops(&loops, 1);
  is_typed_ = loops->is_typed;
  length_ = text.size();
  last_step_ = length_ / kTypedStep * kTypedStep;
  units_.assign(last_step_ + kTypedStep, 0);
  std::copy(text.begin(), text.end(), units_.begin());
  const std::size_t bytes = units_.size() * sizeof(TCHAR);
  reach_ = length_ == 0 || bytes > kPage ? 0 : kPage - bytes + 1;
  for (std::size_t i = 0; i < kTypedStep; ++i)
    counts_[i] = last_step_ + i <= length_ ? static_cast<TCHAR>(0xFFFF) : TCHAR{0};
}

// The terminator is among the units, so a shorter text differs before its end is passed. A word may reach
// behind that end as long as it does not leave the page, which is readable as a whole.
__attribute__((no_sanitize("address", "thread"))) bool TypedText::IsAcrossPages(LPCTSTR text) const {
  if (length_ == 0) return false;
  const TCHAR* const known = units_.data();
  for (std::size_t at = 0; at <= length_;) {
    const std::size_t in_page = reinterpret_cast<std::uintptr_t>(text + at) % kPage;
    if (at + kWordUnits <= length_ + 1 && in_page <= kPage - sizeof(Word)) {
      if (*reinterpret_cast<const Word*>(text + at) != *reinterpret_cast<const Word*>(known + at))
        return false;
      at += kWordUnits;
    } else {
      if (text[at] != known[at]) return false;
      ++at;
    }
  }
  return true;
}

}  // namespace lorv
