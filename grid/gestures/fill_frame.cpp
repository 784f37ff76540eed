#include "grid/gestures/fill_frame.h"

#include <cstdlib>

#include "grid/gestures/column_steps.h"

// The frame that the mouse pulls out of the selection by its handle: which cells it takes in, where its
// tip stands and which source the tip names. Nothing but geometry: grid and window are the caller's.

namespace lorv {
namespace {

// Where a tip stands inside its frame.
constexpr int kTipInset = 2;

struct Pull {
  int right = 0;  // how far the pointer is to the right of the centre
  int up = 0;     // how far above
  bool across = false;
};

Pull PullOf(const CRect& source, CPoint point) {
  const CPoint centre = source.CenterPoint();
  Pull pull{point.x - centre.x, centre.y - point.y, false};
  // Straight above, below or beside the source there is no doubt; at its corners the longer way decides.
  if (point.x >= source.left && point.x < source.right) {
    pull.right = 0;
  } else if (point.y >= source.top && point.y < source.bottom) {
    pull.up = 0;
    pull.across = true;
  } else {
    pull.across = std::abs(pull.right) > std::abs(pull.up);
  }
  return pull;
}

bool SameWidth(const CRect& a, const CRect& b) {
  return a.Width() == b.Width();
}

bool SameHeight(const CRect& a, const CRect& b) {
  return a.Height() == b.Height();
}

// The cell in the corner of the frame that lies farthest from the source.
CBCGPGridItemID FarCell(const CRect& source, const CRect& frame, bool across, const CellAt& cell_at) {
  if (across) return cell_at({source.left == frame.left ? frame.right - 1 : frame.left + 1, frame.top + 1});
  return cell_at({frame.left + 1, source.top == frame.top ? frame.bottom - 1 : frame.top + 1});
}

// The row that the farthest one would get its value from: sources repeat.
int TipRow(const CBCGPGridRange& selected, int far_row, bool forward) {
  const int rows = selected.m_nBottom - selected.m_nTop + 1;
  if (forward) return selected.m_nTop + std::abs(far_row - selected.m_nBottom - 1) % rows;
  return selected.m_nBottom - std::abs(selected.m_nTop - far_row - 1) % rows;
}

int TipColumn(const CBCGPGridRange& selected, int far_column, bool forward, const ColumnView& columns) {
  const int width = selected.m_nRight - selected.m_nLeft + 1;
  if (forward) {
    const int distance = std::abs(far_column - selected.m_nRight - 1) -
                         HiddenColumns(columns, selected.m_nRight + 1, far_column);
    return ShownColumnAt(columns, selected.m_nLeft, distance % width);
  }
  const int distance =
      std::abs(selected.m_nLeft - far_column - 1) - HiddenColumns(columns, selected.m_nLeft + 1, far_column);
  return ShownColumnAt(columns, selected.m_nRight, -distance % width);
}

}  // namespace

bool OnFillHandle(const CRect& border, CPoint point, int reach) {
  const CRect handle(border.right - reach, border.bottom - reach, border.right + reach,
                     border.bottom + reach);
  return handle.PtInRect(point) != 0;
}

FillFrame FillFrameAt(const CRect& source, const CRect& cell, CPoint point) {
  const Pull pull = PullOf(source, point);
  FillFrame result{source, {}};
  CRect& frame = result.frame;
  if (pull.across) {
    const bool right = pull.right >= 1;
    (right ? frame.right : frame.left) = right ? cell.right : cell.left;
    result.tip = {right ? frame.right - kTipInset : frame.left + kTipInset, frame.bottom - kTipInset};
  } else {
    const bool up = pull.up >= 1;
    (up ? frame.top : frame.bottom) = up ? cell.top : cell.bottom;
    result.tip = {frame.left + kTipInset, up ? frame.top + kTipInset : frame.bottom - kTipInset};
  }
  return result;
}

CRect NextFillFrame(const CRect& shown, const CRect& source, const CRect& wanted, bool home) {
  // Back over the source the frame shrinks to it at once, else what was passed would stay to be filled.
  return home && shown != source ? source : wanted;
}

std::optional<FillTarget> FillTargetOf(const CBCGPGridRange& selected, const CRect& source,
                                       const CRect& frame, const CellAt& cell_at) {
  const bool down = SameWidth(source, frame);
  const bool across = SameHeight(source, frame);
  // Neither moved, or both: no direction that values could be copied in.
  if (down == across) return std::nullopt;
  FillTarget target{selected, across, across ? source.left == frame.left : source.top == frame.top};
  const CBCGPGridItemID outermost = FarCell(source, frame, across, cell_at);
  CBCGPGridRange& range = target.range;
  if (across && target.forward) {
    range.m_nLeft = selected.m_nRight + 1;
    range.m_nRight = outermost.m_nColumn;
  } else if (across) {
    range.m_nRight = selected.m_nLeft - 1;
    range.m_nLeft = outermost.m_nColumn;
  } else if (target.forward) {
    range.m_nTop = selected.m_nBottom + 1;
    range.m_nBottom = outermost.m_nRow;
  } else {
    range.m_nBottom = selected.m_nTop - 1;
    range.m_nTop = outermost.m_nRow;
  }
  return target;
}

CBCGPGridItemID FillTipCell(const CBCGPGridRange& selected, const CRect& source, const CRect& frame,
                            const ColumnView& columns, const CellAt& cell_at) {
  const bool across = SameHeight(source, frame);
  if (!selected.IsValid() || SameWidth(source, frame) == across) return {};
  const CBCGPGridItemID outermost = FarCell(source, frame, across, cell_at);
  if (across)
    return {selected.m_nTop, TipColumn(selected, outermost.m_nColumn, source.left == frame.left, columns)};
  return {TipRow(selected, outermost.m_nRow, source.top == frame.top), selected.m_nLeft};
}

}  // namespace lorv
