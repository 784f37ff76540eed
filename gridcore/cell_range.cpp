#include "gridcore/cell_range.h"

#include <algorithm>

// Rectangles of cells. An invalid one is empty, meets nothing and adds nothing, so callers need not ask
// first.

CBCGPGridRange::CBCGPGridRange(const CBCGPGridItemID& a, const CBCGPGridItemID& b)
    : CBCGPGridRange(std::min(a.m_nColumn, b.m_nColumn), std::min(a.m_nRow, b.m_nRow),
                     std::max(a.m_nColumn, b.m_nColumn), std::max(a.m_nRow, b.m_nRow)) {}

bool CBCGPGridRange::IsInRange(const CBCGPGridItemID& cell) const {
  return CBCGPGridRange(cell).IsInside(*this);
}

bool CBCGPGridRange::IsInside(const CBCGPGridRange& outer) const {
  return IsValid() && outer.IsValid() && m_nLeft >= outer.m_nLeft && m_nRight <= outer.m_nRight &&
         m_nTop >= outer.m_nTop && m_nBottom <= outer.m_nBottom;
}

bool CBCGPGridRange::Meets(const CBCGPGridRange& other) const {
  return CutWith(other).IsValid();
}

CBCGPGridRange CBCGPGridRange::CutWith(const CBCGPGridRange& other) const {
  if (!IsValid() || !other.IsValid()) return {};
  const CBCGPGridRange common(std::max(m_nLeft, other.m_nLeft), std::max(m_nTop, other.m_nTop),
                              std::min(m_nRight, other.m_nRight), std::min(m_nBottom, other.m_nBottom));
  return common.IsValid() ? common : CBCGPGridRange();
}

CBCGPGridRange CBCGPGridRange::JoinWith(const CBCGPGridRange& other) const {
  if (!IsValid()) return other;
  if (!other.IsValid()) return *this;
  return {std::min(m_nLeft, other.m_nLeft), std::min(m_nTop, other.m_nTop),
          std::max(m_nRight, other.m_nRight), std::max(m_nBottom, other.m_nBottom)};
}

std::int64_t CBCGPGridRange::CellCount() const {
  if (!IsValid()) return 0;
  return (std::int64_t{m_nRight} - m_nLeft + 1) * (std::int64_t{m_nBottom} - m_nTop + 1);
}
