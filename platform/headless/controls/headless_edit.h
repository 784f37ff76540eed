#pragma once

#include "platform/headless/controls/headless_edit_text.h"
#include "platform/headless/window/headless_window.h"

namespace lorv {

// An edit, of one line or of several. Each change tells EN_UPDATE, then EN_CHANGE; a text set by program too,
// but not in an edit of several lines. Several lines wrap at the width unless ES_AUTOHSCROLL is set.
class HeadlessEdit : public HeadlessWindow {
 public:
  HeadlessEdit(HeadlessDesktop& desktop, HWND handle, const WindowRequest& request);
  LRESULT Default(UINT message, WPARAM w, LPARAM l) override;
  CString Text() const override { return text_.text; }

 protected:
  void PaintSelf(Canvas& canvas) override;

 private:
  bool Lines() const { return (Style() & ES_MULTILINE) != 0; }
  bool ReadOnly() const { return (Style() & ES_READONLY) != 0; }
  LRESULT SelectionMessage(UINT message, WPARAM w, LPARAM l);
  LRESULT LineMessage(UINT message, WPARAM w, LPARAM l);
  LRESULT StateMessage(UINT message, WPARAM w, LPARAM l);
  LRESULT ClipboardMessage(UINT message);
  LRESULT SetWhole(LPCTSTR text);
  LRESULT GetSelection(WPARAM w, LPARAM l) const;
  LRESULT CopyLine(int line, LPTSTR target) const;
  LRESULT Code() const;
  LRESULT Key(int key);
  LRESULT Character(TCHAR unit);
  LRESULT Mouse(UINT message, LPARAM l);
  int KeyTarget(int key, bool control) const;
  int PositionAt(CPoint point) const;
  CPoint PlaceOf(int position) const;
  void Erase(int to);
  void Write(const CString& text);
  void TellChange();
  void ShowCaret();

  HeadlessEditText text_;
  int first_line_ = 0;
};

}  // namespace lorv
