#pragma once

#include <memory>
#include <vector>

#include "framework/ports/canvas_port.h"
#include "framework/text/cstring.h"
#include "gridcore/control/grid_control.h"
#include "platform/ports/printing.h"

namespace lorv {

constexpr int kMostPrintedPages = 10000;  // of one job
constexpr int kMostPageMargin = 100;      // millimetres

struct GridPrintSettings {
  CString document = _T("grid");            // the name of the job
  CString title;                            // over the table, on every page; empty: none
  CString footer = _T("{page} / {pages}");  // below it, in the middle; empty: none
  int margin = 10;                          // millimetres, on all sides
  bool fit_width = true;                    // a table wider than the page is drawn smaller
};

// Which piece of the table stands on a page: offsets from the first row and column, in pixels of the grid.
struct GridPiece {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
  friend bool operator==(const GridPiece&, const GridPiece&) = default;
};

struct GridPrintPlan {
  std::vector<GridPiece> pages;
  double scale = 1;      // dots of the paper for a pixel of the grid
  bool complete = true;  // false: the table has more than kMostPrintedPages
};

// A grid on paper, in a PDF file or as pictures: whatever canvas a page has.
//
// Every page has the grid's header and row header, the title and the footer, in which "{page}" and "{pages}"
//   are numbers. What is hidden or left out by a filter is not there; groups, nested rows, merged cells and
//   cells that draw themselves are as on the screen, nothing is selected. No row or column is cut, unless it
//   is larger than a page; merged cells stand together where a page has room for them. Without `fit_width`
//   what is too wide stands on pages of its own, behind those of the rows beside it.
// Units: paper and its dots an inch as its canvas says.
// Edges: a grid without a window or without columns, or gone, has no pages; one without rows has its header
//   alone. Margins are taken between 0 and kMostPageMargin.
// Result of Print: true when every page was drawn; false where the printer refused, had no other page, or the
//   table has more than kMostPrintedPages. What was drawn then stands.
// The grid and this may end in any order, and in whatever handler drawing runs. One thread: that of the user
// interface.
//
//   lorv::GridPrinting printing(grid);  printing.settings.title = _T("构件");
//   if (auto job = NativePrinting().Ask(grid.m_hWnd, kPrintNoSelection)) printing.Print(*job);
class COMM_LORV_API GridPrinting {
 public:
  explicit GridPrinting(CBCGPGridCtrl& grid) : grid_(&grid), life_(grid.Watch()) {}

  GridPrintSettings settings;

  GridPrintPlan Plan(SIZE paper, int dpi) const;
  bool Print(PrintJob& job) const;
  // One page, from 0 on, of a plan for that paper; for pictures. False: no such page, or the grid is gone.
  bool DrawPage(const GridPrintPlan& plan, int page, std::shared_ptr<Canvas> paper) const;

 private:
  bool Gone() const { return life_.expired() || grid_->m_hWnd == nullptr; }

  CBCGPGridCtrl* grid_;
  std::weak_ptr<int> life_;
};

}  // namespace lorv
