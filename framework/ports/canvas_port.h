#pragma once

#include <vector>

#include "framework/native/export.h"
#include "framework/native/window_types.h"
#include "framework/text/utf8.h"

// What window classes draw on; a peer answers it over its own kind of surface. CDC stands above it.
//
// Units: device pixels from the surface's left top corner. Colours 0x00BBGGRR. CDC keeps the origin, the text
//   flags, pens and brushes, and turns them into these few calls, so that layout is the same on every peer.
// Edges: rectangles hold their left and top edge and not the others; empty ones draw nothing. What lies
//   outside the surface or the clip is left out.
// A canvas belongs to one thread at a time, which may be any: that of a window can be made and drawn on by a
//   second thread while the first paints too, the peer orders them. It may outlive its window: then it still
//   measures text, and what is drawn is lost.
namespace lorv {

constexpr int kUsualDpi = 96;

struct Stroke {
  COLORREF colour = 0;
  int width = 1;
  int style = PS_SOLID;  // or PS_DASH, PS_DOT; PS_NULL draws nothing
};

// Pixels from the top down, each 0xAARRGGBB, not premultiplied by its alpha. The pixels are the caller's and
// are read during the call only.
struct PixelImage {
  int width = 0;
  int height = 0;
  const DWORD* pixels = nullptr;
};

class COMM_LORV_API Canvas {
 public:
  Canvas() = default;
  Canvas(const Canvas&) = delete;
  Canvas& operator=(const Canvas&) = delete;
  virtual ~Canvas() = default;

  virtual SIZE Size() const = 0;
  // Dots per inch of what is drawn on.
  virtual int Dpi() const { return kUsualDpi; }

  virtual void Fill(const RECT& rect, COLORREF colour) = 0;
  // From `first` at the left or top edge to `last` at the other.
  virtual void Gradient(const RECT& rect, COLORREF first, COLORREF last, bool downwards) = 0;
  // A frame of that width, wholly inside the rectangle.
  virtual void Frame(const RECT& rect, COLORREF colour, int width) = 0;
  // Without the last point, as the system draws lines.
  virtual void Line(POINT from, POINT to, const Stroke& stroke) = 0;
  // Closed; an edge or an inside that is not wanted is a null pointer.
  virtual void Polygon(const std::vector<POINT>& corners, const Stroke* edge, const COLORREF* inside) = 0;
  // Exchanges each colour for its complement: drawn twice, it is gone. For frames that follow the mouse.
  virtual void Invert(const RECT& rect) = 0;

  // The font of the calls below; a new canvas has the system's own font of dialogs. A face that the system
  // lacks is replaced by one that has Chinese characters.
  virtual void SetFont(const LOGFONT& font) = 0;
  virtual TEXTMETRIC Metrics() const = 0;
  // Of one line: its advance and the font's height. Control characters are for the caller to treat.
  virtual SIZE Extent(TextView text) const = 0;
  // One line, its left top corner (not the base line) at `at`. The background stays.
  virtual void Text(POINT at, TextView text, COLORREF colour) = 0;
  // The same, and nothing of it outside `within`: a cell's text, quicker than by a change of the clip.
  virtual void ClippedText(POINT at, TextView text, COLORREF colour, const RECT& within) = 0;

  // Nothing is drawn outside the rectangle; null: no limit but the surface.
  virtual void SetClip(const RECT* clip) = 0;
  // Whether anything drawn in the rectangle could be seen: not where it lies beside the clip, the surface or,
  // within WM_PAINT, what is out of date.
  virtual bool Shows(const RECT& rect) const = 0;

  // Copies from a canvas of the same desktop; `from` may be this one, areas may overlap.
  virtual void Copy(const RECT& to, Canvas& from, POINT from_at) = 0;
  // The image, scaled to the rectangle and laid over what is there.
  virtual void Image(const PixelImage& image, const RECT& to) = 0;

  // What is there: the rectangle's pixels row by row, 0xFFRRGGBB; outside the surface 0. Empty where the peer
  // keeps no pixels. For pictures and tests.
  virtual std::vector<DWORD> Pixels(const RECT& rect) const = 0;
};

}  // namespace lorv
