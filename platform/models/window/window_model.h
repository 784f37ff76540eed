#pragma once

#include <array>
#include <atomic>
#include <memory>
#include <vector>

#include "framework/drawing/geometry.h"
#include "framework/ports/window_port.h"
#include "platform/models/window/paint_state.h"
#include "platform/models/window/scroll_model.h"

namespace lorv {

class DesktopModel;
class FirstFault;

// The behaviour of a window for peers whose system has no such windows: which messages it gets when it is
// shown, enabled, moved, focused, scrolled and destroyed, in which order, and what it does with a message by
// default. A peer derives from it, shows the state, and answers for place, painting and timers.
//
// Calls out (DeliverMessage) may destroy the window or throw: the state is changed before each call.
// Threads: as WindowPeer says; Exists is for any thread.
class COMM_LORV_API WindowModel : public WindowPeer, public std::enable_shared_from_this<WindowModel> {
 public:
  WindowModel(DesktopModel& desktop, HWND handle, const WindowRequest& request);

  HWND Handle() const { return handle_; }
  bool Seen() const;     // it and all around it are visible
  bool Blocked() const;  // it or one around it is disabled
  bool Ending() const { return ending_; }
  // Whether it has something to paint.
  bool Dirty() const { return paint_.WantsPaint(); }
  // Who had the focus in this top-level window when it was last active.
  HWND LastFocus() const { return last_focus_; }
  // The window stands on a screen of so many dots per inch: if it stood on another one before, all of it is
  // out of date, and a top-level window gets by WM_DPICHANGED which place keeps its size to the eye.
  void ReportDpi(int dpi);
  // The mouse went elsewhere: WM_MOUSELEAVE if it was asked for.
  void MouseGone();

  bool Exists() const override { return alive_; }
  void Destroy() override;
  WindowKind Kind() const override { return kind_; }
  CString ClassName() const override { return alive_ ? class_name_ : CString(); }
  HWND Parent() const override { return alive_ ? parent_ : nullptr; }
  HWND Owner() const override { return alive_ ? owner_ : nullptr; }
  std::vector<HWND> Children() const override { return children_; }
  UINT Id() const override { return id_; }
  void SetId(UINT id) override { id_ = id; }
  DWORD Style() const override { return style_; }
  void SetStyle(DWORD style) override;
  DWORD ExStyle() const override { return ex_style_; }
  void SetExStyle(DWORD style) override;
  void Show(int how) override;
  void Enable(bool on) override;
  void Focus() override;
  void Activate() override;
  CString Text() const override { return text_; }
  void Invalidate(const RECT* rect) override;
  void Validate(const RECT* rect) override { paint_.Validate(rect); }
  std::vector<RECT> UpdateRects() const override {
    return {paint_.Pending().Rects().begin(), paint_.Pending().Rects().end()};
  }
  void Shift(SIZE by, const RECT* area, const RECT* clip, bool children) override;
  void Update() override;
  void SetText(const CString& text) override;
  void SetFont(const LOGFONT& font) override;
  LOGFONT Font() const override { return font_; }
  void SetScroll(int bar, const SCROLLINFO& info) override;
  SCROLLINFO Scroll(int bar) const override { return Bar(bar).Info(); }
  void ShowScroll(int bar, bool on) override;
  void TrackLeave() override { leave_ = true; }
  int Dpi() const override { return alive_ ? dpi_.load() : kUsualDpi; }
  Composition CompositionNow() const override { return composition_; }
  void SetCompositionCaret(const RECT& caret) override;
  RECT CompositionCaret() const { return composition_caret_; }
  void EnableComposition(bool on) override;
  bool TakesComposition() const { return composes_; }
  LRESULT Default(UINT message, WPARAM w, LPARAM l) override;

  // The user at a scroll bar of the window: SB_LINEDOWN and its like move by the window class, SB_THUMBTRACK
  // and SB_THUMBPOSITION carry a position, of which a message has 16 bits and Scroll().nTrackPos all.
  // SB_ENDSCROLL follows by the peer.
  void ScrollByUser(int bar, int code, int position);

 protected:
  friend class DesktopModel;

  // What a peer does to show a change. Called after the state changed and before the window is notified,
  // except where said otherwise; nothing in them calls out.
  virtual void StyleChanged(DWORD /*before*/) {}
  virtual void VisibleChanged(int /*how*/) {}
  virtual void EnabledChanged() {}
  virtual void TextChanged() {}
  virtual void FontChanged() {}
  virtual void ScrollChanged() {}
  virtual void CompositionCaretChanged() {}
  virtual void DpiChanged() {}
  virtual void Ended() {}  // the last call
  virtual void PaintDefault() = 0;
  virtual void AskToPaint();
  // Something is to be painted when other messages are done.
  virtual void PaintWanted() {}
  virtual void Invalidated() {}
  virtual void RedrawChanged(bool /*on*/) {}
  // What was drawn is to be seen.
  virtual void PictureChanged() {}
  // Moves what is drawn to the target. False: it cannot be moved.
  virtual bool ShiftPicture(const CRect& target, SIZE by) = 0;
  // Measures the window as it stands now and reports what changed by ReportPlace.
  virtual void PlaceChanged() = 0;

  // WM_MOVE and WM_SIZE, if the place or the size is not the one last reported. Not while it is made.
  void ReportPlace(CPoint at);
  void RememberPlace(CPoint at);
  // WM_COMMAND to the parent, or to the owner. The window may be gone afterwards.
  void Notify(UINT code);
  void ReportReaders(UINT code);
  // All of it is out of date, but for what the system shows itself.
  void WantPaint();
  // What is out of date, which counts as painted from here on.
  Region TakeDirty() { return paint_.Take(); }
  void KeepText(const CString& text) { text_ = text; }
  DWORD Look() const { return style_; }
  void SetLook(DWORD style) { style_ = style; }
  DesktopModel& Desk() const { return desktop_; }
  std::shared_ptr<WindowModel> ParentModel() const;
  ScrollModel& Bar(int bar) { return bars_[bar == SB_VERT ? 1U : 0U]; }
  const ScrollModel& Bar(int bar) const { return bars_[bar == SB_VERT ? 1U : 0U]; }

 private:
  void SetRedraw(bool on);
  void ShiftChildren(SIZE by, const CRect& area);
  void EndOwned(FirstFault& fault);
  void SendDestroy(FirstFault& fault);
  void End(FirstFault& fault);
  void LoseFocusWithin();
  LRESULT TextMessage(UINT message, WPARAM w, LPARAM l);
  LRESULT ActivateMessage(WPARAM w);
  LRESULT ContextMessage(LPARAM l);
  LRESULT CursorMessage(UINT message, WPARAM w, LPARAM l);
  LRESULT CompositionMessage(LPARAM l);

  DesktopModel& desktop_;
  const HWND handle_;
  const WindowKind kind_;
  const CString class_name_;
  CString text_;
  DWORD style_;
  DWORD ex_style_;
  HWND parent_ = nullptr;
  HWND owner_ = nullptr;
  HWND last_focus_ = nullptr;
  std::vector<HWND> children_;
  UINT id_;
  LOGFONT font_ = {};
  PaintState paint_;
  std::atomic<int> dpi_;
  std::array<ScrollModel, 2> bars_;  // across, down
  Composition composition_;
  CRect composition_caret_;
  bool composes_ = true;
  CPoint reported_at_;
  CRect reported_client_;
  bool leave_ = false;
  bool ending_ = false;
  std::atomic<bool> alive_{true};
};

}  // namespace lorv
