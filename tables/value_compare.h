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

// A text that is looked for among cells: what a search for an equal text comes to, without working out an
// order. The value must live as long as this object; one that is no text counts as empty. CompareValues gives
// the same.
class SoughtText {
 public:
  SoughtText(const VARIANT& value, bool exact_case)
      : text_(value.vt == VT_BSTR ? TextOfBstr(value.bstrVal) : TextView()), exact_case_(exact_case) {}

  bool Is(const VARIANT& cell) const {
    if (cell.vt != VT_BSTR) return false;
    const TextView text = TextOfBstr(cell.bstrVal);
    return text.size() == text_.size() && IsSame(text);
  }

 private:
  bool IsSame(TextView text) const;

  TextView text_;
  bool exact_case_;
};

}  // namespace lorv
