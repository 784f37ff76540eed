#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "TEXPRESSCAL/simd/block_work.h"
#include "framework/text/text_compare.h"

namespace lorv {

// A text that was typed, kept to see whether the same one comes again: that is asked at every formula, so it
// is answered many units at a step.
class TypedText {
 public:
  void Remember(TextView text);
  void Forget() { length_ = reach_ = 0; }

  // Whether the terminated `text` is the one remembered; the empty text never is. No unit behind the
  // terminator counts, nor is any read that the processor could refuse.
  bool Is(LPCTSTR text) const {
    if (text == nullptr) return false;
    if (reinterpret_cast<std::uintptr_t>(text) % kPage >= reach_) return IsAcrossPages(text);
    return is_typed_(text, units_.data(), last_step_, counts_.data());
  }

 private:
  static constexpr std::size_t kPage = 4096;

  bool IsAcrossPages(LPCTSTR text) const;

  bool (*is_typed_)(LPCTSTR text, const TCHAR* known, std::size_t last_step, const TCHAR* counts) = nullptr;
  std::vector<TCHAR> units_;  // the text, its terminator, and zeros up to a whole step
  std::size_t last_step_ = 0;
  std::size_t length_ = 0;
  // A text that begins before this place in a page of memory does not leave the page; 0 if there is no such
  // place.
  std::size_t reach_ = 0;
  std::array<TCHAR, kTypedStep> counts_{};  // all bits of the units that count in the last step
};

}  // namespace lorv
