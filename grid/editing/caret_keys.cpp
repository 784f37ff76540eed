#include "grid/editing/caret_keys.h"

#include "grid/editing/key_translation.h"

// Which of the keys that move a caret belong to an open editor, and which leave the cell. One rule without a
// window, as editors of three kinds ask it.

namespace lorv {

CaretStep CaretStepFor(unsigned key, bool shift, int start, int end, int length) {
  if (shift) return {CaretStep::kEditor, 0};
  const bool back = key == kKeyHome || key == kKeyLeft;
  const bool ahead = key == kKeyEnd || key == kKeyRight;
  if (!back && !ahead) return {CaretStep::kOther, 0};
  if (start != end) return {CaretStep::kCollapse, back ? start : end};
  const bool stays = back ? start >= 1 : end < length - 1;
  return {stays ? CaretStep::kEditor : CaretStep::kOther, 0};
}

}  // namespace lorv
