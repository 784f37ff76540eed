#include "grid/printing/grid_printing.h"

#include <algorithm>
#include <cmath>

#include "framework/drawing/device_context.h"
#include "framework/drawing/scaled_canvas.h"
#include "grid/basic/basic_grid.h"
#include "grid/printing/page_breaks.h"

// A grid on pages. All is laid out in the grid's own pixels, and the canvas of a page makes them as large as
// they are on paper: so a page looks like the screen, text breaks where it does there, and fitting a wide
// table is one number.

namespace lorv {
namespace {

constexpr double kMillimetresPerInch = 25.4;
constexpr int kLineGap = 6;  // pixels at 96 dots an inch between the table and the title or footer

// A page in the grid's pixels: where the table may stand, and the lines above and below it.
struct PageRoom {
  CRect all;  // within the margins
  CRect table;
};

int LineHeight(const CBCGPGridCtrl& grid) {
  return grid.GetRowHeight();
}

PageRoom RoomOf(const CBCGPGridCtrl& grid, const GridPrintSettings& settings, SIZE paper, int dpi,
                double scale) {
  const double inches = std::clamp(settings.margin, 0, kMostPageMargin) / kMillimetresPerInch;
  const double dots = inches * dpi;
  const auto pixels = [scale](double at) { return static_cast<int>(std::floor(at / scale)); };
  PageRoom room;
  room.all = CRect(pixels(dots), pixels(dots), pixels(static_cast<double>(paper.cx) - dots),
                   pixels(static_cast<double>(paper.cy) - dots));
  room.table = room.all;
  const int line = LineHeight(grid) + grid.Scaled(kLineGap);
  if (!settings.title.IsEmpty()) room.table.top += line;
  if (!settings.footer.IsEmpty()) room.table.bottom -= line;
  return room;
}

int TotalWidth(const CBCGPGridCtrl& grid) {
  return grid.GetHierarchyOffset() + grid.GetExtraHierarchyOffset() + grid.GetColumnsInfo().GetTotalWidth();
}

// Merged cells as stretches of rows or of columns.
std::vector<WholeStretch> MergedStretches(const CBCGPGridCtrl& grid, bool rows) {
  std::vector<CBCGPGridRange> blocks;
  const int last_row = std::max(0, grid.GetTerminalRowCount() - 1);
  grid.GetMergedItemsInRange({0, 0, std::max(0, grid.GetColumnCount() - 1), last_row}, blocks);
  std::vector<WholeStretch> stretches;
  for (const CBCGPGridRange& block : blocks) {
    const CRect place = grid.GetRangePlace(block);
    stretches.push_back(rows ? WholeStretch{static_cast<int>(place.top), static_cast<int>(place.bottom)}
                             : WholeStretch{static_cast<int>(place.left), static_cast<int>(place.right)});
  }
  return stretches;
}

// A page breaks between two columns, never within one that fits.
int ColumnEdgeAt(const CBCGPGridCtrl& grid, int place) {
  const CBCGPGridColumnsInfo& info = grid.GetColumnsInfo();
  const int cells = grid.GetHierarchyOffset() + grid.GetExtraHierarchyOffset();
  const int column = place < cells ? -1 : info.HitTestColumn(place - cells);
  return column < 0 ? (place < cells ? 0 : TotalWidth(grid)) : cells + info.GetColumnLeft(column);
}

// The suite's grid shows the selected row by a colour of its cells: not on paper.
class PlainRow {
 public:
  explicit PlainRow(CBCGPGridCtrl& grid) : grid_(grid), life_(grid.Watch()), row_(grid.GetCurRowId()) {
    const auto* suite = dynamic_cast<const CBCGPBasicGridCtrl*>(&grid);
    colour_ = suite == nullptr ? kNoColour : suite->GetSelRowBKColor();
    Replace(colour_, kNoColour);
  }
  PlainRow(const PlainRow&) = delete;
  PlainRow& operator=(const PlainRow&) = delete;
  ~PlainRow() {
    if (!life_.expired()) Replace(kNoColour, colour_);
  }

 private:
  void Replace(COLORREF from, COLORREF to) {
    if (colour_ == kNoColour || row_ < 0) return;
    for (int column = 0; column < grid_.GetColumnCount(); ++column) {
      CBCGPGridItem* const item = grid_.GetGridItem({row_, column});
      const bool marked = std::find(marked_.begin(), marked_.end(), column) != marked_.end();
      if (item == nullptr || item->GetBackgroundColor() != from || (from == kNoColour && !marked)) continue;
      item->SetBackgroundColor(to, FALSE);
      if (!marked) marked_.push_back(column);
    }
  }

  CBCGPGridCtrl& grid_;
  std::weak_ptr<int> life_;
  int row_;
  COLORREF colour_ = kNoColour;
  std::vector<int> marked_;
};

CString Numbered(CString text, int page, int pages) {
  CString number;
  number.Format(_T("%d"), page);
  text.Replace(_T("{page}"), number);
  number.Format(_T("%d"), pages);
  text.Replace(_T("{pages}"), number);
  return text;
}

}  // namespace

GridPrintPlan GridPrinting::Plan(SIZE paper, int dpi) const {
  GridPrintPlan plan;
  if (Gone() || paper.cx <= 0 || paper.cy <= 0 || dpi <= 0) return plan;
  const CBCGPGridCtrl& grid = *grid_;
  plan.scale = static_cast<double>(dpi) / std::max(1, grid.GetDpi());
  const int beside = grid.GetRowHeaderRect().Width();
  const int width = TotalWidth(grid);
  PageRoom room = RoomOf(grid, settings, paper, dpi, plan.scale);
  if (room.all.Width() <= 0 || room.all.Height() <= 0) return plan;
  if (settings.fit_width && beside + width > room.all.Width()) {
    plan.scale *= static_cast<double>(room.all.Width()) / (beside + width);
    room = RoomOf(grid, settings, paper, dpi, plan.scale);
  }
  const int header = grid.GetHeaderRect().Height();
  // Rounding must not put the last column of a fitted table on a page of its own.
  const int across = std::max(room.table.Width() - beside, settings.fit_width ? width : 0);
  const int down = room.table.Height() - header;
  const auto lines = PageBreaks(
      grid.GetVertScrollTotal(), down, kMostPrintedPages, [&](int at) { return grid.LineEdgeAt(at); },
      MergedStretches(grid, true));
  const auto columns = PageBreaks(
      width, across, kMostPrintedPages, [&](int at) { return ColumnEdgeAt(grid, at); },
      MergedStretches(grid, false));
  if (columns.size() < 2 || down <= 0) return plan;
  const std::vector<int> rows = lines.size() < 2 ? std::vector<int>{0, 0} : lines;
  for (std::size_t row = 0; row + 1 < rows.size(); ++row)
    for (std::size_t column = 0; column + 1 < columns.size(); ++column) {
      if (plan.pages.size() == static_cast<std::size_t>(kMostPrintedPages)) break;
      plan.pages.push_back(
          {columns[column], rows[row], columns[column + 1] - columns[column], rows[row + 1] - rows[row]});
    }
  const std::size_t wanted = (rows.size() - 1) * (columns.size() - 1);
  plan.complete =
      plan.pages.size() == wanted && rows.back() >= grid.GetVertScrollTotal() && columns.back() >= width;
  return plan;
}

bool GridPrinting::DrawPage(const GridPrintPlan& plan, int page, std::shared_ptr<Canvas> paper) const {
  if (Gone() || paper == nullptr || page < 0 || page >= static_cast<int>(plan.pages.size())) return false;
  const GridPiece& piece = plan.pages[static_cast<std::size_t>(page)];
  const PageRoom room = RoomOf(*grid_, settings, paper->Size(), paper->Dpi(), plan.scale);
  const int line = LineHeight(*grid_);
  CPrintDC dc(std::make_shared<ScaledCanvas>(std::move(paper), plan.scale));
  CFont* const old = dc.SelectObject(grid_->GetFont());
  dc.SetBkMode(TRANSPARENT);
  dc.SetTextColor(RGB(0, 0, 0));
  constexpr UINT kOneLine = DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS;
  CRect title = room.all;
  title.bottom = title.top + line;
  if (!settings.title.IsEmpty()) dc.DrawText(settings.title, title, kOneLine | DT_LEFT);
  CRect footer = room.all;
  footer.top = footer.bottom - line;
  const CString text = Numbered(settings.footer, page + 1, static_cast<int>(plan.pages.size()));
  if (!text.IsEmpty()) dc.DrawText(text, footer, kOneLine | DT_CENTER);
  dc.SelectObject(old);
  const PlainRow plain(*grid_);
  const int saved = dc.SaveDC();
  dc.SetViewportOrg(room.table.TopLeft());
  const bool drawn = grid_->DrawPiece(&dc, CSize(piece.width, piece.height), CPoint(piece.left, piece.top));
  dc.RestoreDC(saved);
  return drawn;
}

bool GridPrinting::Print(PrintJob& job) const {
  if (Gone() || !job.BeginPages(settings.document)) return false;
  // What the paper is like is known with its first page.
  auto paper = job.NextPage();
  if (paper == nullptr) return false;
  // A handler that draws may end this object.
  const GridPrinting own(*this);
  const GridPrintPlan plan = own.Plan(paper->Size(), paper->Dpi());
  bool drawn = plan.complete && !plan.pages.empty();
  for (int page = 0; page < static_cast<int>(plan.pages.size()); ++page) {
    if (page > 0) paper = job.NextPage();
    if (paper == nullptr || !own.DrawPage(plan, page, paper)) {
      drawn = false;
      break;
    }
  }
  job.End();
  return drawn;
}

}  // namespace lorv
