#pragma once

#include "platform/qt/controls/qt_control.h"
#include "platform/qt/controls/qt_edit_pane.h"

namespace lorv {

// An edit, of one line or of several. Each change tells EN_UPDATE, then EN_CHANGE; a text set by program too,
// but not in an edit of several lines. Several lines wrap at the width unless ES_AUTOHSCROLL is set.
class QtEdit : public QtControl {
 public:
  QtEdit(QtDesk& desk, HWND handle, const WindowRequest& request, QWidget* around);
  LRESULT Default(UINT message, WPARAM w, LPARAM l) override;
  CString Text() const override;

 protected:
  void StyleChanged(DWORD before) override;

 private:
  class Quiet;
  bool Lines() const { return (Look() & ES_MULTILINE) != 0; }
  bool ReadOnly() const { return (Look() & ES_READONLY) != 0; }
  LRESULT SelectionMessage(UINT message, WPARAM w, LPARAM l);
  LRESULT LineMessage(UINT message, WPARAM w, LPARAM l);
  LRESULT PointMessage(UINT message, WPARAM w, LPARAM l);
  LRESULT StateMessage(UINT message, WPARAM w, LPARAM l);
  LRESULT ClipboardMessage(UINT message);
  LRESULT SetWhole(LPCTSTR text);
  LRESULT GetSelection(WPARAM w, LPARAM l) const;
  LRESULT CopyLine(int line, LPTSTR target) const;
  LRESULT Code() const;
  LRESULT Key(int key);
  LRESULT Character(TCHAR unit);
  LRESULT Mouse(UINT message, LPARAM l);
  bool ToCombo(int key);
  void Select(int start, int end);
  void MoveCaret(int to, bool extend);
  int LineOf(int position) const;
  int LineStart(int line) const;
  int LineLength(int line) const;
  void Erase(EditPane::Step step);
  void Write(const CString& text);
  void Put(const CString& text);
  void TellChange();

  std::unique_ptr<EditPane> pane_;
  int limit_ = 30000;
  int anchor_ = 0;  // where a selection by mouse began
  int quiet_ = 0;
  bool modified_ = false;
  bool can_undo_ = false;
};

}  // namespace lorv
