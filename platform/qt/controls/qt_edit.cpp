#include "platform/qt/controls/qt_edit.h"

#include <QWidget>
#include <algorithm>

#include "platform/models/message_values.h"
#include "platform/qt/controls/qt_combo.h"
#include "platform/qt/desktop/qt_desk.h"
#include "platform/qt/desktop/qt_text.h"

// The messages of edits. The keys and the mouse are in qt_edit_input.cpp.

namespace lorv {
namespace {

constexpr int kNoLimit = 0x7FFFFFFE;

}  // namespace

// What is done by message is told by the message's own code, not by the widget.
class QtEdit::Quiet {
 public:
  explicit Quiet(QtEdit& edit) : edit_(edit) { ++edit_.quiet_; }
  Quiet(const Quiet&) = delete;
  Quiet& operator=(const Quiet&) = delete;
  ~Quiet() { --edit_.quiet_; }

 private:
  QtEdit& edit_;
};

QtEdit::QtEdit(QtDesk& desk, HWND handle, const WindowRequest& request, QWidget* around)
    : QtControl(desk, handle, request) {
  const auto changed = WhileItLives([this] {
    if (quiet_ != 0) return;
    modified_ = can_undo_ = true;
    Note(EN_UPDATE);
    Note(EN_CHANGE);
  });
  pane_ = Lines() ? MakeTextPane(around, changed) : MakeLinePane(around, changed);
  const Quiet quiet(*this);
  StartControl(pane_->Widget(), pane_->Pane());
  pane_->UseStyle(Look(), Framed());
  pane_->Set(request.text);
}

void QtEdit::StyleChanged(DWORD /*before*/) {
  if (pane_ != nullptr) pane_->UseStyle(Look(), Framed());
}

CString QtEdit::Text() const {
  return Exists() ? pane_->Text() : CString();
}

LRESULT QtEdit::Default(UINT message, WPARAM w, LPARAM l) {
  const auto keep = shared_from_this();
  if (!Exists()) return 0;
  switch (message) {
    case WM_SETTEXT:
      return SetWhole(reinterpret_cast<LPCTSTR>(l));
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
      return Key(static_cast<int>(w));
    case WM_CHAR:
      return Character(static_cast<TCHAR>(w));
    case WM_LBUTTONDOWN:
    case WM_LBUTTONUP:
    case WM_LBUTTONDBLCLK:
    case WM_MOUSEMOVE:
      return Mouse(message, l);
    case WM_CONTEXTMENU:
      pane_->ShowMenu(ToQt(PointOf(l)));
      return 0;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
      Notify(message == WM_SETFOCUS ? EN_SETFOCUS : EN_KILLFOCUS);
      return 0;
    case WM_CUT:
    case WM_COPY:
    case WM_PASTE:
    case WM_CLEAR:
    case WM_UNDO:
      return ClipboardMessage(message);
    case WM_GETDLGCODE:
      return Code();
    default:
      return SelectionMessage(message, w, l);
  }
}

LRESULT QtEdit::Code() const {
  const UINT plain = DLGC_HASSETSEL | DLGC_WANTCHARS | DLGC_WANTARROWS;
  return Lines() ? plain | DLGC_WANTALLKEYS : plain;
}

LRESULT QtEdit::SetWhole(LPCTSTR text) {
  {
    const Quiet quiet(*this);
    pane_->Set(CString(text));
  }
  modified_ = can_undo_ = false;
  if (!Lines()) TellChange();
  return TRUE;
}

// Also for a text that is the same as before, of which the widget says nothing.
void QtEdit::TellChange() {
  Notify(EN_UPDATE);
  if (Exists()) Notify(EN_CHANGE);
}

void QtEdit::Put(const CString& text) {
  const Quiet quiet(*this);
  pane_->Replace(text);
  modified_ = can_undo_ = true;
}

LRESULT QtEdit::GetSelection(WPARAM w, LPARAM l) const {
  const auto start = reinterpret_cast<DWORD*>(w);
  const auto end = reinterpret_cast<DWORD*>(l);
  if (start != nullptr) *start = static_cast<DWORD>(pane_->Start());
  if (end != nullptr) *end = static_cast<DWORD>(pane_->End());
  const bool fits = pane_->End() <= 0xFFFF;
  return fits ? static_cast<LRESULT>(MAKELPARAM(pane_->Start(), pane_->End())) : -1;
}

// (0, -1) is all, (-1, any) none; a pair the wrong way round is turned.
void QtEdit::Select(int start, int end) {
  const int length = pane_->Text().GetLength();
  if (start == -1) return pane_->Select(pane_->End(), pane_->End());
  const int from = start < 0 ? length : std::min(start, length);
  const int to = end < 0 ? length : std::min(end, length);
  pane_->Select(std::min(from, to), std::max(from, to));
}

LRESULT QtEdit::SelectionMessage(UINT message, WPARAM w, LPARAM l) {
  switch (message) {
    case EM_GETSEL:
      return GetSelection(w, l);
    case EM_SETSEL:
      Select(static_cast<int>(static_cast<LONG_PTR>(w)), static_cast<int>(l));
      return TRUE;
    case EM_SCROLLCARET:
      pane_->ShowCaret();
      return TRUE;
    case EM_REPLACESEL:
      Put(CString(reinterpret_cast<LPCTSTR>(l)));
      if (w == 0) can_undo_ = false;
      TellChange();
      return 0;
    case EM_CANUNDO:
      return static_cast<LRESULT>(can_undo_);
    case EM_UNDO:
      return ClipboardMessage(WM_UNDO);
    case EM_EMPTYUNDOBUFFER:
      can_undo_ = false;
      return 0;
    default:
      return LineMessage(message, w, l);
  }
}

int QtEdit::LineOf(int position) const {
  const auto starts = pane_->LineStarts();
  return static_cast<int>(std::upper_bound(starts.begin(), starts.end(), position) - starts.begin()) - 1;
}

int QtEdit::LineStart(int line) const {
  const auto starts = pane_->LineStarts();
  return line < 0 || line >= static_cast<int>(starts.size()) ? -1 : starts[static_cast<std::size_t>(line)];
}

// Without its line end.
int QtEdit::LineLength(int line) const {
  const int start = LineStart(line);
  if (start < 0) return 0;
  const CString text = pane_->Text();
  const int next = LineStart(line + 1);
  int end = next < 0 ? text.GetLength() : next;
  if (next > 0 && text.GetAt(end - 1) == _T('\n')) end -= 2;
  return end - start;
}

// The room stands in the target's first unit; no end is written behind the text.
LRESULT QtEdit::CopyLine(int line, LPTSTR target) const {
  if (target == nullptr || LineStart(line) < 0) return 0;
  const int room = target[0];
  const CString text = pane_->Text().Mid(LineStart(line), LineLength(line));
  const int count = std::min(room, text.GetLength());
  std::copy_n(text.GetString(), count, target);
  if (count < room) target[count] = 0;
  return count;
}

LRESULT QtEdit::LineMessage(UINT message, WPARAM w, LPARAM l) {
  const int number = static_cast<int>(static_cast<LONG_PTR>(w));
  switch (message) {
    case EM_GETLINECOUNT:
      return static_cast<LRESULT>(pane_->LineStarts().size());
    case EM_LINEINDEX:
      return LineStart(number == -1 ? LineOf(pane_->Caret()) : number);
    case EM_LINELENGTH:
      return LineLength(LineOf(number == -1 ? pane_->Start() : number));
    case EM_LINEFROMCHAR:
      return LineOf(number == -1 ? pane_->Start() : number);
    case EM_GETLINE:
      return CopyLine(number, reinterpret_cast<LPTSTR>(l));
    case EM_GETFIRSTVISIBLELINE:
      return pane_->FirstLine();
    case EM_LINESCROLL:
      pane_->Scroll(static_cast<int>(l));
      return TRUE;
    default:
      return PointMessage(message, w, l);
  }
}

LRESULT QtEdit::PointMessage(UINT message, WPARAM w, LPARAM l) {
  if (message == EM_POSFROMCHAR) {
    const int number = static_cast<int>(static_cast<LONG_PTR>(w));
    if (number < 0 || number > pane_->Text().GetLength()) return -1;
    const CPoint at = pane_->PlaceOf(number);
    return MAKELONG(at.x, at.y);
  }
  if (message == EM_CHARFROMPOS) {
    const int at = pane_->PositionAt(PointOf(l));
    return MAKELONG(at, LineOf(at));
  }
  return StateMessage(message, w, l);
}

LRESULT QtEdit::StateMessage(UINT message, WPARAM w, LPARAM l) {
  switch (message) {
    case EM_GETMODIFY:
      return static_cast<LRESULT>(modified_);
    case EM_SETMODIFY:
      modified_ = w != 0;
      return 0;
    case EM_SETLIMITTEXT:
      limit_ = w == 0 || w > kNoLimit ? kNoLimit : static_cast<int>(w);
      return 0;
    case EM_GETLIMITTEXT:
      return limit_;
    case EM_SETREADONLY:
      SetStyle(w != 0 ? Look() | ES_READONLY : Look() & ~ES_READONLY);
      return TRUE;
    default:
      return QtControl::Default(message, w, l);
  }
}

LRESULT QtEdit::ClipboardMessage(UINT message) {
  const CString selected = pane_->Text().Mid(pane_->Start(), pane_->End() - pane_->Start());
  if ((message == WM_COPY || message == WM_CUT) && !selected.IsEmpty()) Home().SetClipboardText(selected);
  if (message == WM_COPY || ReadOnly()) return 0;
  if (message == WM_UNDO) {
    {
      const Quiet quiet(*this);
      if (!can_undo_ || !pane_->Undo()) return FALSE;
    }
    TellChange();
    return TRUE;
  }
  if (message != WM_PASTE) {
    if (!selected.IsEmpty()) {
      Put(CString());
      TellChange();
    }
    return 0;
  }
  CString text = Home().ClipboardText();
  // An edit of one line takes what stands before the first line end.
  if (!Lines()) text = text.SpanExcluding(_T("\r\n"));
  if (Home().HasClipboardText()) Write(text);
  return 0;
}

// As much as the limit allows.
void QtEdit::Write(const CString& text) {
  if (ReadOnly()) return;
  const auto keep = shared_from_this();
  CString shaped = text;
  if ((Look() & ES_UPPERCASE) != 0) shaped.MakeUpper();
  if ((Look() & ES_LOWERCASE) != 0) shaped.MakeLower();
  const int room = std::max(0, limit_ - (pane_->Text().GetLength() - (pane_->End() - pane_->Start())));
  const bool whole = shaped.GetLength() <= room;
  const CString fits = whole ? shaped : shaped.Left(room);
  const bool changes = !fits.IsEmpty() || pane_->Start() != pane_->End();
  if (changes) Put(fits);
  if (changes || whole) TellChange();
  if (!whole && Exists()) Notify(EN_MAXTEXT);
  if (Exists()) pane_->ShowCaret();
}

void QtEdit::MoveCaret(int to, bool extend) {
  if (!extend) anchor_ = to;
  pane_->Select(extend ? anchor_ : to, to);
}

}  // namespace lorv
