#pragma once

#include "framework/native/export.h"

namespace lorv {

// What a caret key does in the editor of a cell.
struct CaretStep {
  enum Kind {
    kEditor,    // the editor's own affair
    kCollapse,  // the selection collapses to `position` and the key is used up
    kOther      // not settled here: the key may leave the cell
  };
  Kind kind = kOther;
  int position = 0;

  friend bool operator==(const CaretStep&, const CaretStep&) = default;
};

// A caret stays inside the text until it reaches its edge, and a selection collapses before anything moves.
// Home and Left leave from position 0 only; End and Right from the last character but one on: a caret that
// stands just before the last character counts as being at the end. With Shift held every key is the
// editor's.
//
// Units: positions and the length count 16-bit units; `start` is not behind `end`.
// Pure; any thread.
//
//   CaretStepFor(kKeyRight, false, 1, 1, 3)  is kEditor,  CaretStepFor(kKeyRight, false, 2, 2, 3)  is kOther
COMM_LORV_API CaretStep CaretStepFor(unsigned key, bool shift, int start, int end, int length);

}  // namespace lorv
