#pragma once

#include <vector>

#include "framework/text/cstring.h"
#include "platform/models/controls/edit_lines.h"

namespace lorv {

// The text of an edit with its selection: what editing does to it, without a window.
//
// Units: positions count 16-bit units; a line end is CR LF and is passed as one by the caret.
// A caret key without Shift at a selection puts the caret to its near end.
class HeadlessEditText {
 public:
  explicit HeadlessEditText(bool lines) : lines_(lines) {}

  CString text;
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
  bool Undo();  // back and forth over the last change

  // From anywhere: positions outside the text count as its ends.
  int StepBack(int from) const;
  int StepOn(int from) const;
  int WordBack(int from) const;
  int WordOn(int from) const;

  // Lines as they are shown, the breaks of the width included; the first one starts at 0.
  std::vector<int> LineStarts() const;
  EditLines Lines() const { return {text, LineStarts()}; }
  // The position as far into another line as this one is into its own, or at that line's end; the same
  // position where there is no such line.
  int Above(int position, int lines) const;

 private:
  int Clamped(int position) const;
  int WidthOf(int start, int end) const;  // pixels
  void WrapFrom(int start, int end, std::vector<int>& starts) const;

  bool lines_;
  int anchor_ = 0;
  int caret_ = 0;
  bool can_undo_ = false;
  CString before_;
  int before_caret_ = 0;
};

}  // namespace lorv
