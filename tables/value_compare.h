#pragma once

#include "framework/values/variant_text.h"

namespace lorv {

// The text of a cell, without taking memory for the kinds that tables are full of. Valid as long as the value
// and this object.
class CellText {
 public:
  explicit CellText(const VARIANT& value);
  CellText(const CellText&) = delete;
  CellText& operator=(const CellText&) = delete;

  TextView View() const { return view_; }

 private:
  void PutNarrow(const char* first, const char* last);

  TCHAR units_[32];
  CString kept_;
  TextView view_;
};

// Compares a search value with a cell, as texts: the value stands on the left.
//
// Comparisons: 1 equal, 2 greater, 3 greater or equal, 4 less, 5 less or equal, 6 different; no other is ever
//   true, and none is between different tags. Without `exact_case` the letters a to z count as A to Z, so "_"
//   sorts behind the letters.
// A value or cell without a text raises `_com_error`.
bool CompareValues(long comparison, bool exact_case, const VARIANT& value, const VARIANT& cell);

}  // namespace lorv
