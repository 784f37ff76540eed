#pragma once

#include <vector>

#include "framework/drawing/geometry.h"
#include "framework/text/cstring.h"

namespace lorv {

// What the behaviour of an edit asks of whatever holds its text and shows it: the text, the selection, the
// lines as they are shown.
//
// Units: positions count 16-bit units, a line end being the two of CR LF; points are pixels of the client
// area.
class EditPane {
 public:
  enum class Step : int {
    Back,
    On,
    WordBack,
    WordOn,
    Up,
    Down,
    LineStart,
    LineEnd,
    Start,
    End,
    PageUp,
    PageDown
  };

  EditPane() = default;
  EditPane(const EditPane&) = delete;
  EditPane& operator=(const EditPane&) = delete;
  virtual ~EditPane() = default;

  virtual CString Text() const = 0;
  virtual void Set(const CString& text) = 0;      // forgets what could be undone
  virtual void Replace(const CString& text) = 0;  // the selection
  virtual bool Undo() = 0;                        // back, and the next time on again

  virtual int Start() const = 0;
  virtual int End() const = 0;
  virtual int Caret() const = 0;
  virtual void Select(int start, int end) = 0;  // the caret comes to `end`
  virtual void Move(Step step, bool extend) = 0;

  // Lines as they are shown, the breaks of the width included; the first one starts at 0.
  virtual std::vector<int> LineStarts() const = 0;
  virtual int FirstLine() const = 0;
  virtual void Scroll(int lines) = 0;
  virtual void ShowCaret() = 0;
  virtual CPoint PlaceOf(int position) const = 0;
  virtual int PositionAt(CPoint at) const = 0;
  virtual void ShowMenu(CPoint /*screen*/) {}  // the edit's own popup menu, where the system has one
};

}  // namespace lorv
