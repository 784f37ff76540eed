#pragma once

#include <array>
#include <atomic>
#include <map>
#include <memory>
#include <mutex>
#include <vector>

#include "framework/drawing/geometry.h"
#include "framework/ports/window_port.h"
#include "platform/headless/drawing/headless_canvas.h"

namespace lorv {

class HeadlessDesktop;

// A window in memory. Its frame: 4 pixels around and 24 for a caption if it has one, 1 pixel with WS_BORDER
// or WS_EX_CLIENTEDGE; bars are 16 wide.
class HeadlessWindow : public WindowPeer, public std::enable_shared_from_this<HeadlessWindow> {
 public:
  HeadlessWindow(HeadlessDesktop& desktop, HWND handle, const WindowRequest& request);

  HWND Handle() const { return handle_; }
  CRect Placed() const { return place_; }
  CRect Dirty() const { return dirty_; }
  const std::shared_ptr<HeadlessSurface>& Surface() const { return surface_; }
  bool Seen() const;  // it and all around it are visible
  std::map<UINT_PTR, UINT>& Timers() { return timers_; }
  bool TakeLeave() { return std::exchange(leave_, false); }
  HWND last_focus = nullptr;  // of a top window: who had the focus in it

  bool Exists() const override { return alive_; }
  void Destroy() override;
  WindowKind Kind() const override { return kind_; }
  CString ClassName() const override { return class_name_; }
  HWND Parent() const override { return parent_; }
  HWND Owner() const override { return owner_; }
  std::vector<HWND> Children() const override { return children_; }
  UINT Id() const override { return id_; }
  void SetId(UINT id) override { id_ = id; }
  DWORD Style() const override { return style_; }
  void SetStyle(DWORD style) override;
  DWORD ExStyle() const override { return ex_style_; }
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
  void Update() override;
  std::unique_ptr<Canvas> PaintCanvas(RECT& dirty) override;
  std::unique_ptr<Canvas> ClientCanvas() override;
  CString Text() const override { return text_; }
  void SetText(const CString& text) override;
  void SetFont(const LOGFONT& font) override { font_ = font; }
  LOGFONT Font() const override { return font_; }
  void SetScroll(int bar, const SCROLLINFO& info) override;
  SCROLLINFO Scroll(int bar) const override { return scroll_[bar == SB_VERT]; }
  void ShowScroll(int bar, bool on) override;
  void SetTimer(UINT_PTR id, UINT milliseconds) override;
  bool KillTimer(UINT_PTR id) override;
  void TrackLeave() override { leave_ = true; }
  LRESULT Default(UINT message, WPARAM w, LPARAM l) override;
  int Dpi() const override { return 96; }

 protected:
  // WM_COMMAND to the parent. The window may be gone afterwards.
  void Notify(UINT code);
  // What a control shows of itself; here nothing.
  virtual void PaintSelf(Canvas& /*canvas*/) {}
  void KeepText(const CString& text) { text_ = text; }
  HeadlessDesktop& Home() const { return desktop_; }
  DWORD Look() const { return style_; }
  void SetLook(DWORD style) { SetStyle(style); }

 private:
  friend class HeadlessDesktop;
  struct Edges {
    int side;
    int top;
  };
  Edges Frame() const;
  void Measure();
  void SayMoved(const CRect& before, const CRect& client_before);
  void TellOfEnd();
  void End();
  void LoseFocusWithin();
  LRESULT TextMessage(UINT message, WPARAM w, LPARAM l);
  LRESULT ActivateMessage(WPARAM w);

  HeadlessDesktop& desktop_;
  const HWND handle_;
  const WindowKind kind_;
  CString class_name_;
  CString text_;
  DWORD style_;
  DWORD ex_style_;
  CRect place_;
  HWND parent_ = nullptr;
  HWND owner_ = nullptr;
  std::vector<HWND> children_;
  UINT id_;
  LOGFONT font_ = {};
  std::array<SCROLLINFO, 2> scroll_ = {};
  std::map<UINT_PTR, UINT> timers_;  // id to period
  CRect dirty_;
  bool leave_ = false;
  bool ending_ = false;
  std::atomic<bool> alive_{true};
  mutable std::mutex mutex_;  // over client_, which any thread asks for
  CSize client_;
  std::shared_ptr<HeadlessSurface> surface_;
};

}  // namespace lorv
