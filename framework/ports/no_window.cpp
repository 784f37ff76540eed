#include "framework/ports/no_window.h"

// The window and the canvas that stand for those that are not there (null objects). Window classes ask
// through them without a check at each call: everything has the size 0, changes nothing and answers no.

namespace lorv {
namespace {

class EmptyCanvas : public Canvas {
 public:
  SIZE Size() const override { return {0, 0}; }
  void Fill(const RECT& /*rect*/, COLORREF /*colour*/) override {}
  void Gradient(const RECT& /*rect*/, COLORREF /*first*/, COLORREF /*last*/, bool /*downwards*/) override {}
  void Frame(const RECT& /*rect*/, COLORREF /*colour*/, int /*width*/) override {}
  void Line(POINT /*from*/, POINT /*to*/, const Stroke& /*stroke*/) override {}
  void Polygon(const std::vector<POINT>& /*corners*/, const Stroke* /*edge*/,
               const COLORREF* /*inside*/) override {}
  void Invert(const RECT& /*rect*/) override {}
  void SetFont(const LOGFONT& /*font*/) override {}
  TEXTMETRIC Metrics() const override { return {}; }
  SIZE Extent(TextView /*text*/) const override { return {0, 0}; }
  void Text(POINT /*at*/, TextView /*text*/, COLORREF /*colour*/) override {}
  void ClippedText(POINT /*at*/, TextView /*text*/, COLORREF /*colour*/, const RECT& /*within*/) override {}
  void SetClip(const RECT* /*clip*/) override {}
  bool Shows(const RECT& /*rect*/) const override { return false; }
  void Copy(const RECT& /*to*/, Canvas& /*from*/, POINT /*from_at*/) override {}
  void Image(const PixelImage& /*image*/, const RECT& /*to*/) override {}
  std::vector<DWORD> Pixels(const RECT& /*rect*/) const override { return {}; }
};

class EmptyWindow : public WindowPeer {
 public:
  bool Exists() const override { return false; }
  void Destroy() override {}
  WindowKind Kind() const override { return WindowKind::Custom; }
  CString ClassName() const override { return {}; }
  HWND Parent() const override { return nullptr; }
  HWND Owner() const override { return nullptr; }
  std::vector<HWND> Children() const override { return {}; }
  UINT Id() const override { return 0; }
  void SetId(UINT /*id*/) override {}
  DWORD Style() const override { return 0; }
  void SetStyle(DWORD /*style*/) override {}
  DWORD ExStyle() const override { return 0; }
  void SetExStyle(DWORD /*style*/) override {}
  void Place(const RECT& /*place*/) override {}
  void Raise() override {}
  RECT WindowRect() const override { return {0, 0, 0, 0}; }
  RECT ClientRect() const override { return {0, 0, 0, 0}; }
  POINT ClientOrigin() const override { return {0, 0}; }
  // Without a frame, so that sums of the caller stay what they are.
  SIZE FrameSize(SIZE client) const override { return client; }
  void Show(int /*how*/) override {}
  void Enable(bool /*on*/) override {}
  void Focus() override {}
  void Activate() override {}
  void Invalidate(const RECT* /*rect*/) override {}
  void Validate(const RECT* /*rect*/) override {}
  std::vector<RECT> UpdateRects() const override { return {}; }
  void Shift(SIZE /*by*/, const RECT* /*area*/, const RECT* /*clip*/, bool /*children*/) override {}
  void Update() override {}
  std::unique_ptr<Canvas> PaintCanvas(RECT& dirty) override {
    dirty = {0, 0, 0, 0};
    return NoCanvas();
  }
  std::unique_ptr<Canvas> ClientCanvas() override { return NoCanvas(); }
  CString Text() const override { return {}; }
  void SetText(const CString& /*text*/) override {}
  void SetFont(const LOGFONT& /*font*/) override {}
  LOGFONT Font() const override { return {}; }
  void SetScroll(int /*bar*/, const SCROLLINFO& /*info*/) override {}
  SCROLLINFO Scroll(int /*bar*/) const override { return {}; }
  void ShowScroll(int /*bar*/, bool /*on*/) override {}
  void SetTimer(UINT_PTR /*id*/, UINT /*milliseconds*/) override {}
  bool KillTimer(UINT_PTR /*id*/) override { return false; }
  void TrackLeave() override {}
  LRESULT Default(UINT /*message*/, WPARAM /*w*/, LPARAM /*l*/) override { return 0; }
  // Not 0, as callers divide by it.
  int Dpi() const override { return 96; }
};

}  // namespace

std::unique_ptr<Canvas> NoCanvas() {
  return std::make_unique<EmptyCanvas>();
}

std::shared_ptr<WindowPeer> NoWindow() {
  // One for all: it has no state.
  static const std::shared_ptr<WindowPeer> none = std::make_shared<EmptyWindow>();
  return none;
}

}  // namespace lorv
