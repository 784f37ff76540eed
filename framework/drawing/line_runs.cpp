#include "framework/drawing/line_runs.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <utility>

// Lines as rectangles to be filled, for canvases that have no lines of their own. Only the steps that can
// touch the area are walked, so a line between far corners of 32 bits costs what is seen of it, and the same
// step always gives the same square: parts painted at different times fit together.

namespace lorv {
namespace {

// Places may be anywhere in 32 bits, their distances and products are not.
std::int64_t Far(LONG from, LONG to) {
  return static_cast<std::int64_t>(to) - from;
}

// The pixels of a line, the last one left out; the longer way has one of them a step.
class LineSteps {
 public:
  LineSteps(POINT from, POINT to)
      : from_(from),
        by_x_(Far(from.x, to.x)),
        by_y_(Far(from.y, to.y)),
        count_(std::max(std::abs(by_x_), std::abs(by_y_))) {}

  std::int64_t Count() const { return count_; }
  bool Straight() const { return by_x_ == 0 || by_y_ == 0; }
  CPoint At(std::int64_t step) const {
    return {static_cast<int>(from_.x + Part(by_x_, step)), static_cast<int>(from_.y + Part(by_y_, step))};
  }
  // The steps that can touch the area.
  std::pair<std::int64_t, std::int64_t> Within(const CRect& area, int width) const {
    // Along the longer way each step moves by exactly one, so the steps follow from the edges of the area.
    const bool flat = std::abs(by_x_) == count_;
    const std::int64_t low = Far(flat ? from_.x : from_.y, flat ? area.left : area.top) - width + 1;
    const std::int64_t high = Far(flat ? from_.x : from_.y, flat ? area.right : area.bottom) - 1;
    const bool onwards = (flat ? by_x_ : by_y_) > 0;
    return {std::max<std::int64_t>(onwards ? low : -high, 0), std::min(onwards ? high : -low, count_ - 1)};
  }

 private:
  // The product of the longest line would leave 64 bits.
  // A double rounds it the same way for every area, so no pixel jumps between two paintings.
  std::int64_t Part(std::int64_t by, std::int64_t step) const {
    return static_cast<std::int64_t>(static_cast<double>(by) * static_cast<double>(step) /
                                     static_cast<double>(count_));
  }

  CPoint from_;
  std::int64_t by_x_;
  std::int64_t by_y_;
  std::int64_t count_;
};

bool Inked(int style, std::int64_t step) {
  // Counted from the line's beginning and not from the first visible step: dashes stay in place when it
  // scrolls.
  constexpr int kDash = 4;
  constexpr int kPeriod = 6;
  if (style == PS_DOT) return step % 2 == 0;
  return style != PS_DASH || step % kPeriod < kDash;
}

// Steps side by side are filled together.
void Append(std::vector<CRect>& runs, const CRect& square, bool follows) {
  if (follows && !runs.empty()) {
    CRect& last = runs.back();
    if ((last.top == square.top && last.bottom == square.bottom) ||
        (last.left == square.left && last.right == square.right)) {
      last |= square;
      return;
    }
  }
  runs.push_back(square);
}

}  // namespace

std::vector<CRect> LineRuns(POINT from, POINT to, const Stroke& stroke, const CRect& area) {
  std::vector<CRect> runs;
  const LineSteps steps(from, to);
  if (steps.Count() == 0 || stroke.style == PS_NULL || stroke.width <= 0 || area.IsRectEmpty() != 0)
    return runs;
  const CSize square(stroke.width, stroke.width);
  const auto [first, last] = steps.Within(area, stroke.width);
  if (first > last) return runs;
  if (steps.Straight() && stroke.style == PS_SOLID) {
    // The lines of a grid are all of this kind: one fill each.
    runs.push_back(CRect(steps.At(first), square) | CRect(steps.At(last), square));
  } else {
    std::int64_t before = -2;
    for (std::int64_t i = first; i <= last; ++i) {
      if (!Inked(stroke.style, i)) continue;
      Append(runs, CRect(steps.At(i), square), before == i - 1);
      before = i;
    }
  }
  // A wide pen's squares reach over the edge.
  for (CRect& run : runs) run &= area;
  std::erase_if(runs, [](const CRect& run) { return run.IsRectEmpty() != 0; });
  return runs;
}

}  // namespace lorv
