#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "framework/objects/exceptions.h"
#include "tests/grid/basic/basic_desk.h"

namespace lorv_test {

// The suite's grid under the mouse, its client area 430 by 300. Rows and the header are 20 pixels high,
// columns 80 wide, the row header 30, so that the cell (r, c) begins at (30 + 80 c, 20 + 20 r).
class GestureGrid : public BasicGrid {
 public:
  std::function<void(int row, int column, BOOL redraw)> on_set;
  int paints = 0;

  void SetValue(int row, int column, const _variant_t& value, BOOL redraw = TRUE) override {
    const auto life = Watch();
    const auto copy = on_set;
    if (copy) copy(row, column, redraw);
    if (!life.expired()) BasicGrid::SetValue(row, column, value, redraw);
  }
  using BasicGrid::CanMouseClick;
  using BasicGrid::InGesture;
  using BasicGrid::IsToolTipShown;
  using BasicGrid::LastToolTipRect;
  using BasicGrid::m_nTrackRow;
  using BasicGrid::m_rectTrackRow;
  using BasicGrid::OnSetCursor;
  using BasicGrid::ToolTip;

 protected:
  void OnDraw(CDC* dc) override {
    ++paints;
    BasicGrid::OnDraw(dc);
  }
};

class GestureDesk : public SuiteDesk<GestureGrid> {
 protected:
  GestureDesk() {
    top.MoveWindow(100, 100, 600, 500);
    grid->Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 432, 302), &top, 7);
    Run();
  }
  void Forget() override { grid->Taken(); }
  std::string Text(int row, int column) const { return SuiteDesk::Text(row, column).ToUtf8(); }
  // The texts of a column from a row down, of a row from a column to the right.
  std::string Down(int column, int first, int last) const {
    std::string line;
    for (int row = first; row <= last; ++row) line += (row == first ? "" : " ") + Text(row, column);
    return line;
  }
  std::string Across(int row, int first, int last) const {
    std::string line;
    for (int column = first; column <= last; ++column)
      line += (column == first ? "" : " ") + Text(row, column);
    return line;
  }
  static int Left(int column) { return 30 + 80 * column; }
  static int Top(int row) { return 20 + 20 * row; }
  static CPoint Middle(int row, int column) { return CPoint(Left(column) + 40, Top(row) + 10); }
  void Move(CPoint at) {
    desktop.MoveMouse(On(*grid, static_cast<int>(at.x), static_cast<int>(at.y)));
    Run();
  }
  void Press(CPoint at, int button = VK_LBUTTON) {
    Move(at);
    desktop.MouseDown(button);
    Run();
  }
  void Release(int button = VK_LBUTTON) {
    desktop.MouseUp(button);
    Run();
  }
  void Click(CPoint at, int button = VK_LBUTTON) {
    Press(at, button);
    Release(button);
  }
  void Drag(CPoint from, CPoint to) {
    Press(from);
    Move(to);
    Release();
  }
  void Select(const CBCGPGridRange& range) {
    grid->EndEditItem(FALSE);
    // A layout that is still to come chooses the current cell again.
    Run();
    grid->SelectRange(range);
    Run();
    grid->Taken();
  }
  // On the corner of the last range.
  CPoint Handle() const {
    const CRect border = grid->GetSelectionBorder();
    return CPoint(border.right - 1, border.bottom - 1);
  }
  void DragFill(CPoint to) { Drag(Handle(), to); }
  bool Idle() const { return !grid->InGesture() && desktop.Capture() == nullptr; }
  std::string Selected() const {
    std::string line;
    for (const CBCGPGridRange& range : grid->GetSelection())
      line += (line.empty() ? "" : " ") + std::to_string(range.m_nLeft) + "," + std::to_string(range.m_nTop) +
              "-" + std::to_string(range.m_nRight) + "," + std::to_string(range.m_nBottom);
    return line;
  }
  std::string Tip() const {
    return grid->IsToolTipShown() ? grid->ToolTip()->GetText().ToUtf8() : std::string("none");
  }
};

}  // namespace lorv_test
