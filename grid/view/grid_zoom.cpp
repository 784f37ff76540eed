#include "grid/view/grid_zoom.h"

#include <algorithm>
#include <cstdint>

#include "framework/drawing/drawing_tools.h"
#include "grid/basic/basic_grid.h"
#include "grid/commands/grid_commands.h"

// Sizes are set, and the layout follows once at the end.

namespace lorv {

namespace {

constexpr int kPlain = 100;
constexpr int kUsualFontHeight = -12;  // of a font that names none
constexpr int kSteps[] = {50, 75, 90, 100, 110, 125, 150, 200, 250, 300};

}  // namespace

GridZoom::GridZoom(CBCGPGridCtrl& grid) : grid_(&grid), grid_life_(grid.Watch()) {}

int GridZoom::Scaled(int size, int percent) {
  const std::int64_t scaled = std::int64_t{size} * percent;
  const std::int64_t half = scaled < 0 ? -kPlain / 2 : kPlain / 2;
  const auto rounded = static_cast<int>((scaled + half) / kPlain);
  // Nothing that is there vanishes.
  return rounded == 0 && size != 0 ? (size < 0 ? -1 : 1) : rounded;
}

// `now` is what stands there: another size than the one shown was set by somebody else.
int GridZoom::Rescaled(Size& size, int now, int percent) const {
  if (now != size.shown)
    size.plain = static_cast<int>((std::int64_t{now} * kPlain + (now < 0 ? -zoom_ : zoom_) / 2) / zoom_);
  size.shown = Scaled(size.plain, percent);
  return size.shown;
}

void GridZoom::ZoomFont(int percent) {
  LOGFONT face = grid_->GetFont()->Face();
  const int height = face.lfHeight == 0 ? kUsualFontHeight : static_cast<int>(face.lfHeight);
  face.lfHeight = Rescaled(font_, height, percent);
  CFont font;
  font.CreateFontIndirect(&face);
  grid_->SetFont(&font, FALSE);
}

void GridZoom::ZoomColumns(int percent) {
  CBCGPGridColumnsInfo& info = grid_->GetColumnsInfo();
  columns_.resize(static_cast<std::size_t>(info.GetColumnCount()));
  for (int column = 0; column < info.GetColumnCount(); ++column) {
    const bool hidden = info.GetColumnVisible(column) == FALSE;
    // A hidden column has no width while it is hidden.
    if (hidden) info.SetColumnVisible(column, TRUE);
    // A column that was moved has its size at 100 % all the same.
    Size& size = columns_[static_cast<std::size_t>(info.GetUnmovedColumn(column))];
    info.SetColumnWidth(column, Rescaled(size, info.GetColumnWidth(column), percent));
    size.shown = info.GetColumnWidth(column);
    if (hidden) info.SetColumnVisible(column, FALSE);
  }
}

void GridZoom::ZoomRows(int percent) {
  const int header = grid_->GetRowHeaderRect().Width();
  if (grid_->IsRowHeaderEnabled() != FALSE && header > 0)
    grid_->EnableRowHeader(TRUE, -1, Rescaled(row_header_, header, percent));
  // Other grids take the height of their rows from the font.
  if (auto* const basic = dynamic_cast<CBCGPBasicGridCtrl*>(grid_))
    basic->SetRowHeight(Rescaled(row_height_, basic->GetRowHeight(), percent));
}

void GridZoom::SetZoom(int percent) {
  percent = std::clamp(percent, kLeastZoom, kMostZoom);
  if (grid_life_.expired() || percent == zoom_) return;
  const auto life = life_.Watch();
  const auto grid_life = grid_life_;
  CBCGPGridCtrl& grid = *grid_;
  ZoomRows(percent);
  ZoomColumns(percent);
  // The window may be notified of its new font.
  if (grid.m_hWnd != nullptr) ZoomFont(percent);
  if (life.expired() || grid_life.expired()) return;
  zoom_ = percent;
  grid.AdjustLayout();
  if (life.expired() || grid_life.expired()) return;
  // What the font asks for may be more than the height that was set.
  row_height_.shown = grid.GetRowHeight();
  grid.Invalidate(FALSE);
}

bool GridZoom::ZoomIn() {
  const auto* const next = std::upper_bound(std::begin(kSteps), std::end(kSteps), zoom_);
  if (next == std::end(kSteps) || grid_life_.expired()) return false;
  SetZoom(*next);
  return true;
}

bool GridZoom::ZoomOut() {
  const auto* const here = std::lower_bound(std::begin(kSteps), std::end(kSteps), zoom_);
  if (here == std::begin(kSteps) || grid_life_.expired()) return false;
  SetZoom(*(here - 1));
  return true;
}

void GridZoom::Bind(GridCommands& commands) {
  commands.Bind(_T("zoom_in"), [this](CBCGPGridCtrl&) { return ZoomIn(); });
  commands.Bind(_T("zoom_out"), [this](CBCGPGridCtrl&) { return ZoomOut(); });
  commands.Bind(_T("zoom_reset"), [this](CBCGPGridCtrl&) {
    SetZoom(kPlain);
    return true;
  });
}

}  // namespace lorv
