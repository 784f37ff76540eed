#pragma once

#include <algorithm>
#include <memory>
#include <utility>

#include "framework/ports/desktop_port.h"
#include "platform/models/controls/edit_lines.h"
#include "platform/models/controls/edit_pane.h"
#include "platform/models/controls/unit_pairs.h"
#include "platform/models/message_values.h"

namespace lorv {

// How edits answer messages, of one line or of several, for peers that model them themselves. Each change
// sends EN_UPDATE, then EN_CHANGE; a text set by program too, but not in an edit of several lines.
//
// `Window` is the peer's window class, which gives Home(), its desktop, and Look(), its style. The peer gives
// the pane before the first message.
template <class Window>
class EditBehaviour : public Window {
 public:
  using Window::Window;

  CString Text() const override { return this->Exists() ? pane_->Text() : CString(); }

  LRESULT Default(UINT message, WPARAM w, LPARAM l) override {
    const auto keep = this->shared_from_this();
    if (!this->Exists()) return 0;
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
        pane_->ShowMenu(PointOf(l));
        return 0;
      case WM_SETFOCUS:
      case WM_KILLFOCUS:
        this->Notify(message == WM_SETFOCUS ? EN_SETFOCUS : EN_KILLFOCUS);
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

 protected:
  void UsePane(std::unique_ptr<EditPane> pane) { pane_ = std::move(pane); }
  bool Lines() const { return (this->Look() & ES_MULTILINE) != 0; }
  bool ReadOnly() const { return (this->Look() & ES_READONLY) != 0; }
  // The user changed the text past the messages, at the system's own widget.
  void ChangedOutside() { modified_ = can_undo_ = true; }
  // Whether what the pane reports now is a message's own doing.
  bool IsQuiet() const { return quiet_ != 0; }

 private:
  static constexpr int kNoLimit = 0x7FFFFFFE;
  static constexpr int kUsualLimit = 30000;

  enum : TCHAR { kControlA = 1, kControlC = 3, kControlV = 22, kControlX = 24, kControlZ = 26 };
  using Step = EditPane::Step;

  // What a message changes is reported by the message's own code, not by the pane's widget.
  class Quiet {
   public:
    explicit Quiet(EditBehaviour& edit) : edit_(edit) { ++edit_.quiet_; }
    Quiet(const Quiet&) = delete;
    Quiet& operator=(const Quiet&) = delete;
    ~Quiet() { --edit_.quiet_; }

   private:
    EditBehaviour& edit_;
  };

  LRESULT Code() const {
    const UINT plain = DLGC_HASSETSEL | DLGC_WANTCHARS | DLGC_WANTARROWS;
    return Lines() ? plain | DLGC_WANTALLKEYS : plain;
  }

  LRESULT SetWhole(LPCTSTR text) {
    {
      const Quiet quiet(*this);
      pane_->Set(CString(text));
    }
    modified_ = can_undo_ = false;
    if (!Lines()) NotifyChange();
    return TRUE;
  }

  // Also for a text that is the same as before.
  void NotifyChange() {
    this->Notify(EN_UPDATE);
    if (this->Exists()) this->Notify(EN_CHANGE);
  }

  void Put(const CString& text) {
    const Quiet quiet(*this);
    pane_->Replace(text);
    modified_ = can_undo_ = true;
  }

  LRESULT GetSelection(WPARAM w, LPARAM l) const {
    const auto start = reinterpret_cast<DWORD*>(w);
    const auto end = reinterpret_cast<DWORD*>(l);
    if (start != nullptr) *start = static_cast<DWORD>(pane_->Start());
    if (end != nullptr) *end = static_cast<DWORD>(pane_->End());
    const bool fits = pane_->End() <= 0xFFFF;
    return fits ? static_cast<LRESULT>(MAKELPARAM(pane_->Start(), pane_->End())) : -1;
  }

  // (0, -1) is all, (-1, any) none; a pair the wrong way round is turned.
  void Select(int start, int end) {
    const int length = pane_->Text().GetLength();
    if (start == -1) return pane_->Select(pane_->End(), pane_->End());
    const int from = start < 0 ? length : std::min(start, length);
    const int to = end < 0 ? length : std::min(end, length);
    pane_->Select(std::min(from, to), std::max(from, to));
  }

  LRESULT SelectionMessage(UINT message, WPARAM w, LPARAM l) {
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
        NotifyChange();
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

  EditLines Layout() const { return {pane_->Text(), pane_->LineStarts()}; }

  // The room stands in the target's first unit; no end is written behind the text.
  static LRESULT CopyLine(const EditLines& lines, int line, LPTSTR target) {
    if (target == nullptr || lines.Start(line) < 0) return 0;
    const int room = target[0];
    const CString text = lines.Text(line);
    const int count = std::min(room, text.GetLength());
    std::copy_n(text.GetString(), count, target);
    if (count < room) target[count] = 0;
    return count;
  }

  LRESULT LineMessage(UINT message, WPARAM w, LPARAM l) {
    const int number = static_cast<int>(static_cast<LONG_PTR>(w));
    switch (message) {
      case EM_GETLINECOUNT:
        return Layout().Count();
      case EM_LINEINDEX: {
        const EditLines lines = Layout();
        return lines.Start(number == -1 ? lines.Of(pane_->Caret()) : number);
      }
      case EM_LINELENGTH: {
        const EditLines lines = Layout();
        return lines.Length(lines.Of(number == -1 ? pane_->Start() : number));
      }
      case EM_LINEFROMCHAR:
        return Layout().Of(number == -1 ? pane_->Start() : number);
      case EM_GETLINE:
        return CopyLine(Layout(), number, reinterpret_cast<LPTSTR>(l));
      case EM_GETFIRSTVISIBLELINE:
        return pane_->FirstLine();
      case EM_LINESCROLL:
        pane_->Scroll(static_cast<int>(l));
        return TRUE;
      default:
        return PointMessage(message, w, l);
    }
  }

  LRESULT PointMessage(UINT message, WPARAM w, LPARAM l) {
    if (message == EM_POSFROMCHAR) {
      const int number = static_cast<int>(static_cast<LONG_PTR>(w));
      if (number < 0 || number > pane_->Text().GetLength()) return -1;
      const CPoint at = pane_->PlaceOf(number);
      return MAKELONG(at.x, at.y);
    }
    if (message == EM_CHARFROMPOS) {
      const int at = pane_->PositionAt(PointOf(l));
      return MAKELONG(at, Layout().Of(at));
    }
    return StateMessage(message, w, l);
  }

  LRESULT StateMessage(UINT message, WPARAM w, LPARAM l) {
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
        this->SetStyle(w != 0 ? this->Look() | ES_READONLY : Without(this->Look(), ES_READONLY));
        return TRUE;
      default:
        return Window::Default(message, w, l);
    }
  }

  LRESULT UndoMessage() {
    {
      const Quiet quiet(*this);
      if (!can_undo_ || !pane_->Undo()) return FALSE;
    }
    modified_ = true;
    NotifyChange();
    return TRUE;
  }

  LRESULT ClipboardMessage(UINT message) {
    const CString selected = pane_->Text().Mid(pane_->Start(), pane_->End() - pane_->Start());
    if ((message == WM_COPY || message == WM_CUT) && !selected.IsEmpty())
      this->Home().SetClipboardText(selected);
    if (message == WM_COPY || ReadOnly()) return 0;
    if (message == WM_UNDO) return UndoMessage();
    if (message != WM_PASTE) {
      if (selected.IsEmpty()) return 0;
      Put(CString());
      NotifyChange();
      return 0;
    }
    CString text = this->Home().ClipboardText();
    // An edit of one line takes what stands before the first line end.
    if (!Lines()) text = text.SpanExcluding(_T("\r\n"));
    if (this->Home().HasClipboardText()) Write(text);
    return 0;
  }

  int Room() const {
    return std::max(0, limit_ - (pane_->Text().GetLength() - (pane_->End() - pane_->Start())));
  }

  // As much as the limit allows.
  void Write(const CString& text) {
    if (ReadOnly()) return;
    const auto keep = this->shared_from_this();
    CString shaped = text;
    if ((this->Look() & ES_UPPERCASE) != 0) shaped.MakeUpper();
    if ((this->Look() & ES_LOWERCASE) != 0) shaped.MakeLower();
    const CString fits = FittingPart(shaped, Room());
    const bool whole = fits.GetLength() == shaped.GetLength();
    const bool changes = !fits.IsEmpty() || pane_->Start() != pane_->End();
    if (changes) Put(fits);
    if (changes || whole) NotifyChange();
    if (!whole && this->Exists()) this->Notify(EN_MAXTEXT);
    if (this->Exists()) pane_->ShowCaret();
  }

  void Type(TCHAR unit) {
    if (unit < _T(' ')) return;
    if ((this->Look() & ES_NUMBER) != 0 && (unit < _T('0') || unit > _T('9'))) return;
    if (!halves_.Refuses(unit, Room())) return Write(CString(unit));
    // One word for both halves.
    if (IsHighHalf(unit) && !ReadOnly()) this->Notify(EN_MAXTEXT);
  }

  LRESULT Character(TCHAR unit) {
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
        Type(unit);
        return 0;
    }
  }

  static Step StepOf(int key, bool control) {
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

  // Keys that choose in the list of the drop-down list around this edit.
  bool ToCombo(int key) {
    const auto combo = this->Home().Find(this->Parent());
    if (combo == nullptr || combo->Kind() != WindowKind::Combo) return false;
    const bool closes = key == VK_RETURN || key == VK_ESCAPE;
    const bool dropped = combo->Default(CB_GETDROPPEDSTATE, 0, 0) != 0;
    if (closes ? !dropped : key != VK_UP && key != VK_DOWN && key != VK_F4) return false;
    combo->Default(WM_KEYDOWN, static_cast<WPARAM>(key), 1);
    return true;
  }

  LRESULT Key(int key) {
    if (ToCombo(key)) return 0;
    const bool shift = this->Home().KeyState(VK_SHIFT) != 0;
    const bool control = this->Home().KeyState(VK_CONTROL) != 0;
    if (key == VK_DELETE) Erase(Step::On);
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
  void Erase(Step step) {
    if (ReadOnly()) return;
    if (pane_->Start() == pane_->End()) pane_->Move(step, true);
    if (pane_->Start() == pane_->End()) return;
    Put(CString());
    NotifyChange();
  }

  void MoveCaret(int to, bool extend) {
    if (!extend) anchor_ = to;
    pane_->Select(extend ? anchor_ : to, to);
  }

  LRESULT Mouse(UINT message, LPARAM l) {
    const bool captured = this->Home().Capture() == this->Handle();
    if (message == WM_LBUTTONUP) {
      if (captured) this->Home().SetCapture(nullptr);
      return 0;
    }
    if (message == WM_MOUSEMOVE) {
      if (captured) MoveCaret(pane_->PositionAt(PointOf(l)), true);
      return 0;
    }
    this->Focus();
    if (!this->Exists()) return 0;
    const int at = pane_->PositionAt(PointOf(l));
    if (message == WM_LBUTTONDBLCLK) {
      pane_->Select(at, at);
      pane_->Move(Step::WordBack, false);
      pane_->Move(Step::WordOn, true);
      return 0;
    }
    const bool extend = this->Home().KeyState(VK_SHIFT) != 0;
    if (extend) anchor_ = pane_->Caret() == pane_->End() ? pane_->Start() : pane_->End();
    MoveCaret(at, extend);
    this->Home().SetCapture(this->Handle());
    return 0;
  }

  std::unique_ptr<EditPane> pane_;
  TypedHalves halves_;
  int limit_ = kUsualLimit;
  int anchor_ = 0;  // where a selection by mouse began
  int quiet_ = 0;
  bool modified_ = false;
  bool can_undo_ = false;
};

}  // namespace lorv
