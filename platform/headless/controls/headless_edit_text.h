#pragma once

#include <vector>

#include "framework/text/cstring.h"

namespace lorv {

// The text of an edit with its selection: what editing does to it, without a window.
//
// Units: positions count 16-bit units; a line end is CR LF and is passed as one by the caret.
// A caret key without Shift at a selection puts the caret to its near end.
class HeadlessEditText {
 public:
  explicit HeadlessEditText(bool lines) : lines_(lines) {}

  CString text;
  int limit = 30000;  // of typing and pasting
  bool modified = false;
  int wrap_width = 0;  // pixels; 0 does not wrap

  int Start() const { return anchor_ < caret_ ? anchor_ : caret_; }
  int End() const { return anchor_ < caret_ ? caret_ : anchor_; }
  int Caret() const { return caret_; }
  // As EM_SETSEL: (0, -1) all, (-1, any) none; the caret comes to the end.
  void Select(int start, int end);
  // Into the text, and before a pair of units of which `to` is the middle.
  void MoveCaret(int to, bool extend);

  void Set(const CString& fresh);
  // Puts a text in the place of the selection, whatever the limit.
  void Replace(const CString& fresh);
  // The same as far as the limit allows, pairs of units whole; false if something was left out.
  bool Insert(const CString& fresh);
  bool Undo();  // back and forth over the last change
  bool CanUndo() const { return can_undo_; }
  void ForgetUndo() { can_undo_ = false; }

  // From anywhere: positions outside the text count as its ends.
  int StepBack(int from) const;
  int StepOn(int from) const;
  int WordBack(int from) const;
  int WordOn(int from) const;

  // Lines as they are shown, the breaks of the width included; the first one starts at 0.
  std::vector<int> LineStarts() const;
  int LineOf(int position) const;  // -1 before the text, the last line behind it
  int LineLength(int line) const;  // without its line end; 0 of a line that is not
  CString LineText(int line) const { return text.Mid(LineStart(line), LineLength(line)); }
  int LineStart(int line) const;  // -1 of a line that is not
  // The position as far into another line as this one is into its own, or at that line's end; the same
  // position where there is no such line.
  int Above(int position, int lines) const;

 private:
  int Clamped(int position) const;
  int WidthOf(int start, int end) const;  // pixels
  bool EndsLine(int position) const;      // whether a line end stands before it
  void WrapFrom(int start, int end, std::vector<int>& starts) const;

  bool lines_;
  int anchor_ = 0;
  int caret_ = 0;
  bool can_undo_ = false;
  CString before_;
  int before_caret_ = 0;
};

}  // namespace lorv
