#include <QWidget>
#include <algorithm>

#include "platform/models/message_values.h"
#include "platform/qt/controls/qt_combo.h"
#include "platform/qt/controls/qt_edit.h"
#include "platform/qt/desktop/qt_desk.h"
#include "platform/qt/desktop/qt_text.h"

// Keys, characters and the mouse in an edit.

namespace lorv {
namespace {

using Step = EditPane::Step;

constexpr TCHAR kControlA = 1;
constexpr TCHAR kControlC = 3;
constexpr TCHAR kControlV = 22;
constexpr TCHAR kControlX = 24;
constexpr TCHAR kControlZ = 26;

Step StepOf(int key, bool control) {
  switch (key) {
    case VK_LEFT:
      return control ? Step::WordBack : Step::Back;
    case VK_RIGHT:
      return control ? Step::WordOn : Step::On;
    case VK_UP:
      return Step::Up;
    case VK_DOWN:
      return Step::Down;
    case VK_HOME:
      return control ? Step::Start : Step::LineStart;
    case VK_PRIOR:
      return Step::PageUp;
    case VK_NEXT:
      return Step::PageDown;
    default:
      return control ? Step::End : Step::LineEnd;
  }
}

bool GoesToList(int key, bool dropped) {
  if (key == VK_RETURN || key == VK_ESCAPE) return dropped;
  return key == VK_UP || key == VK_DOWN || key == VK_F4;
}

}  // namespace

// Keys that choose in the list of the drop-down list around this edit.
bool QtEdit::ToCombo(int key) {
  const auto combo = std::dynamic_pointer_cast<QtCombo>(Home().At(Parent()));
  if (combo == nullptr || !GoesToList(key, combo->Dropped())) return false;
  combo->Default(WM_KEYDOWN, static_cast<WPARAM>(key), 1);
  return true;
}

LRESULT QtEdit::Key(int key) {
  if (ToCombo(key)) return 0;
  const bool shift = Home().KeyState(VK_SHIFT) != 0;
  const bool control = Home().KeyState(VK_CONTROL) != 0;
  if (key == VK_DELETE) {
    Erase(Step::On);
    return 0;
  }
  if (key < VK_PRIOR || key > VK_DOWN) return 0;
  // Without Shift a caret key at a selection puts the caret to its near end.
  const bool collapses = !shift && !control && pane_->Start() != pane_->End();
  if (collapses && (key == VK_LEFT || key == VK_RIGHT)) {
    const int to = key == VK_LEFT ? pane_->Start() : pane_->End();
    pane_->Select(to, to);
  } else {
    pane_->Move(StepOf(key, control), shift);
  }
  pane_->ShowCaret();
  return 0;
}

// Takes the selection away, or what lies between the caret and the step.
void QtEdit::Erase(Step step) {
  if (ReadOnly()) return;
  if (pane_->Start() == pane_->End()) pane_->Move(step, true);
  if (pane_->Start() == pane_->End()) return;
  Put(CString());
  TellChange();
}

LRESULT QtEdit::Character(TCHAR unit) {
  switch (unit) {
    case kControlA:
      Select(0, -1);
      return 0;
    case kControlC:
      return ClipboardMessage(WM_COPY);
    case kControlV:
      return ClipboardMessage(WM_PASTE);
    case kControlX:
      return ClipboardMessage(WM_CUT);
    case kControlZ:
      return ClipboardMessage(WM_UNDO);
    case _T('\b'):
      Erase(Step::Back);
      return 0;
    case _T('\r'):
      if (Lines()) Write(_T("\r\n"));
      return 0;
    case _T('\t'):
      if (Lines()) Write(_T("\t"));
      return 0;
    default:
      if (unit < _T(' ')) return 0;
      if ((Look() & ES_NUMBER) != 0 && (unit < _T('0') || unit > _T('9'))) return 0;
      Write(CString(unit));
      return 0;
  }
}

LRESULT QtEdit::Mouse(UINT message, LPARAM l) {
  const bool captured = Home().Capture() == Handle();
  if (message == WM_LBUTTONUP) {
    if (captured) Home().SetCapture(nullptr);
    return 0;
  }
  if (message == WM_MOUSEMOVE) {
    if (captured) MoveCaret(pane_->PositionAt(PointOf(l)), true);
    return 0;
  }
  Focus();
  if (!Exists()) return 0;
  const int at = pane_->PositionAt(PointOf(l));
  if (message == WM_LBUTTONDBLCLK) {
    pane_->Select(at, at);
    pane_->Move(Step::WordBack, false);
    pane_->Move(Step::WordOn, true);
    return 0;
  }
  const bool extend = Home().KeyState(VK_SHIFT) != 0;
  if (extend) anchor_ = pane_->Caret() == pane_->End() ? pane_->Start() : pane_->End();
  MoveCaret(at, extend);
  Home().SetCapture(Handle());
  return 0;
}

}  // namespace lorv
