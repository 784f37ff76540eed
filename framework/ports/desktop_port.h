#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "framework/ports/accessible_port.h"
#include "framework/ports/drop_port.h"
#include "framework/ports/menu_model.h"
#include "framework/ports/transfer_data.h"
#include "framework/ports/window_port.h"

// The screen, the keyboard, the mouse and the message queue, as window classes see them. One for a process;
// a test puts its own in force for a scope.
//
// Threads: that of the user interface; Post, Find, MakeCanvas and Ticks are for any thread.
// Edges: handles that name nothing are answered null, false or 0. Calls that wait (Pump, RunModal, Popup,
//   Send) run other windows' code: whatever was known before must be asked again.
namespace lorv {

class COMM_LORV_API Desktop {
 public:
  Desktop() = default;
  Desktop(const Desktop&) = delete;
  Desktop& operator=(const Desktop&) = delete;
  virtual ~Desktop() = default;

  // A window: its handle goes to request.attach, then WM_CREATE is delivered (WM_NCCREATE is not), then
  // WM_SIZE, and it is shown if its style says so. Null if it could not be made or WM_CREATE was answered
  // with -1. The window lives until Destroy, or until its parent or owner goes.
  virtual HWND Create(const WindowRequest& request) = 0;
  // The window of that handle, or null. On Windows the windows of other programs are answered for too.
  virtual std::shared_ptr<WindowPeer> Find(HWND window) const = 0;
  // The top-level windows of this thread, the topmost first, invisible ones included.
  virtual std::vector<HWND> Windows() const = 0;

  // Puts a message into the queue; false if the handle names nothing. A null handle is a message to the
  // thread. Messages to a window are lost when it goes.
  virtual bool Post(HWND window, UINT message, WPARAM w, LPARAM l) = 0;
  // Delivers now, and gives the answer.
  virtual LRESULT Send(HWND window, UINT message, WPARAM w, LPARAM l) = 0;
  // Takes one message: offers it to the window classes (lorv::OfferMessage), then delivers it. Order: posted
  // messages, input, painting, timers. Without one it waits if asked to. False: nothing came, or WM_QUIT.
  virtual bool Pump(bool wait) = 0;
  // What the last WM_QUIT carried that Pump came upon: the answer of the program. Empty before. A modal loop
  // that comes upon it ends and leaves it to the loop around; the host's own loop has it from its system.
  virtual std::optional<int> QuitCode() const = 0;
  // Asks the loops of the thread to end, with that code.
  bool Quit(int code) { return Post(nullptr, WM_QUIT, static_cast<WPARAM>(code), 0); }
  // Dispatches messages until EndModal of that window, until it is gone, or until WM_QUIT. While it runs, the
  // window's owner is disabled, and enabled again however it ends: what a handler throws goes on to the
  // caller. Dialogs may be nested.
  virtual void RunModal(HWND dialog) = 0;
  virtual void EndModal(HWND dialog) = 0;

  // A window of ours, null where none has the focus, or some handle that is not ours where another program's
  // window has it.
  virtual HWND Focus() const = 0;
  // No window has the focus then; WM_KILLFOCUS to the former.
  virtual void ClearFocus() = 0;
  virtual HWND Active() const = 0;
  virtual HWND Capture() const = 0;
  // All mouse messages go to that window, null ends it; WM_CAPTURECHANGED goes to the former.
  virtual void SetCapture(HWND window) = 0;

  // Bit 15: the key or mouse button is down now. The left and right buttons are VK_LBUTTON, VK_RBUTTON.
  virtual SHORT KeyState(int key) const = 0;
  virtual POINT CursorPosition() const = 0;
  virtual void SetCursorPosition(POINT at) = 0;
  // One of the system's cursors by its number, or one that MakeCursor made; it stays until the next change.
  virtual void SetCursor(int shape) = 0;
  // A cursor of the program's own; `point` is the pixel of the picture that points. Its number from
  // kFirstOwnCursor on, or 0: no picture, one larger than kMaxCursorSide, or kMaxOwnCursors are there.
  virtual int MakeCursor(const PixelImage& picture, POINT point) = 0;
  virtual void EndCursor(int cursor) = 0;
  virtual int Cursor() const = 0;
  virtual HWND WindowAt(POINT screen) const = 0;  // the innermost visible one

  virtual RECT WorkArea(POINT near_by) const = 0;  // of the screen there, without the task bar
  virtual RECT Screen() const = 0;
  virtual COLORREF Colour(int index) const = 0;  // COLOR_...
  virtual int Metric(int index) const = 0;       // SM_...
  virtual LOGFONT DialogFont() const = 0;
  virtual DWORD Ticks() const = 0;  // milliseconds, wraps around

  // Shows the menu until a choice is made; the command chosen, 0 for none. Keys, clicks and Esc work as the
  // system's menus do. While it is up, no window is offered a message and MenuUp is true. `flags` are
  // TPM_...; sending the command to the owner is left to CMenu. WM_INITMENUPOPUP is not sent.
  virtual UINT Popup(const MenuModel& menu, POINT screen, UINT flags, HWND owner) = 0;
  virtual bool MenuUp() const = 0;

  // The keyboard layout of this thread; Activate gives the former one, null if that one is not installed.
  virtual HKL Layout() const = 0;
  virtual HKL ActivateLayout(HKL layout, UINT flags) = 0;
  virtual std::vector<HKL> Layouts() const = 0;

  virtual bool HasClipboardText() const = 0;
  virtual CString ClipboardText() const = 0;
  virtual bool SetClipboardText(const CString& text) = 0;
  // One content in several formats. False if the system refused; what was there before may be gone then.
  virtual bool SetClipboard(const TransferData& data) = 0;
  // One format beside text, as TransferData has them; empty where the clipboard has none.
  virtual std::vector<BYTE> ClipboardBytes(const CString& format) const = 0;

  // Lets the user drag the content while the mouse button is held; returns at its end, with what the receiver
  // did. The capture is given up before; the release of the button comes to no window.
  virtual DROPEFFECT Drag(const TransferData& /*content*/, DROPEFFECT /*allowed*/) { return DROPEFFECT_NONE; }

  // A surface in memory, filled with white, that can be copied to the windows of this desktop.
  virtual std::unique_ptr<Canvas> MakeCanvas(SIZE size) const = 0;

  // Reports to screen readers what changed: of the window, or of the object of that number in its tree. The
  // change is done already; they may ask at once.
  virtual void ReportAccessible(HWND /*window*/, AccessEvent /*event*/, std::int64_t /*number*/) {}

  // Whether anybody sees the windows and can answer what they ask.
  virtual bool HasViewer() const { return true; }

  // The number that all programs share for a message of that name, from 0xC000 on.
  virtual UINT RegisterMessage(LPCTSTR name) = 0;
};

// The system's cursors, by the system's numbers.
constexpr int kCursorArrow = 32512;
constexpr int kCursorText = 32513;
constexpr int kCursorWait = 32514;
constexpr int kCursorCross = 32515;
constexpr int kCursorSizeDiagonal = 32642;
constexpr int kCursorSizeAcross = 32644;
constexpr int kCursorSizeDown = 32645;
constexpr int kCursorSizeAll = 32646;
constexpr int kCursorHand = 32649;

// The program's own ones.
constexpr int kFirstOwnCursor = 0x10000;
constexpr std::size_t kMaxOwnCursors = 256;
constexpr int kMaxCursorSide = 256;

// Whether a cursor can be made of the picture.
constexpr bool IsCursorPicture(const PixelImage& picture) {
  return picture.pixels != nullptr && picture.width > 0 && picture.height > 0 &&
         picture.width <= kMaxCursorSide && picture.height <= kMaxCursorSide;
}

// The desktop in force: that of the innermost scope, else the one chosen for the process. Reading is for any
// thread. Raises CResourceException by pointer if that one cannot be had.
COMM_LORV_API Desktop& DesktopInForce();

// Whether a key or a mouse button is down, as of the message in work: the high bit of the state.
inline bool IsKeyDown(int key) {
  return DesktopInForce().KeyState(key) < 0;
}

// The same, or null where it cannot be had: for callers that can do without windows.
COMM_LORV_API Desktop* DesktopIfAny();

// The one chosen for the process, made at the first call; answered by platform/choice/desktop_choice.h.
Desktop& ChosenDesktop();

// Puts a desktop in force until its end. Scopes end in the reverse order of their beginning, on one thread.
// The desktop is not owned and must live as long as it is in force.
class COMM_LORV_API ScopedDesktop {
 public:
  explicit ScopedDesktop(Desktop& desktop);
  ScopedDesktop(const ScopedDesktop&) = delete;
  ScopedDesktop& operator=(const ScopedDesktop&) = delete;
  ~ScopedDesktop();

 private:
  Desktop* before_;
};

}  // namespace lorv
