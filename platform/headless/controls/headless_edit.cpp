#include "platform/headless/controls/headless_edit.h"

#include <algorithm>

#include "platform/headless/desktop/headless_desktop.h"
#include "platform/models/message_values.h"

namespace lorv {
namespace {

constexpr TCHAR kControlA = 1;
constexpr TCHAR kControlC = 3;
constexpr TCHAR kControlV = 22;
constexpr TCHAR kControlX = 24;
constexpr TCHAR kControlZ = 26;
constexpr int kNoLimit = 0x7FFFFFFE;

}  // namespace

HeadlessEdit::HeadlessEdit(HeadlessDesktop& desktop, HWND handle, const WindowRequest& request)
    : HeadlessWindow(desktop, handle, request), text_((request.style & ES_MULTILINE) != 0) {
  text_.text = request.text;
}

LRESULT HeadlessEdit::Default(UINT message, WPARAM w, LPARAM l) {
  const auto keep = shared_from_this();
  if (!Exists()) return 0;
  const bool wraps = Lines() && (Style() & ES_AUTOHSCROLL) == 0;
  text_.wrap_width = wraps ? std::max<int>(ClientRect().right, kHeadlessWide) : 0;
  switch (message) {
    case WM_SETTEXT:
      return SetWhole(reinterpret_cast<LPCTSTR>(l));
    case WM_KEYDOWN:
      return Key(static_cast<int>(w));
    case WM_CHAR:
      return Character(static_cast<TCHAR>(w));
    case WM_LBUTTONDOWN:
    case WM_LBUTTONUP:
    case WM_LBUTTONDBLCLK:
    case WM_MOUSEMOVE:
      return Mouse(message, l);
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

LRESULT HeadlessEdit::Code() const {
  const UINT plain = DLGC_HASSETSEL | DLGC_WANTCHARS | DLGC_WANTARROWS;
  return Lines() ? plain | DLGC_WANTALLKEYS : plain;
}

LRESULT HeadlessEdit::SetWhole(LPCTSTR text) {
  text_.Set(text);
  first_line_ = 0;
  Invalidate(nullptr);
  if (!Lines()) TellChange();
  return TRUE;
}

void HeadlessEdit::TellChange() {
  Invalidate(nullptr);
  Notify(EN_UPDATE);
  if (Exists()) Notify(EN_CHANGE);
}

LRESULT HeadlessEdit::GetSelection(WPARAM w, LPARAM l) const {
  const auto start = reinterpret_cast<DWORD*>(w);
  const auto end = reinterpret_cast<DWORD*>(l);
  if (start != nullptr) *start = static_cast<DWORD>(text_.Start());
  if (end != nullptr) *end = static_cast<DWORD>(text_.End());
  const bool fits = text_.End() <= 0xFFFF;
  return fits ? static_cast<LRESULT>(MAKELPARAM(text_.Start(), text_.End())) : -1;
}

LRESULT HeadlessEdit::SelectionMessage(UINT message, WPARAM w, LPARAM l) {
  switch (message) {
    case EM_GETSEL:
      return GetSelection(w, l);
    case EM_SETSEL:
      text_.Select(static_cast<int>(static_cast<LONG_PTR>(w)), static_cast<int>(l));
      Invalidate(nullptr);
      return TRUE;
    case EM_SCROLLCARET:
      ShowCaret();
      return TRUE;
    case EM_REPLACESEL:
      text_.Replace(reinterpret_cast<LPCTSTR>(l));
      if (w == 0) text_.ForgetUndo();
      TellChange();
      return 0;
    case EM_CANUNDO:
      return static_cast<LRESULT>(text_.CanUndo());
    case EM_UNDO:
      return ClipboardMessage(WM_UNDO);
    case EM_EMPTYUNDOBUFFER:
      text_.ForgetUndo();
      return 0;
    default:
      return LineMessage(message, w, l);
  }
}

LRESULT HeadlessEdit::LineMessage(UINT message, WPARAM w, LPARAM l) {
  const int number = static_cast<int>(static_cast<LONG_PTR>(w));
  switch (message) {
    case EM_GETLINECOUNT:
      return static_cast<LRESULT>(text_.LineStarts().size());
    case EM_LINEINDEX:
      return text_.LineStart(number == -1 ? text_.LineOf(text_.Caret()) : number);
    case EM_LINELENGTH:
      return text_.LineLength(text_.LineOf(number == -1 ? text_.Start() : number));
    case EM_LINEFROMCHAR:
      return text_.LineOf(number == -1 ? text_.Start() : number);
    case EM_GETLINE:
      return CopyLine(number, reinterpret_cast<LPTSTR>(l));
    case EM_GETFIRSTVISIBLELINE:
      return first_line_;
    case EM_LINESCROLL: {
      const int last = static_cast<int>(text_.LineStarts().size()) - 1;
      first_line_ = std::clamp(first_line_ + static_cast<int>(l), 0, last);
      Invalidate(nullptr);
      return TRUE;
    }
    case EM_POSFROMCHAR: {
      const CPoint at = PlaceOf(number);
      return number > text_.text.GetLength() ? -1 : MAKELONG(at.x, at.y);
    }
    case EM_CHARFROMPOS: {
      const int at = PositionAt(PointOf(l));
      return MAKELONG(at, text_.LineOf(at));
    }
    default:
      return StateMessage(message, w, l);
  }
}

LRESULT HeadlessEdit::StateMessage(UINT message, WPARAM w, LPARAM l) {
  switch (message) {
    case EM_GETMODIFY:
      return static_cast<LRESULT>(text_.modified);
    case EM_SETMODIFY:
      text_.modified = w != 0;
      return 0;
    case EM_SETLIMITTEXT:
      text_.limit = w == 0 || w > kNoLimit ? kNoLimit : static_cast<int>(w);
      return 0;
    case EM_GETLIMITTEXT:
      return text_.limit;
    case EM_SETREADONLY:
      SetStyle(w != 0 ? Style() | ES_READONLY : Without(Style(), ES_READONLY));
      return TRUE;
    default:
      return HeadlessWindow::Default(message, w, l);
  }
}

// The room stands in the target's first unit; no end is written behind the text.
LRESULT HeadlessEdit::CopyLine(int line, LPTSTR target) const {
  if (target == nullptr || text_.LineStart(line) < 0) return 0;
  const int room = target[0];
  const CString text = text_.LineText(line);
  const int count = std::min(room, text.GetLength());
  std::copy_n(text.GetString(), count, target);
  if (count < room) target[count] = 0;
  return count;
}

int HeadlessEdit::KeyTarget(int key, bool control) const {
  const int caret = text_.Caret();
  const int line = text_.LineOf(caret);
  switch (key) {
    case VK_LEFT:
      return control ? text_.WordBack(caret) : text_.StepBack(caret);
    case VK_RIGHT:
      return control ? text_.WordOn(caret) : text_.StepOn(caret);
    case VK_UP:
      return Lines() ? text_.Above(caret, 1) : text_.StepBack(caret);
    case VK_DOWN:
      return Lines() ? text_.Above(caret, -1) : text_.StepOn(caret);
    case VK_HOME:
      return control ? 0 : text_.LineStart(line);
    default:
      return control ? text_.text.GetLength() : text_.LineStart(line) + text_.LineLength(line);
  }
}

LRESULT HeadlessEdit::Key(int key) {
  const bool shift = Home().KeyState(VK_SHIFT) != 0;
  const bool control = Home().KeyState(VK_CONTROL) != 0;
  switch (key) {
    case VK_LEFT:
    case VK_RIGHT:
    case VK_UP:
    case VK_DOWN:
    case VK_HOME:
    case VK_END: {
      const bool collapses = !shift && !control && text_.Start() != text_.End();
      int target = KeyTarget(key, control);
      if (collapses && key == VK_LEFT) target = text_.Start();
      if (collapses && key == VK_RIGHT) target = text_.End();
      text_.MoveCaret(target, shift);
      ShowCaret();
      return 0;
    }
    case VK_DELETE:
      Erase(text_.StepOn(text_.Caret()));
      return 0;
    default:
      return 0;
  }
}

// Takes the selection away, or what lies between the caret and `to`.
void HeadlessEdit::Erase(int to) {
  if (ReadOnly()) return;
  if (text_.Start() == text_.End()) text_.MoveCaret(to, true);
  if (text_.Start() == text_.End()) return;
  text_.Replace(CString());
  TellChange();
}

void HeadlessEdit::Write(const CString& text) {
  if (ReadOnly()) return;
  const CString before = text_.text;
  const bool whole = text_.Insert(text);
  const auto keep = shared_from_this();
  if (before != text_.text || whole) TellChange();
  if (!whole && Exists()) Notify(EN_MAXTEXT);
  if (Exists()) ShowCaret();
}

LRESULT HeadlessEdit::Character(TCHAR unit) {
  switch (unit) {
    case kControlA:
      text_.Select(0, -1);
      Invalidate(nullptr);
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
      Erase(text_.StepBack(text_.Caret()));
      return 0;
    case _T('\r'):
      if (Lines()) Write(_T("\r\n"));
      return 0;
    case _T('\t'):
      if (Lines()) Write(_T("\t"));
      return 0;
    default:
      if (unit < _T(' ')) return 0;
      if ((Style() & ES_NUMBER) != 0 && (unit < _T('0') || unit > _T('9'))) return 0;
      Write(CString(unit));
      return 0;
  }
}

LRESULT HeadlessEdit::ClipboardMessage(UINT message) {
  const CString selected = text_.text.Mid(text_.Start(), text_.End() - text_.Start());
  if ((message == WM_COPY || message == WM_CUT) && !selected.IsEmpty()) Home().SetClipboardText(selected);
  if (message == WM_COPY || ReadOnly()) return 0;
  if (message == WM_UNDO) {
    if (!text_.Undo()) return FALSE;
    TellChange();
    return TRUE;
  }
  if (message != WM_PASTE) {
    if (!selected.IsEmpty()) Erase(text_.End());
    return 0;
  }
  CString text = Home().ClipboardText();
  // An edit of one line takes what stands before the first line end.
  if (!Lines()) text = text.SpanExcluding(_T("\r\n"));
  if (Home().HasClipboardText()) Write(text);
  return 0;
}

int HeadlessEdit::PositionAt(CPoint point) const {
  const int lines = static_cast<int>(text_.LineStarts().size());
  const int line =
      Lines() ? std::clamp(first_line_ + static_cast<int>(point.y) / kHeadlessHeight, 0, lines - 1) : 0;
  const CString text = text_.LineText(line);
  int at = 0;
  int left = 0;
  for (; at < text.GetLength(); ++at) {
    const int width = HeadlessExtent(text.View().substr(static_cast<std::size_t>(at), 1)).cx;
    if (point.x < left + (width + 1) / 2) break;
    left += width;
  }
  return text_.LineStart(line) + at;
}

CPoint HeadlessEdit::PlaceOf(int position) const {
  const int at = std::clamp(position, 0, text_.text.GetLength());
  const int line = text_.LineOf(at);
  const int start = text_.LineStart(line);
  const auto before =
      text_.text.View().substr(static_cast<std::size_t>(start), static_cast<std::size_t>(at - start));
  return CPoint(HeadlessExtent(before).cx, (line - first_line_) * kHeadlessHeight);
}

LRESULT HeadlessEdit::Mouse(UINT message, LPARAM l) {
  const CPoint point = PointOf(l);
  if (message == WM_LBUTTONUP) {
    if (Home().Capture() == Handle()) Home().SetCapture(nullptr);
    return 0;
  }
  if (message == WM_MOUSEMOVE) {
    if (Home().Capture() == Handle()) text_.MoveCaret(PositionAt(point), true);
    return 0;
  }
  Focus();
  if (!Exists()) return 0;
  const int at = PositionAt(point);
  if (message == WM_LBUTTONDBLCLK) {
    text_.Select(text_.WordBack(at), text_.WordOn(at));
    return 0;
  }
  text_.MoveCaret(at, Home().KeyState(VK_SHIFT) != 0);
  Home().SetCapture(Handle());
  return 0;
}

void HeadlessEdit::ShowCaret() {
  const int line = text_.LineOf(text_.Caret());
  const int page = std::max(1, static_cast<int>(ClientRect().bottom) / kHeadlessHeight);
  first_line_ = Lines() ? std::clamp(first_line_, std::max(0, line - page + 1), line) : 0;
  Invalidate(nullptr);
}

void HeadlessEdit::PaintSelf(Canvas& canvas) {
  const CRect client(ClientRect());
  canvas.Fill(client, ReadOnly() ? RGB(240, 240, 240) : RGB(255, 255, 255));
  const int lines = static_cast<int>(text_.LineStarts().size());
  for (int line = first_line_; line < lines; ++line) {
    const int y = (line - first_line_) * kHeadlessHeight;
    if (y >= client.bottom) break;
    canvas.Text({0, y}, text_.LineText(line).View(), 0);
  }
}

}  // namespace lorv
