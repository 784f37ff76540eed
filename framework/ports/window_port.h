#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "framework/native/window_types.h"
#include "framework/ports/canvas_port.h"
#include "framework/text/cstring.h"

// One window as a peer implements it; CWnd is built on it.
//
// Messages go both ways by number. What happens to the window the peer reports by lorv::DeliverMessage
//   (framework/ports/window_map.h), which runs the window class; what the class leaves to the system comes
//   back as Default. The peer keeps no pointer to the class: a handle that names nothing is answered 0.
// Units: pixels of the window's own screen. A child is placed in its parent's client area, all others on the
//   screen.
// Edges: a call out may destroy the window, its parent or its children; every peer looks again after each.
//   The peer's object stays as long as somebody holds it. When its window is gone it does nothing and answers
//   null, false, empty rectangles and texts.
// Threads: that of the user interface. Exists, ClientRect and ClientCanvas are for any thread, and so is the
//   end of the object.
//
// Input methods: a composition arrives as WM_IME_STARTCOMPOSITION, WM_IME_COMPOSITION (its text by
//   CompositionNow) and WM_IME_ENDCOMPOSITION; what is committed comes as WM_CHAR where the class leaves the
//   message to Default. A key that an input method took is WM_KEYDOWN with VK_PROCESSKEY and is never sent as
//   the key itself. A class that opens an edit inside WM_IME_STARTCOMPOSITION and gives it the focus has the
//   composition go on there.
namespace lorv {

enum class WindowKind : int {
  Custom,  // draws itself: grids, tips' contents, bars
  Top,     // a window with a frame and a caption
  Dialog,  // the same for dialogs; its class name is "#32770"
  Popup,   // no frame, above the others, takes no activation: tips, lists
  Edit,
  Combo,
  List,
  Button,
  Static
};

// What is asked for when a window is made.
struct WindowRequest {
  WindowKind kind = WindowKind::Custom;
  CString class_name;  // of Custom and Top windows, by which others look windows up; empty: the peer's own
  CString text;
  DWORD style = 0;
  DWORD ex_style = 0;
  RECT place = {0, 0, 0, 0};
  HWND parent = nullptr;  // of a child; the owner of other windows
  UINT id = 0;            // of a child
  void* parameter = nullptr;
  // Called with the handle before the first message, so that none is lost. Never empty.
  std::function<void(HWND)> attach;
};

// What an input method is composing in a window.
struct Composition {
  CString text;       // on display, not committed
  int caret = 0;      // in it
  CString committed;  // by the WM_IME_COMPOSITION that is being handled
};

class COMM_LORV_API WindowPeer {
 public:
  WindowPeer() = default;
  WindowPeer(const WindowPeer&) = delete;
  WindowPeer& operator=(const WindowPeer&) = delete;
  virtual ~WindowPeer() = default;

  virtual bool Exists() const = 0;
  // Sends WM_DESTROY to the window, then to its children, then WM_NCDESTROY from the inside out. Owned
  // windows go first. Legal inside every handler, the window's own too; a second call does nothing.
  virtual void Destroy() = 0;

  virtual WindowKind Kind() const = 0;
  virtual CString ClassName() const = 0;  // "Edit", "ComboBox", "ListBox", "Button", "Static", "#32770", ...
  virtual HWND Parent() const = 0;        // null for a window that is no child
  virtual HWND Owner() const = 0;         // null for a child
  virtual std::vector<HWND> Children() const = 0;  // in the order in which Tab visits them
  virtual UINT Id() const = 0;
  virtual void SetId(UINT id) = 0;
  virtual DWORD Style() const = 0;  // WS_VISIBLE, WS_DISABLED, WS_VSCROLL, WS_HSCROLL as they are now
  virtual void SetStyle(DWORD style) = 0;
  virtual DWORD ExStyle() const = 0;
  virtual void SetExStyle(DWORD style) = 0;

  // WM_MOVE and WM_SIZE follow if anything changed.
  virtual void Place(const RECT& place) = 0;
  virtual void Raise() = 0;                       // above its siblings
  virtual RECT WindowRect() const = 0;            // on the screen, with frame and bars
  virtual RECT ClientRect() const = 0;            // left and top are 0
  virtual POINT ClientOrigin() const = 0;         // on the screen
  virtual SIZE FrameSize(SIZE client) const = 0;  // the window's size for that client area

  virtual void Show(int how) = 0;  // SW_...; WM_SHOWWINDOW if it changed
  virtual void Enable(bool on) = 0;
  virtual void Focus() = 0;     // WM_KILLFOCUS to the former, WM_SETFOCUS to this one
  virtual void Activate() = 0;  // its top-level window becomes the active one

  // What is seen is out of date: all of it, or the rectangle. WM_PAINT comes when the queue is empty, or
  // by Update at once. A region is valid again when PaintCanvas was asked for it or Default had WM_PAINT.
  // What is asked for while WM_PAINT is handled is painted by another one. With WM_SETREDRAW turned off
  // nothing is painted, and what was asked for meanwhile waits until it is on again.
  virtual void Invalidate(const RECT* rect) = 0;
  // Takes back what was asked for, of all or of the rectangle.
  virtual void Validate(const RECT* rect) = 0;
  // What is out of date now: rectangles that do not overlap.
  virtual std::vector<RECT> UpdateRects() const = 0;
  virtual void Update() = 0;
  // Within WM_PAINT: the canvas, clipped to what is out of date, which goes to `dirty`.
  virtual std::unique_ptr<Canvas> PaintCanvas(RECT& dirty) = 0;
  virtual std::unique_ptr<Canvas> ClientCanvas() = 0;  // at any time, never null
  // Moves what the window shows in `area` (null: all of it) by that much, nothing of it out of `clip`. What
  // was out of date in there moves along; what comes in is out of date. `children`: those in the area move,
  // too.
  virtual void Shift(SIZE by, const RECT* area, const RECT* clip, bool children) = 0;

  virtual CString Text() const = 0;  // line ends are CR LF
  virtual void SetText(const CString& text) = 0;
  virtual void SetFont(const LOGFONT& font) = 0;
  virtual LOGFONT Font() const = 0;

  // `bar` is SB_HORZ or SB_VERT; cbSize is not looked at. The position is brought into the range, the last
  // one being max - page + 1. A range that fits into the page hides the bar unless SIF_DISABLENOSCROLL.
  virtual void SetScroll(int bar, const SCROLLINFO& info) = 0;
  virtual SCROLLINFO Scroll(int bar) const = 0;  // all fields
  virtual void ShowScroll(int bar, bool on) = 0;

  // WM_TIMER with that id each `milliseconds` while messages are dispatched; set again, it starts anew.
  virtual void SetTimer(UINT_PTR id, UINT milliseconds) = 0;
  virtual bool KillTimer(UINT_PTR id) = 0;
  // WM_MOUSELEAVE once when the mouse goes; asked for anew each time.
  virtual void TrackLeave() = 0;

  // What the system's own window of this kind does with the message: editing, lists, the answers of EM_, CB_,
  // LB_, BM_, WM_SETTEXT, WM_GETTEXT, WM_CLOSE (destroys), painting. Notifications go to the parent as
  // WM_COMMAND.
  virtual LRESULT Default(UINT message, WPARAM w, LPARAM l) = 0;

  // Drops come to the receiver that is mapped to the window (framework/ports/drop_port.h), or no more. False
  // where the system refuses it.
  virtual bool AcceptDrops(bool /*on*/) { return Exists(); }

  // What the input method composes, while the WM_IME messages are handled; else empty.
  virtual Composition CompositionNow() const { return {}; }
  // Where the input method shows its candidates: below that rectangle of the client area, the caret's.
  virtual void SetCompositionCaret(const RECT& /*caret*/) {}
  // Whether keys in the window go through the input method, as they do at first. One that composes goes on.
  virtual void EnableComposition(bool /*on*/) {}

  // A window that the framework did not make: from now on its messages go to the window class that is mapped
  // to it, and Default is what its own procedure does. False where the system does not allow it: a window of
  // another program or thread. Windows that the framework made are so from the beginning.
  virtual bool TakeOver() { return Exists(); }
  // Back to what it was before TakeOver.
  virtual void GiveBack() {}

  // Dots per inch of its screen: 96 for the usual one. When that changes WM_DPICHANGED comes with the new
  // number in both words and the rectangle that the window should take.
  virtual int Dpi() const = 0;

  // What the window shows now with all that stands in it, its frame only where the system draws that as a
  // part of the window; pixels as Canvas::Pixels gives them, row by row. Empty where nothing is shown.
  virtual std::vector<DWORD> Picture(SIZE& size) {
    size = {0, 0};
    return {};
  }
};

}  // namespace lorv
