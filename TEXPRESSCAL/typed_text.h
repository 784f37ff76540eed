#pragma once

#include <cstddef>
#include <vector>

#include "framework/text_compare.h"

namespace lorv {

// A text that was typed, kept to see whether the same one comes again: that is asked at every formula, so it
// is answered eight units at a step.
class TypedText {
 public:
  void Remember(TextView text);
  void Forget() { length_ = 0; }

  // Whether the terminated `text` is the one remembered; the empty text never is. No unit behind the
  // terminator counts, nor is any read that the processor could refuse.
  bool Is(LPCTSTR text) const {
    return length_ != 0 && text != nullptr && text[0] == units_[0] && IsWhole(text);
  }

 private:
  bool IsWhole(LPCTSTR text) const;

  std::vector<TCHAR> units_;  // the text, its terminator, and zeros up to a whole step
  std::size_t length_ = 0;
};

}  // namespace lorv
