#include "platform/models/window/scroll_model.h"

#include <algorithm>
#include <cstdint>

// Range, page and position of a scroll bar. The position always lies where the last page still fills the
// window; ranges reach to both ends of 32 bits, so sums are made in 64.

namespace lorv {

int ScrollModel::LastPosition() const {
  // Pages of 0 and of 1 scroll alike: to the last position of the range.
  const std::int64_t page = std::max<std::int64_t>(std::int64_t{info_.nPage} - 1, 0);
  return static_cast<int>(std::max<std::int64_t>(info_.nMax - page, info_.nMin));
}

void ScrollModel::Set(const SCROLLINFO& info) {
  if ((info.fMask & SIF_RANGE) != 0) {
    info_.nMin = info.nMin;
    // A range that ends before it begins is one of a single position.
    info_.nMax = std::max(info.nMin, info.nMax);
  }
  if ((info.fMask & SIF_PAGE) != 0) info_.nPage = info.nPage;
  if ((info.fMask & SIF_POS) != 0) info_.nPos = info.nPos;
  const std::int64_t span = std::int64_t{info_.nMax} - info_.nMin + 1;
  info_.nPage = static_cast<UINT>(std::min<std::int64_t>(info_.nPage, span));
  info_.nPos = std::clamp(info_.nPos, info_.nMin, LastPosition());
}

SCROLLINFO ScrollModel::Info() const {
  SCROLLINFO info = info_;
  // While the thumb is dragged the position stays: the class decides whether to follow.
  info.nTrackPos = dragged_ ? track_ : info_.nPos;
  return info;
}

void ScrollModel::Drag(int position) {
  dragged_ = true;
  track_ = std::clamp(position, info_.nMin, LastPosition());
}

}  // namespace lorv
