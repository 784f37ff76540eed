#pragma once

#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "framework/drawing/drawing_tools.h"
#include "framework/drawing/geometry.h"
#include "framework/drawing/region.h"
#include "framework/text/cstring.h"

class CWnd;

namespace lorv {
struct PlacedLine;
}

// What is drawn with, over a canvas, with the framework's operations and names.
//
// Units: logical pixels; a point p is drawn at p - window origin + viewport origin.
// Edges: a context without a surface measures everything as 0 and draws nothing. SelectObject gives the
//   object selected before, never null.
// The context owns its way to the surface, not the tools; it may be used by any one thread at a time, and it
//   may outlive its window.
//
//   CClientDC dc(&window);  dc.DrawText(_T("梁"), CRect(0, 0, 90, 20), DT_CENTER | DT_VCENTER |
//   DT_SINGLELINE);
class COMM_LORV_API CDC : public CObject {
 public:
  CDC() = default;
  explicit CDC(std::shared_ptr<lorv::Canvas> surface) : surface_(std::move(surface)) {}
  CDC(const CDC&) = delete;
  CDC& operator=(const CDC&) = delete;

  // A context in memory; draws on the bitmap that is selected into it.
  BOOL CreateCompatibleDC(CDC* like);
  BOOL DeleteDC();
  // The canvas, with the selected font.
  lorv::Canvas& Surface() const;

  CPen* SelectObject(CPen* pen);
  CBrush* SelectObject(CBrush* brush);
  CFont* SelectObject(CFont* font);
  CBitmap* SelectObject(CBitmap* bitmap);
  // WHITE_BRUSH, BLACK_BRUSH, NULL_BRUSH, WHITE_PEN, BLACK_PEN, NULL_PEN, DEFAULT_GUI_FONT.
  CObject* SelectStockObject(int index);
  int SaveDC();
  BOOL RestoreDC(int saved);  // -1: the last one

  COLORREF SetTextColor(COLORREF colour) { return std::exchange(state_.text, colour); }
  COLORREF GetTextColor() const { return state_.text; }
  COLORREF SetBkColor(COLORREF colour) { return std::exchange(state_.back, colour); }
  COLORREF GetBkColor() const { return state_.back; }
  int SetBkMode(int mode) { return std::exchange(state_.back_mode, mode); }
  int GetBkMode() const { return state_.back_mode; }
  UINT SetTextAlign(UINT align) { return std::exchange(state_.align, align); }
  int GetDeviceCaps(int index) const;
  virtual BOOL IsPrinting() const { return FALSE; }

  CPoint SetWindowOrg(int x, int y);
  CPoint SetWindowOrg(POINT origin) { return SetWindowOrg(origin.x, origin.y); }
  CPoint GetWindowOrg() const { return state_.window; }
  CPoint SetViewportOrg(int x, int y);
  CPoint SetViewportOrg(POINT origin) { return SetViewportOrg(origin.x, origin.y); }
  CPoint GetViewportOrg() const { return state_.viewport; }
  CPoint OffsetViewportOrg(int x, int y);

  // The clip is one rectangle; IntersectClipRect narrows it, SelectClipRgn(nullptr) takes it away. Within
  // WM_PAINT the clip box lies within what is out of date.
  int IntersectClipRect(LPCRECT rect);
  int IntersectClipRect(int left, int top, int right, int bottom);
  int SelectClipRgn(void* always_null);
  int GetClipBox(LPRECT rect) const;
  BOOL RectVisible(LPCRECT rect) const;

  void FillSolidRect(LPCRECT rect, COLORREF colour);  // sets the background colour, too
  void FillSolidRect(int x, int y, int width, int height, COLORREF colour);
  void FillRect(LPCRECT rect, CBrush* brush);
  void FrameRect(LPCRECT rect, CBrush* brush);
  void Draw3dRect(LPCRECT rect, COLORREF top_left, COLORREF bottom_right);
  void GradientRect(LPCRECT rect, COLORREF first, COLORREF last, BOOL downwards);
  void InvertRect(LPCRECT rect);
  void DrawFocusRect(LPCRECT rect);  // drawn twice, it is gone
  CPoint MoveTo(int x, int y);
  CPoint MoveTo(POINT to) { return MoveTo(to.x, to.y); }
  BOOL LineTo(int x, int y);
  BOOL LineTo(POINT to) { return LineTo(to.x, to.y); }
  BOOL Polyline(const POINT* points, int count);
  BOOL Polygon(const POINT* points, int count);
  BOOL Rectangle(LPCRECT rect);
  BOOL Rectangle(int left, int top, int right, int bottom) {
    return Rectangle(CRect(left, top, right, bottom));
  }
  COLORREF SetPixel(int x, int y, COLORREF colour);

  BOOL TextOut(int x, int y, const CString& text);
  BOOL ExtTextOut(int x, int y, UINT options, LPCRECT rect, const CString& text, int* always_null);
  // The text's height; with DT_CALCRECT the rectangle takes the text's size and nothing is drawn.
  int DrawText(const CString& text, LPRECT rect, UINT flags);
  int DrawText(const CString& text, const CRect& rect, UINT flags);
  CSize GetTextExtent(const CString& text) const;
  CSize GetOutputTextExtent(const CString& text) const { return GetTextExtent(text); }
  BOOL GetTextMetrics(TEXTMETRIC* metrics) const;
  CFont* GetCurrentFont() const;

  // SRCCOPY copies; DSTINVERT turns the colours over; no other way is offered.
  BOOL BitBlt(int x, int y, int width, int height, CDC* from, int from_x, int from_y, DWORD way);
  void DrawImage(const lorv::PixelImage& image, LPCRECT rect);

 protected:
  void SetSurface(std::shared_ptr<lorv::Canvas> surface);
  // What is drawn outside the rectangle (device pixels) cannot be seen.
  void SetLimit(const RECT& limit) { limit_ = limit; }

 private:
  struct State {
    lorv::Stroke stroke;
    bool filled = true;
    COLORREF brush = RGB(255, 255, 255);
    LOGFONT face = {};
    bool own_face = false;
    COLORREF text = 0;
    COLORREF back = RGB(255, 255, 255);
    int back_mode = OPAQUE;
    UINT align = TA_LEFT | TA_TOP;
    CPoint window;
    CPoint viewport;
    CPoint pen_at;
    bool clipped = false;
    CRect clip;  // device pixels
    CPen* pen_object = nullptr;
    CBrush* brush_object = nullptr;
    CFont* font_object = nullptr;
  };

  CPoint Device(POINT logical) const { return CPoint(logical) + (state_.viewport - state_.window); }
  CRect Device(LPCRECT logical) const { return CRect(logical) + (state_.viewport - state_.window); }
  std::vector<POINT> Device(const POINT* points, int count) const;
  void Background(LPCRECT device);
  // `within`: nothing is drawn beside it; null: no such limit.
  void PutLine(CPoint at, lorv::TextView text, const CRect* within);
  void PutMark(const lorv::PlacedLine& line, const CRect* within);
  // A single line that needs no layout, with its size: where DrawText would place it.
  static bool IsPlain(lorv::TextView text, UINT flags);
  int PutPlain(lorv::TextView text, const CRect& box, CSize size, UINT flags);
  void UseFace() const;
  void UseClip();

  std::shared_ptr<lorv::Canvas> surface_;
  State state_;
  std::optional<CRect> limit_;
  std::vector<State> saved_;
  CBitmap* bitmap_ = nullptr;
  // The surface gets a font when it is asked for something: cells select one and give it back.
  mutable bool face_stale_ = false;
  mutable std::optional<LOGFONT> face_sent_;
};

// Within WM_PAINT: what is out of date counts as painted from here on.
class COMM_LORV_API CPaintDC : public CDC {
 public:
  explicit CPaintDC(CWnd* window);
  PAINTSTRUCT m_ps = {};
  // What is out of date, part by part; m_ps.rcPaint encloses it. RectVisible asks it for a rectangle.
  const lorv::Region& Dirty() const { return dirty_; }

 private:
  lorv::Region dirty_;
};

// A page of paper: its dots per inch and its size are those of the printer.
class COMM_LORV_API CPrintDC : public CDC {
 public:
  explicit CPrintDC(std::shared_ptr<lorv::Canvas> page) : CDC(std::move(page)) {}
  BOOL IsPrinting() const override { return TRUE; }
};

// At any time, from any thread.
class COMM_LORV_API CClientDC : public CDC {
 public:
  explicit CClientDC(CWnd* window);
};
