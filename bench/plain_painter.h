#pragma once

#include <memory>
#include <vector>

#include "framework/native/window_types.h"
#include "framework/text/cstring.h"

// The system's own painter, doing the work of paint_bench without the library: on a picture of its own size,
// with nothing in between.
namespace lorv_bench {

// What both sides draw: cells in rows and columns, each with a text, and the lines between them.
struct Sheet {
  int scale = 1;
  int columns = 25;
  int rows = 40;
  std::vector<CString> texts;

  int Across() const { return 68 * scale; }
  int Down() const { return 22 * scale; }
  int Width() const { return 1700 * scale; }
  int Height() const { return 900 * scale; }
  RECT Cell(int index) const {
    const int left = index % columns * Across();
    const int top = index / columns * Down();
    return {left + scale, top + scale, left + Across(), top + Down()};
  }
};

constexpr COLORREF kGround = RGB(255, 255, 255);
constexpr COLORREF kInk = RGB(20, 20, 20);
constexpr COLORREF kRule = RGB(208, 208, 208);

class PlainPainter {
 public:
  PlainPainter() = default;
  PlainPainter(const PlainPainter&) = delete;
  PlainPainter& operator=(const PlainPainter&) = delete;
  virtual ~PlainPainter() = default;

  virtual void Lines() = 0;
  virtual void Texts() = 0;         // each at its point
  virtual void TextsInCells() = 0;  // with a font selected for each, in the middle of its cell, clipped
  virtual void KeptTexts() = 0;     // laid out beforehand, where the system knows such
  virtual void Page() = 0;          // ground, lines, texts
  virtual void TwoCells() = 0;      // the first and the last one, found by asking of each whether it shows
  virtual void ScrollRow() = 0;     // up by a row, the row that comes in painted
  virtual void ShownPage() = 0;     // a window that paints its page itself, to the screen
};

std::unique_ptr<PlainPainter> MakePlainPainter(const Sheet& sheet);

// The time that this program has worked, in milliseconds: that of the processor, as a work of 20 ms is always
// interrupted by the neighbours of the machine; by the clock where the system counts the other in ticks of 15
// ms.
double WorkedMilliseconds();

// What has to be done before windows can be had; handles what waits of the screen's own events.
void PrepareScreen(int scale);

}  // namespace lorv_bench
