#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "framework/windows/controls.h"
#include "framework/windows/dialog.h"
#include "grid/CBcgTrueDbGridCtrl.h"
#include "tests/conformance/behaviour_driver.h"
#include "tests/conformance/grid/grid_points.h"

// The grid of the conformance script, which writes what it is notified of into one trace. Each step ends with
// where the user is then: the current cell, what is selected, and what stands in the editor.
namespace lorv_test {

struct GridScene;

// `on` does what a step wants in the middle of an event.
class TracedGrid : public CBCGPBasicGridCtrl {
 public:
  explicit TracedGrid(GridScene& scene) : scene_(scene) {}
  std::function<void(const std::string&)> on;

  void SetValue(int row, int column, const _variant_t& value, BOOL redraw = TRUE) override;
  void OnComboItemSelect() override { Say("combo"); }
  void OnItemUpdate() override;
  BOOL OnClickButton(CPoint point) override;
  void OnItemChanged(CBCGPGridItem* item, int row, int column) override;
  using CBCGPBasicGridCtrl::SetRowHeight;
  CString TipText() { return IsToolTipShown() ? ToolTip()->GetText() : CString(); }

 protected:
  void OnHeaderColumnClick(int column) override;
  void OnSelChanged(const CBCGPGridRange& range, BOOL selected) override;
  void OnAfterInplaceEditCreated(CBCGPGridItem* item, CWnd* editor) override;
  void OnEndInplaceEdit(CBCGPGridItem* item) override;
  void OnResizeColumns() override;

 private:
  void Say(const std::string& event);

  GridScene& scene_;
};

class GridDialog : public CDialog {
 public:
  explicit GridDialog(GridScene& scene);

 protected:
  void OnOK() override;
  void OnCancel() override;

 private:
  GridScene& scene_;
};

struct GridScene {
  explicit GridScene(BehaviourDriver& player);

  void Say(const std::string& line) { trace.push_back("  " + line); }
  void SayState();
  // A fresh grid of so many rows and columns; the text of a cell is its row's letter and its column's number.
  void Make(int rows, int columns, int width = 70);
  void Choose(int row, int column);
  void Edit(int row, int column);
  void Press(std::initializer_list<int> keys);
  void PressWith(int modifier, int key) { driver.PressWith(modifier, key); }
  void Type(LPCTSTR text) { driver.Type(lorv::TextView(text)); }
  // Points on the screen.
  POINT At(const CPoint& client) const { return PointIn(*grid, client); }
  POINT Cell(int row, int column) const { return CellPoint(*grid, row, column); }
  POINT Button(int row, int column) const { return ButtonPoint(*grid, row, column); }
  POINT Header(int column) const { return HeaderPoint(*grid, column); }
  POINT RowHeader(int row) const { return RowHeaderPoint(*grid, row); }
  POINT Divider(int column) const { return DividerPoint(*grid, column); }
  void Click(POINT screen) { driver.Click(screen); }
  void ClickWith(int modifier, POINT screen) { driver.ClickWith(modifier, screen); }
  void Drag(POINT from, POINT to) { driver.Drag(from, to); }
  CString Text(int row, int column) const;
  // What stands in a cell, or in a column from the top.
  void SayCell(int row, int column);
  void SayColumn(int column);
  // Forgets what was reported so far.
  void Quietly(const std::function<void()>& work);
  template <class Kind>
  Kind* Put(int row, int column, Kind* item) {
    Quietly([&] { grid->ReplaceItem(row, column, item, FALSE); });
    return item;
  }
  // A list of the options "o0", "o1", ... in a cell.
  CBCGPGridPresentationItem* PutList(int row, int column, int options);

  BehaviourDriver& driver;
  std::vector<std::string> trace;
  CWnd frame;
  CEdit outside;
  std::unique_ptr<TracedGrid> grid;
};

struct GridStep {
  const char* name;
  std::function<void(GridScene&)> play;
};

// The steps of both, the grid between them being as the first leave it.
std::vector<GridStep> Joined(std::vector<GridStep> first, const std::vector<GridStep>& rest);

std::vector<GridStep> GridKeySteps();
std::vector<GridStep> GridKeyStyleSteps();
std::vector<GridStep> GridSelectionSteps();
std::vector<GridStep> GridTypingSteps();
std::vector<GridStep> GridCaretSteps();
std::vector<GridStep> GridWalkSteps();
std::vector<GridStep> GridCopySteps();
std::vector<GridStep> GridLockedSteps();
std::vector<GridStep> GridNumberSteps();
std::vector<GridStep> GridLinesSteps();
std::vector<GridStep> GridListSteps();
std::vector<GridStep> GridCheckSteps();
std::vector<GridStep> GridColourSteps();
std::vector<GridStep> GridButtonSteps();
std::vector<GridStep> GridMouseSteps();
std::vector<GridStep> GridDividerSteps();
std::vector<GridStep> GridHidingSteps();
std::vector<GridStep> GridMergingSteps();
std::vector<GridStep> GridRowSteps();
std::vector<GridStep> GridScrollSteps();
std::vector<GridStep> GridMenuSteps();
std::vector<GridStep> GridDialogSteps();
std::vector<GridStep> GridFocusSteps();
std::vector<GridStep> GridRebuildSteps();
std::vector<GridStep> GridFillSteps();
std::vector<GridStep> GridDragSteps();
std::vector<GridStep> GridTipSteps();
std::vector<GridStep> GridRightButtonSteps();
std::vector<GridStep> GridEndingSteps();

// Plays the whole script; the trace, a line an event.
std::vector<std::string> PlayGrid(BehaviourDriver& driver);

// The trace that is kept of it.
std::vector<std::string> KeptGridTrace();

}  // namespace lorv_test
