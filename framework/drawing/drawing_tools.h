#pragma once

#include <memory>

#include "framework/drawing/geometry.h"
#include "framework/objects/object.h"
#include "framework/ports/canvas_port.h"

class CDC;

// Pens, brushes, fonts and bitmaps, with the framework's operations and names. Each is a value: a device
// context that has it selected keeps what it was then, so it may be changed or end while selected.
//
// Edges: one that was not made yet (or was deleted) draws nothing; a font is then that of dialogs.
// An object belongs to one thread at a time.

class COMM_LORV_API CPen : public CObject {
 public:
  CPen() = default;
  CPen(int style, int width, COLORREF colour) { CreatePen(style, width, colour); }
  BOOL CreatePen(int style, int width, COLORREF colour);
  BOOL DeleteObject();
  const lorv::Stroke& Stroke() const { return stroke_; }

 private:
  lorv::Stroke stroke_{0, 1, PS_NULL};
};

class COMM_LORV_API CBrush : public CObject {
 public:
  CBrush() = default;
  explicit CBrush(COLORREF colour) { CreateSolidBrush(colour); }
  BOOL CreateSolidBrush(COLORREF colour);
  BOOL DeleteObject();
  bool IsSolid() const { return solid_; }
  COLORREF Colour() const { return colour_; }

 private:
  bool solid_ = false;
  COLORREF colour_ = 0;
};

class COMM_LORV_API CFont : public CObject {
 public:
  CFont() = default;
  explicit CFont(const LOGFONT& face) : face_(face) {}
  BOOL CreateFontIndirect(const LOGFONT* face);
  // In tenths of a point at 96 dots per inch, or of the device context.
  BOOL CreatePointFont(int tenths, LPCTSTR face, CDC* dc = nullptr);
  int GetLogFont(LOGFONT* face) const;
  BOOL DeleteObject();
  const LOGFONT& Face() const { return face_; }

 private:
  LOGFONT face_ = {};
};

// A surface in memory; drawn on by a memory context that has it selected.
class COMM_LORV_API CBitmap : public CObject {
 public:
  BOOL CreateCompatibleBitmap(CDC* dc, int width, int height);
  BOOL DeleteObject();
  CSize GetSize() const;
  const std::shared_ptr<lorv::Canvas>& Surface() const { return surface_; }

 private:
  std::shared_ptr<lorv::Canvas> surface_;
};
