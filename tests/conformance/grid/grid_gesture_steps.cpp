#include "tests/conformance/grid/grid_scene.h"

// What is dragged: corners of selections that fill other cells, dividers of rows and columns. And what the
// mouse does beside: tips, the right button, columns that it passes over.

namespace lorv_test {
namespace {

void Select(GridScene& s, const CBCGPGridRange& range) {
  s.Quietly([&] {
    s.grid->EndEditItem(FALSE);
    s.grid->SetFocus();
    s.grid->SelectRange(range);
  });
}

POINT Handle(const GridScene& s) {
  const CRect border = s.grid->GetSelectionBorder();
  return s.At({static_cast<int>(border.right) - 1, static_cast<int>(border.bottom) - 1});
}

POINT Moved(POINT at, int right, int down) {
  return {at.x + right, at.y + down};
}

// The lower divider of a row.
POINT RowDivider(const GridScene& s, int row) {
  return s.At({static_cast<int>(s.grid->GetRowHeaderRect().CenterPoint().x),
               static_cast<int>(s.grid->GetRowRect(row).bottom) - 1});
}

void Fill(GridScene& s, const CBCGPGridRange& source, int row, int column) {
  Select(s, source);
  s.Drag(Handle(s), s.Cell(row, column));
}

void SayRow(GridScene& s, int row) {
  std::string line = "row " + std::to_string(row);
  for (int column = 0; column < s.grid->GetColumnCount(); ++column)
    line += " " + s.Text(row, column).ToUtf8();
  s.Say(line);
}

void SayHeight(GridScene& s) {
  s.Say("height " + std::to_string(s.grid->GetRowHeight()));
}

void SayIdle(GridScene& s) {
  s.Say(s.driver.Desktop().Capture() == nullptr ? "free" : "held");
}

void SayCursor(GridScene& s, POINT at) {
  s.driver.MoveMouse(at);
  s.Say("cursor " + std::to_string(s.driver.Desktop().Cursor()));
}

void SayTip(GridScene& s) {
  s.Say(s.grid->TipText().IsEmpty() ? "no tip" : "tip " + s.grid->TipText().Left(12).ToUtf8());
}

void SetLongText(GridScene& s, int row, int column) {
  s.grid->GetItem(row, column)->SetValue(_variant_t(_T("a text of a member that is far too long")), FALSE);
}

GridStep SelectedBy(const char* name, const CBCGPGridRange& range, int row, int column, bool by_row) {
  return {name, [=](GridScene& s) {
            Select(s, range);
            s.driver.RightClick(by_row ? s.RowHeader(row) : s.Header(column));
          }};
}

std::vector<GridStep> FillSteps() {
  return {
      {"without filling the corner is a cell",
       [](GridScene& s) {
         Fill(s, {1, 1, 1, 1}, 3, 1);
         s.SayColumn(1);
       }},
      {"a cell is filled downwards",
       [](GridScene& s) {
         s.grid->SetDragCopyFill(true);
         Fill(s, {1, 1, 1, 1}, 4, 1);
         s.SayColumn(1);
       }},
      {"two cells repeat",
       [](GridScene& s) {
         Fill(s, {2, 0, 2, 1}, 6, 2), s.SayColumn(2);
       }},
      {"upwards the nearest gets the nearest",
       [](GridScene& s) {
         Fill(s, {3, 4, 3, 6}, 0, 3), s.SayColumn(3);
       }},
      {"to the right",
       [](GridScene& s) {
         Fill(s, {0, 7, 1, 7}, 7, 4), SayRow(s, 7);
       }},
      {"to the left",
       [](GridScene& s) {
         Fill(s, {3, 6, 4, 6}, 6, 0), SayRow(s, 6);
       }},
  };
}

std::vector<GridStep> SecondFillSteps() {
  return {
      {"several columns downwards",
       [](GridScene& s) {
         Fill(s, {4, 0, 5, 1}, 3, 4), SayRow(s, 2), SayRow(s, 3);
       }},
      {"several rows to the right",
       [](GridScene& s) {
         Fill(s, {0, 2, 0, 3}, 2, 2), SayRow(s, 2), SayRow(s, 3);
       }},
      {"a press on the corner alone fills nothing",
       [](GridScene& s) {
         Select(s, {1, 1, 2, 2});
         s.Click(Handle(s));
         SayIdle(s);
       }},
      {"out and home again fills nothing",
       [](GridScene& s) {
         Select(s, {1, 1, 1, 2});
         s.driver.MoveMouse(Handle(s));
         s.driver.MouseDown();
         s.driver.MoveMouse(s.Cell(5, 1));
         s.driver.MoveMouse(s.Cell(1, 1));
         s.driver.MouseUp();
         SayIdle(s);
       }},
      {"a locked cell is passed over",
       [](GridScene& s) {
         s.grid->SetItemReadOnly(2, 5, true);
         Fill(s, {5, 0, 5, 0}, 4, 5);
         s.SayColumn(5);
       }},
      {"so is a read-only one",
       [](GridScene& s) {
         s.grid->GetItem(3, 4)->SetReadOnly(TRUE);
         Fill(s, {4, 0, 4, 1}, 5, 4);
         s.SayColumn(4);
       }},
  };
}

std::vector<GridStep> FillEdgeSteps() {
  return {
      {"a hidden column gets nothing",
       [](GridScene& s) {
         s.Quietly([&] { s.grid->SetColumnVisible(2, FALSE), s.grid->AdjustLayout(); });
         Fill(s, {0, 5, 1, 5}, 5, 4);
         SayRow(s, 5);
       }},
      {"a hidden column of the source stands back",
       [](GridScene& s) {
         Fill(s, {1, 7, 3, 7}, 7, 5);
         SayRow(s, 7);
         s.Quietly([&] { s.grid->SetColumnVisible(2, TRUE), s.grid->AdjustLayout(); });
       }},
      {"hidden rows are filled",
       [](GridScene& s) {
         s.Quietly([&] { s.grid->SetRowVisible(2, false), s.grid->AdjustLayout(); });
         Fill(s, {0, 0, 0, 0}, 4, 0);
         s.SayColumn(0);
         s.Quietly([&] { s.grid->SetRowVisible(2, true), s.grid->AdjustLayout(); });
       }},
      {"an open editor of the source stays",
       [](GridScene& s) {
         s.Edit(0, 1);
         s.Drag(Handle(s), s.Cell(2, 1));
         s.SayColumn(1);
       }},
  };
}

std::vector<GridStep> BrokenFillSteps() {
  return {
      {"the tip tells the last value",
       [](GridScene& s) {
         Select(s, {0, 4, 0, 5});
         s.driver.MoveMouse(Handle(s));
         s.driver.MouseDown();
         s.driver.MoveMouse(s.Cell(6, 2));
         SayTip(s);
         s.driver.MoveMouse(s.Cell(7, 0));
         SayTip(s);
         s.driver.MouseUp();
         SayTip(s);
       }},
      {"the mouse is lost",
       [](GridScene& s) {
         Select(s, {0, 0, 0, 1});
         s.driver.MoveMouse(Handle(s));
         s.driver.MouseDown();
         s.driver.MoveMouse(s.Cell(6, 0));
         s.driver.Desktop().SetCapture(s.frame.m_hWnd);
         s.driver.Desktop().SetCapture(nullptr);
         s.Say(s.grid->GetDragFrame().IsRectEmpty() != FALSE ? "no frame" : "a frame");
         s.driver.MouseUp();
         s.SayColumn(0);
       }},
      {"cancelled",
       [](GridScene& s) {
         Select(s, {0, 0, 0, 1});
         s.driver.MoveMouse(Handle(s));
         s.driver.MouseDown();
         s.driver.MoveMouse(s.Cell(6, 0));
         s.grid->SendMessage(WM_CANCELMODE, 0, 0);
         s.driver.MouseUp();
         s.SayColumn(0);
         SayIdle(s);
       }},
      {"a handler takes rows away",
       [](GridScene& s) {
         s.grid->on = [&s](const std::string& event) {
           if (event == "set 5,3") s.grid->CBCGPGridCtrl::RemoveRow(6, FALSE);
         };
         Fill(s, {3, 2, 3, 3}, 8, 3);
         s.grid->on = nullptr;
         s.SayColumn(3);
       }},
      {"the corner has a cursor of its own",
       [](GridScene& s) {
         Select(s, {1, 1, 1, 1});
         SayCursor(s, Handle(s));
         SayCursor(s, s.Cell(3, 3));
       }},
      {"a corner out of sight is none",
       [](GridScene& s) {
         Select(s, {1, 1, 1, 9});
         s.Say(s.grid->GetSelectionBorder().IsRectEmpty() != FALSE ? "no corner" : "a corner");
       }},
  };
}

void DragRow(GridScene& s, int row, int by) {
  const POINT from = RowDivider(s, row);
  s.Drag(from, Moved(from, 0, by));
  SayHeight(s);
}

void DragColumn(GridScene& s, int column, int by) {
  const POINT from = s.Divider(column);
  s.Drag(from, Moved(from, by, 0));
}

void SayMarked(GridScene& s) {
  std::string line = "marked";
  for (int column = 0; column < s.grid->GetColumnCount(); ++column)
    if (s.grid->GetColumnsInfo().GetColumnWidthAutoSize(column) != FALSE)
      line += " " + std::to_string(column);
  s.Say(line);
}

void SayRoom(GridScene& s) {
  const bool all = s.grid->GetColumnsInfo().GetTotalWidth() == s.grid->GetListRect().Width();
  s.Say(all ? "all room" : "not all");
}

std::vector<GridStep> RowDividerSteps() {
  return {
      {"a row's edge makes all rows higher", [](GridScene& s) { DragRow(s, 1, 11); }},
      {"and lower", [](GridScene& s) { DragRow(s, 2, -6); }},
      {"another row's too", [](GridScene& s) { DragRow(s, 0, 5); }},
      {"above the grid it stays",
       [](GridScene& s) {
         const POINT from = RowDivider(s, 1);
         s.Drag(from, {from.x, s.At({0, 0}).y});
         SayHeight(s);
       }},
      {"the upper edge is that of the row above",
       [](GridScene& s) {
         const POINT from = Moved(RowDivider(s, 2), 0, 1);
         s.Drag(from, Moved(from, 0, -9));
         SayHeight(s);
       }},
      {"above the first row there is none",
       [](GridScene& s) {
         const POINT from = s.At({static_cast<int>(s.grid->GetRowHeaderRect().CenterPoint().x),
                                  static_cast<int>(s.grid->GetListRect().top)});
         s.Drag(from, Moved(from, 0, 30));
         SayHeight(s);
       }},
      {"in the middle a row is chosen", [](GridScene& s) { s.Click(s.RowHeader(2)); }},
  };
}

std::vector<GridStep> SecondRowDividerSteps() {
  return {
      {"nothing is chosen while an edge is dragged",
       [](GridScene& s) {
         s.Choose(3, 3);
         DragRow(s, 1, 3);
       }},
      {"far to the right it is the same drag",
       [](GridScene& s) {
         const POINT from = RowDivider(s, 1);
         s.Drag(from, Moved(from, 300, 4));
         SayHeight(s), SayIdle(s);
       }},
      {"an edge and the mouse that is lost",
       [](GridScene& s) {
         const POINT from = RowDivider(s, 1);
         s.driver.MoveMouse(from);
         s.driver.MouseDown();
         s.driver.MoveMouse(Moved(from, 0, 20));
         s.driver.Desktop().SetCapture(s.frame.m_hWnd);
         s.driver.Desktop().SetCapture(nullptr);
         s.driver.MouseUp();
         SayHeight(s);
       }},
      {"the cursor over an edge", [](GridScene& s) { SayCursor(s, RowDivider(s, 1)); }},
      {"a press that nobody makes starts nothing",
       [](GridScene& s) {
         POINT at = RowDivider(s, 1);
         s.grid->ScreenToClient(&at);
         s.grid->SendMessage(WM_LBUTTONDOWN, 0, MAKELPARAM(at.x, at.y));
         SayIdle(s);
       }},
  };
}

std::vector<GridStep> ColumnDividerSteps() {
  return {
      {"a column takes what is left over",
       [](GridScene& s) {
         s.Quietly([&] {
           s.grid->GetColumnsInfo().SetColumnWidthAutoSize(1, TRUE);
           s.grid->AdjustLayout();
         });
         SayMarked(s), SayRoom(s);
       }},
      {"while an edge is dragged the last one does",
       [](GridScene& s) {
         const POINT from = s.Divider(2);
         s.driver.MoveMouse(from);
         s.driver.MouseDown();
         SayMarked(s);
         s.driver.MoveMouse(Moved(from, 15, 0));
         s.driver.MouseUp();
         SayMarked(s), SayRoom(s);
       }},
      {"the edge of the first column", [](GridScene& s) { DragColumn(s, 0, 12), SayMarked(s), SayRoom(s); }},
      {"its own edge", [](GridScene& s) { DragColumn(s, 1, -20), SayMarked(s), SayRoom(s); }},
      {"two of them share and nothing is lent",
       [](GridScene& s) {
         s.grid->GetColumnsInfo().SetColumnWidthAutoSize(3, TRUE);
         DragColumn(s, 0, 5);
         SayMarked(s);
         s.grid->GetColumnsInfo().SetColumnWidthAutoSize(3, FALSE);
       }},
  };
}

std::vector<GridStep> FitSteps() {
  return {
      {"the mouse is lost, the mark comes back",
       [](GridScene& s) {
         const POINT from = s.Divider(2);
         s.driver.MoveMouse(from);
         s.driver.MouseDown();
         s.driver.Desktop().SetCapture(s.frame.m_hWnd);
         s.driver.Desktop().SetCapture(nullptr);
         s.driver.MouseUp();
         SayMarked(s);
       }},
      {"a double click on an edge fits the column",
       [](GridScene& s) {
         s.grid->GetColumnsInfo().SetColumnWidthAutoSize(1, FALSE);
         SetLongText(s, 4, 0);
         const int before = s.grid->GetColumnWidth(0);
         s.driver.DoubleClick(s.Divider(0));
         s.Say(s.grid->GetColumnWidth(0) > before ? "wider" : "not wider");
       }},
      {"and makes it narrow again",
       [](GridScene& s) {
         s.grid->GetItem(4, 0)->SetValue(_variant_t(_T("e0")), FALSE);
         const int before = s.grid->GetColumnWidth(0);
         s.driver.DoubleClick(s.Divider(0));
         s.Say(s.grid->GetColumnWidth(0) < before ? "narrower" : "not narrower");
       }},
      {"below its least width it stays",
       [](GridScene& s) {
         s.grid->GetColumnsInfo().SetMinWidth(2, 500);
         const int before = s.grid->GetColumnWidth(2);
         s.grid->GetColumnsInfo().SetColumnWidth(2, before);
         s.driver.DoubleClick(s.Divider(2));
         s.Say(s.grid->GetColumnWidth(2) == before ? "as it was" : "another width");
       }},
  };
}

}  // namespace

std::vector<GridStep> GridFillSteps() {
  return Joined(Joined(FillSteps(), SecondFillSteps()), Joined(FillEdgeSteps(), BrokenFillSteps()));
}

std::vector<GridStep> GridDragSteps() {
  return Joined(Joined(RowDividerSteps(), SecondRowDividerSteps()), Joined(ColumnDividerSteps(), FitSteps()));
}

static std::vector<GridStep> FirstTipSteps() {
  return {
      {"a text that is cut off is shown",
       [](GridScene& s) {
         SetLongText(s, 1, 1);
         SetLongText(s, 1, 3);
         s.driver.MoveMouse(s.Cell(1, 1));
         SayTip(s), SayIdle(s);
       }},
      {"a move within the cell leaves it",
       [](GridScene& s) { s.driver.MoveMouse(Moved(s.Cell(1, 1), 8, 3)), SayTip(s); }},
      {"it goes with the mouse to another cell",
       [](GridScene& s) { s.driver.MoveMouse(s.Cell(1, 3)), SayTip(s); }},
      {"a cell that is wide enough has none",
       [](GridScene& s) { s.driver.MoveMouse(s.Cell(4, 4)), SayTip(s), SayIdle(s); }},
      {"beside the rows there is none",
       [](GridScene& s) {
         s.driver.MoveMouse(s.Cell(1, 1)), SayTip(s);
         s.driver.MoveMouse(s.RowHeader(1)), SayTip(s);
         s.driver.MoveMouse(s.Cell(1, 1)), SayTip(s);
         s.driver.MoveMouse(s.Header(1)), SayTip(s), SayIdle(s);
       }},
      {"out of the window it closes",
       [](GridScene& s) {
         s.driver.MoveMouse(s.Cell(1, 1)), SayTip(s);
         s.driver.MoveMouse(s.At({300, 450})), SayTip(s), SayIdle(s);
       }},
  };
}

std::vector<GridStep> GridTipSteps() {
  return Joined(FirstTipSteps(),
                {
                    {"a press closes it",
                     [](GridScene& s) {
                       s.driver.MoveMouse(s.Cell(1, 3)), SayTip(s);
                       s.Click(s.Cell(1, 3)), SayTip(s), SayIdle(s);
                     }},
                    {"an edited cell has none",
                     [](GridScene& s) {
                       const CPoint at = s.grid->GetItemRect({1, 3}).CenterPoint();
                       s.Say(s.grid->ShowCellToolTips(at, CString()) ? "shown" : "not shown");
                       s.Press({VK_ESCAPE});
                     }},
                    {"a given text in a wide cell",
                     [](GridScene& s) {
                       const CPoint at = s.grid->GetItemRect({5, 4}).CenterPoint();
                       s.Say(s.grid->ShowCellToolTips(at, _T("given")) ? "shown" : "not shown");
                       SayTip(s);
                       s.driver.MoveMouse(s.Cell(7, 5)), SayTip(s);
                     }},
                    {"switched off",
                     [](GridScene& s) {
                       s.driver.MoveMouse(s.Cell(1, 1)), SayTip(s);
                       s.grid->EnableToolTips(FALSE), SayTip(s);
                       s.driver.MoveMouse(s.Cell(1, 3)), SayTip(s);
                       s.grid->EnableToolTips(TRUE);
                     }},
                    {"merged cells have one",
                     [](GridScene& s) {
                       SetLongText(s, 6, 1);
                       s.Quietly([&] { s.grid->MergeRange({1, 6, 2, 7}); });
                       s.driver.MoveMouse(s.Cell(2, 5));
                       s.driver.MoveMouse(s.Cell(6, 1)), SayTip(s);
                       s.driver.MoveMouse(s.Cell(3, 5)), SayTip(s);
                     }},
                });
}

std::vector<GridStep> GridRightButtonSteps() {
  return {
      {"the right button on a cell chooses it",
       [](GridScene& s) { s.Choose(0, 0), s.driver.RightClick(s.Cell(3, 2)); }},
      {"on a selected one it keeps the selection",
       [](GridScene& s) {
         Select(s, {1, 1, 3, 3}), s.driver.RightClick(s.Cell(2, 2));
       }},
      SelectedBy("on the header of a selected row too", {1, 1, 3, 3}, 2, -1, true),
      SelectedBy("on that of another row it chooses the row", {1, 1, 3, 3}, 5, -1, true),
      SelectedBy("on the header of a selected column it keeps", {1, 1, 3, 3}, -1, 3, false),
      SelectedBy("on that of another column it chooses the column", {1, 1, 3, 3}, -1, 5, false),
      {"an open editor ends",
       [](GridScene& s) {
         s.Edit(2, 2);
         s.Type(_T("r"));
         s.driver.RightClick(s.Cell(4, 4));
         s.SayCell(2, 2);
       }},
      {"a masked column takes no click",
       [](GridScene& s) {
         s.Choose(0, 0);
         s.grid->SetAllowFocus(2, false);
         s.Click(s.Cell(3, 2));
       }},
      {"nor the right button", [](GridScene& s) { s.driver.RightClick(s.Cell(3, 2)); }},
      {"its header does", [](GridScene& s) { s.Click(s.Header(2)); }},
      {"a drag that ends over it selects and opens nothing",
       [](GridScene& s) {
         s.Drag(s.Cell(2, 0), s.Cell(2, 2));
         SayIdle(s);
       }},
      {"a fill that ends over it is none",
       [](GridScene& s) {
         s.grid->SetDragCopyFill(true);
         Fill(s, {1, 4, 1, 4}, 4, 2);
         SayRow(s, 4), SayIdle(s);
       }},
      {"all columns are masked",
       [](GridScene& s) {
         s.grid->SetAllowFocus(false);
         s.Choose(0, 0);
         s.Click(s.Cell(3, 0)), s.Click(s.Cell(3, 5));
       }},
      {"and none",
       [](GridScene& s) {
         s.grid->SetAllowFocus(true);
         s.Click(s.Cell(3, 2));
       }},
  };
}

}  // namespace lorv_test
