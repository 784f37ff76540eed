#include "tests/conformance/grid/grid_scene.h"

// The mouse on cells and headers, dragged edges of columns, scrolling.

namespace lorv_test {

std::vector<GridStep> GridMouseSteps() {
  return {
      {"a click chooses", [](GridScene& s) { s.Click(s.Cell(2, 1)); }},
      {"the same again is silent", [](GridScene& s) { s.Click(s.Cell(2, 1)); }},
      {"with Shift it extends", [](GridScene& s) { s.ClickWith(VK_SHIFT, s.Cell(4, 3)); }},
      {"with Shift the other way", [](GridScene& s) { s.ClickWith(VK_SHIFT, s.Cell(1, 0)); }},
      {"with Ctrl it adds", [](GridScene& s) { s.ClickWith(VK_CONTROL, s.Cell(6, 4)); }},
      {"with Ctrl on a chosen cell it takes away",
       [](GridScene& s) { s.ClickWith(VK_CONTROL, s.Cell(1, 1)); }},
      {"dragging selects", [](GridScene& s) { s.Drag(s.Cell(1, 1), s.Cell(3, 3)); }},
      {"dragging upwards", [](GridScene& s) { s.Drag(s.Cell(4, 4), s.Cell(2, 2)); }},
      {"a row header chooses the row", [](GridScene& s) { s.Click(s.RowHeader(3)); }},
      {"with Shift rows up to there", [](GridScene& s) { s.ClickWith(VK_SHIFT, s.RowHeader(5)); }},
      {"with Ctrl one more", [](GridScene& s) { s.ClickWith(VK_CONTROL, s.RowHeader(1)); }},
      {"a header chooses the column", [](GridScene& s) { s.Click(s.Header(2)); }},
      {"with Ctrl one more column", [](GridScene& s) { s.ClickWith(VK_CONTROL, s.Header(4)); }},
      {"the corner chooses all",
       [](GridScene& s) {
         s.Click(s.At({static_cast<int>(s.grid->GetRowHeaderRect().CenterPoint().x),
                       static_cast<int>(s.grid->GetHeaderRect().CenterPoint().y)}));
       }},
      {"beside all columns nothing is chosen",
       [](GridScene& s) {
         s.Choose(1, 1);
         const POINT cell = s.Cell(1, 5);
         s.Click({cell.x + 60, cell.y});
       }},
      {"a double click opens the editor", [](GridScene& s) { s.driver.DoubleClick(s.Cell(3, 2)); }},
      {"a click in it stays in it",
       [](GridScene& s) {
         s.Click(s.Cell(3, 2));
         s.Say(s.grid->GetInPlaceWnd() != nullptr ? "open" : "closed");
         s.Press({VK_ESCAPE});
       }},
      {"what lies under a point",
       [](GridScene& s) {
         int row = 0;
         int column = 0;
         const CPoint at = s.grid->GetItemRect({3, 2}).CenterPoint();
         const int hit = s.grid->CellContaining(at, row, column);
         s.Say(std::to_string(hit) + " at " + std::to_string(row) + "," + std::to_string(column));
         const int beside = s.grid->CellContaining(-5, static_cast<int>(at.y), row, column);
         s.Say(std::to_string(beside) + " at " + std::to_string(row) + "," + std::to_string(column));
       }},
  };
}

static std::vector<GridStep> FirstDividerSteps() {
  const auto drag = [](GridScene& s, int column, int by) {
    const POINT from = s.Divider(column);
    s.Drag(from, {from.x + by, from.y});
    s.Say(s.grid->GetColsWidth().ToUtf8());
  };
  return {
      {"a column's edge is dragged out", [drag](GridScene& s) { drag(s, 1, 20); }},
      {"and in", [drag](GridScene& s) { drag(s, 1, -50); }},
      {"past its left edge it keeps a pixel", [drag](GridScene& s) { drag(s, 1, -300); }},
      {"and is drawn out again", [drag](GridScene& s) { drag(s, 1, 69); }},
      {"not below its least width",
       [drag](GridScene& s) {
         s.grid->GetColumnsInfo().SetMinWidth(2, 40);
         drag(s, 2, -60);
       }},
  };
}

std::vector<GridStep> GridDividerSteps() {
  const auto widths = [](GridScene& s) { s.Say(s.grid->GetColsWidth().ToUtf8()); };
  return Joined(
      FirstDividerSteps(),
      {
          {"widths as a text",
           [widths](GridScene& s) {
             s.Say(s.grid->SetColsWidth(_T("120,0,60")) ? "set" : "not set");
             s.grid->AdjustLayout();
             widths(s);
           }},
          {"no widths at all", [](GridScene& s) { s.Say(s.grid->SetColsWidth(_T("")) ? "set" : "not set"); }},
          {"columns that keep their proportions",
           [widths](GridScene& s) {
             s.Quietly([&] { s.grid->SetColsWidth(_T("100,50,50,100,100,100")); });
             s.grid->SetAdjustColWidth(true);
             CRect place(10, 10, 610, 410);
             place.right += 100;
             s.Quietly([&] { s.grid->MoveWindow(&place); });
             s.Say(s.grid->GetColumnWidth(0) == 2 * s.grid->GetColumnWidth(1) ||
                           s.grid->GetColumnWidth(0) == 2 * s.grid->GetColumnWidth(1) + 1
                       ? "in proportion"
                       : "not in proportion");
             s.Say(s.grid->GetColumnsInfo().GetTotalWidth() == s.grid->GetListRect().Width() ? "all room"
                                                                                             : "not all");
             s.grid->SetAdjustColWidth(false);
           }},
          {"an editor goes with its column",
           [](GridScene& s) {
             s.Quietly([&] {
               s.grid->SetColsWidth(_T("70,70,70,70,70,70"));
               s.grid->AdjustLayout();
             });
             s.Edit(0, 3);
             s.grid->SetColumnWidth(0, 90);
             s.grid->AdjustLayout();
             CRect editor;
             s.grid->GetInPlaceWnd()->GetWindowRect(&editor);
             const POINT cell = s.At({static_cast<int>(s.grid->GetItemRect({0, 3}).left), 0});
             s.Say(editor.left == cell.x ? "over its cell" : "elsewhere");
           }},
      });
}

std::vector<GridStep> GridScrollSteps() {
  return {
      {"a row far down is shown",
       [](GridScene& s) {
         s.Quietly([&] { s.grid->AppendRows(88); });
         s.grid->SetRow(90);
         s.Say(s.grid->GetFirstRow() > 70 ? "scrolled" : "not scrolled");
       }},
      {"a row is brought to the top",
       [](GridScene& s) {
         s.grid->SetFirstRow(40);
         s.Say("first " + std::to_string(s.grid->GetFirstRow()));
       }},
      {"one above it, too",
       [](GridScene& s) {
         s.grid->SetFirstRow(20);
         s.Say("first " + std::to_string(s.grid->GetFirstRow()));
       }},
      {"one that is not there changes nothing",
       [](GridScene& s) {
         s.grid->SetFirstRow(1000);
         s.grid->SetFirstRow(-1);
         s.Say("first " + std::to_string(s.grid->GetFirstRow()));
       }},
      {"a key brings the current row back",
       [](GridScene& s) {
         s.Press({VK_DOWN});
         s.Say(s.grid->GetItemRect(s.grid->GetCurSelItemID()).top >= s.grid->GetListRect().top ? "seen"
                                                                                               : "not seen");
       }},
      {"the first row",
       [](GridScene& s) {
         s.PressWith(VK_CONTROL, VK_HOME);
         s.Say("first " + std::to_string(s.grid->GetFirstRow()));
       }},
      {"an open editor scrolls with its cell",
       [](GridScene& s) {
         s.Edit(2, 2);
         s.grid->EnsureVisible(s.grid->GetRow(60), FALSE);
         CRect editor;
         s.grid->GetInPlaceWnd()->GetWindowRect(&editor);
         s.Say(editor.top == s.At(s.grid->GetItemRect({2, 2}).TopLeft()).y ? "over its cell" : "elsewhere");
       }},
      {"and takes keys out of sight",
       [](GridScene& s) { s.Type(_T("v")), s.Press({VK_RETURN}), s.SayCell(2, 2); }},
      {"a column far to the right is shown",
       [](GridScene& s) {
         s.Quietly([&] { s.grid->SetColsWidth(_T("400,400,400,400,400,400")), s.grid->AdjustLayout(); });
         s.Choose(1, 0);
         s.Press({VK_END});
         s.Say(s.grid->GetHorzScrollOffset() > 0 ? "scrolled" : "not scrolled");
       }},
      {"and the first again",
       [](GridScene& s) {
         s.Press({VK_HOME});
         s.Say(s.grid->GetHorzScrollOffset() > 0 ? "scrolled" : "not scrolled");
       }},
  };
}

}  // namespace lorv_test
