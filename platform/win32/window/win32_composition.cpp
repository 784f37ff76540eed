#include <algorithm>

#include "framework/drawing/geometry.h"
#include "platform/win32/window/win32_window.h"

// What the system's input method composes in a window, and where it shows its candidates. The context is the
// system's and is given back at once: holding it would keep the input method waiting.

namespace lorv {
namespace {

class InputContext {
 public:
  explicit InputContext(HWND window) : window_(window), context_(ImmGetContext(window)) {}
  InputContext(const InputContext&) = delete;
  InputContext& operator=(const InputContext&) = delete;
  ~InputContext() {
    if (context_ != nullptr) ImmReleaseContext(window_, context_);
  }
  HIMC Handle() const { return context_; }

  CString Text(DWORD which) const {
    // Asked for its length first; negative numbers are the system's errors.
    const LONG bytes = context_ == nullptr ? 0 : ImmGetCompositionStringW(context_, which, nullptr, 0);
    if (bytes <= 0) return {};
    CString text;
    const int units = static_cast<int>(bytes / static_cast<LONG>(sizeof(wchar_t)));
    ImmGetCompositionStringW(context_, which, text.GetBuffer(units), static_cast<DWORD>(bytes));
    text.ReleaseBuffer(units);
    return text;
  }
  int Caret() const {
    const LONG at = context_ == nullptr ? 0 : ImmGetCompositionStringW(context_, GCS_CURSORPOS, nullptr, 0);
    return std::max(static_cast<int>(at), 0);
  }

 private:
  HWND window_;
  HIMC context_;
};

// The window in which a composition began that has not ended: the windows of a thread share one context.
constinit thread_local HWND g_composing = nullptr;

}  // namespace

Composition Win32Window::CompositionNow() const {
  if (!Exists()) return {};
  const InputContext input(handle_);
  // Of a composition that its window did not live to see the text stays, and nothing is composed.
  if (g_composing == nullptr) return {CString(), 0, input.Text(GCS_RESULTSTR)};
  return {input.Text(GCS_COMPSTR), input.Caret(), input.Text(GCS_RESULTSTR)};
}

void Win32Window::SetCompositionCaret(const RECT& caret) {
  if (!Exists()) return;
  const InputContext input(handle_);
  if (input.Handle() == nullptr) return;
  COMPOSITIONFORM text = {};
  text.dwStyle = CFS_POINT;
  text.ptCurrentPos = {caret.left, caret.top};
  ImmSetCompositionWindow(input.Handle(), &text);
  // The list of candidates keeps off the caret's rectangle.
  CANDIDATEFORM list = {};
  list.dwStyle = CFS_EXCLUDE;
  list.ptCurrentPos = {caret.left, caret.bottom};
  list.rcArea = caret;
  ImmSetCandidateWindow(input.Handle(), &list);
}

void Win32Window::NoteComposition(UINT message) const {
  if (message == WM_IME_STARTCOMPOSITION) g_composing = handle_;
  if (message == WM_IME_ENDCOMPOSITION) g_composing = nullptr;
}

// What a window composed that ends would go on in all others, which then left their keys to the input method.
void Win32Window::CancelComposition() const {
  if (handle_ == nullptr || g_composing != handle_) return;
  g_composing = nullptr;
  const InputContext input(handle_);
  if (input.Handle() != nullptr) ImmNotifyIME(input.Handle(), NI_COMPOSITIONSTR, CPS_CANCEL, 0);
}

void Win32Window::EnableComposition(bool on) {
  // Without a context the system's input method leaves the keys of the window alone.
  if (Exists()) ImmAssociateContextEx(handle_, nullptr, on ? IACE_DEFAULT : 0);
}

}  // namespace lorv
