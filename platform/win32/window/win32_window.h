#pragma once

#include <atomic>
#include <memory>
#include <vector>

#include "framework/drawing/region.h"
#include "framework/ports/window_port.h"
#include "platform/models/controls/unit_pairs.h"
#include "platform/win32/drawing/gdi_font.h"

namespace lorv {

// A window of the system. Those that the framework made are subclassed: every message goes to the window
// class, and what the class leaves comes back as Default, to the procedure that the system gave the window.
// For windows of others, which Find answers for too, Default sends the message there.
//
// The system hands handles out again, so an object answers for its window only until WM_NCDESTROY.
class Win32Window : public WindowPeer, public std::enable_shared_from_this<Win32Window> {
 public:
  // A window that is being made; it lives from the moment its handle is known.
  explicit Win32Window(const WindowRequest& request);
  // Somebody else's window.
  explicit Win32Window(HWND window);
  // One that the system made inside a control of ours, to be given to Begin.
  explicit Win32Window(WindowKind kind) : phase_(Phase::kLiving), kind_(kind) {}

  // For the window procedure.
  void Begin(HWND window, WNDPROC original);
  LRESULT Receive(UINT message, WPARAM w, LPARAM l);
  void Finish();  // after the making: what the system's controls lack

  bool Exists() const override;
  void Destroy() override;
  WindowKind Kind() const override { return kind_; }
  CString ClassName() const override;
  HWND Parent() const override;
  HWND Owner() const override;
  std::vector<HWND> Children() const override;
  UINT Id() const override;
  void SetId(UINT id) override;
  DWORD Style() const override;
  void SetStyle(DWORD style) override;
  DWORD ExStyle() const override;
  void SetExStyle(DWORD style) override;

  void Place(const RECT& place) override;
  void Raise() override;
  RECT WindowRect() const override;
  RECT ClientRect() const override;
  POINT ClientOrigin() const override;
  SIZE FrameSize(SIZE client) const override;

  void Show(int how) override;
  void Enable(bool on) override;
  void Focus() override;
  void Activate() override;

  void Invalidate(const RECT* rect) override;
  void Validate(const RECT* rect) override;
  std::vector<RECT> UpdateRects() const override;
  void Shift(SIZE by, const RECT* area, const RECT* clip, bool children) override;
  void Update() override;
  std::unique_ptr<Canvas> PaintCanvas(RECT& dirty) override;
  std::unique_ptr<Canvas> ClientCanvas() override;

  CString Text() const override;
  void SetText(const CString& text) override;
  void SetFont(const LOGFONTW& font) override;
  LOGFONTW Font() const override;

  void SetScroll(int bar, const SCROLLINFO& info) override;
  SCROLLINFO Scroll(int bar) const override;
  void ShowScroll(int bar, bool on) override;

  void SetTimer(UINT_PTR id, UINT milliseconds) override;
  bool KillTimer(UINT_PTR id) override;
  void TrackLeave() override;

  LRESULT Default(UINT message, WPARAM w, LPARAM l) override;
  Composition CompositionNow() const override;
  void SetCompositionCaret(const RECT& caret) override;
  void EnableComposition(bool on) override;
  bool TakeOver() override;
  void GiveBack() override;
  int Dpi() const override;
  bool AcceptDrops(bool on) override;
  std::vector<DWORD> Picture(SIZE& size) override;

  // The height to ask the system for: that of a combo is the height of its opened list.
  int HeightToAsk(int height) const;

 private:
  enum class Phase { kMaking, kLiving, kGone };

  LRESULT Created(WPARAM w, LPARAM l);
  LRESULT Ended(WPARAM w, LPARAM l);
  LRESULT Painted(WPARAM w, LPARAM l);
  LRESULT Deliver(UINT message, WPARAM w, LPARAM l);
  bool DrawsItself() const;
  void EndDrops();
  void NoteComposition(UINT message) const;
  void CancelComposition() const;
  bool RefusesHalf(WPARAM unit);
  void SetRedraw(bool on);
  Region Outdated() const;

  std::atomic<HWND> handle_{nullptr};
  std::atomic<Phase> phase_{Phase::kMaking};
  bool ours_ = true;         // its messages come to Receive; false: somebody else's window
  bool taken_over_ = false;  // made by somebody else
  WindowKind kind_;
  DWORD added_style_ = 0;  // added by us, not asked for
  WNDPROC original_ = nullptr;
  const WindowRequest* request_ = nullptr;  // while it is being made
  bool destroying_ = false;                 // its end is under way, and not to be asked for again
  bool drops_ = false;                      // it is registered with the system for drops
  bool redraw_ = true;                      // as WM_SETREDRAW said last
  int painting_ = 0;                        // its WM_PAINT under way, one within the other
  Region held_;                             // invalidated while WM_SETREDRAW is off
  bool saw_the_end_ = false;                // its own procedure has had WM_NCDESTROY
  TypedHalves halves_;                      // of characters that are typed into an edit
  std::shared_ptr<const GdiFont> font_;
  HFONT font_handle_ = nullptr;  // of a window that draws itself, for WM_GETFONT
};

// The bits of a style that the system needs for a window of that kind, beside those asked for.
DWORD AddedStyle(WindowKind kind, DWORD style);

}  // namespace lorv
