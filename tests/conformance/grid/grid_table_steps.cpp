#include "tests/conformance/grid/grid_scene.h"

// Rows and columns that are hidden, merged, inserted, taken out and sorted while the user stands among them.

namespace lorv_test {

std::vector<GridStep> GridHidingSteps() {
  return {
      {"a hidden row is passed over",
       [](GridScene& s) {
         s.grid->SetRowVisible(2, false);
         s.grid->SetRowVisible(3, false);
         s.Quietly([&] { s.grid->AdjustLayout(); });
         s.Choose(1, 1);
         s.Press({VK_DOWN});
       }},
      {"upwards, too", [](GridScene& s) { s.Press({VK_UP}); }},
      {"it has no place",
       [](GridScene& s) { s.Say(s.grid->GetRowRect(2).IsRectEmpty() != FALSE ? "none" : "some"); }},
      {"a click below reaches the row that is seen there", [](GridScene& s) { s.Click(s.Cell(4, 2)); }},
      {"an editor walks over it",
       [](GridScene& s) {
         s.Edit(1, 1);
         s.Type(_T("x"));
         s.Press({VK_RETURN});
       }},
      {"shown again",
       [](GridScene& s) {
         s.grid->SetRowVisible(2, true);
         s.Quietly([&] { s.grid->AdjustLayout(); });
         s.Choose(1, 1);
         s.Press({VK_DOWN});
       }},
      {"rows that come do not move the hidden numbers",
       [](GridScene& s) {
         s.Quietly([&] { s.grid->InsertRows(0, 1); });
         s.Say(std::string(s.grid->IsRowHidden(3) ? "3" : "-") + (s.grid->IsRowHidden(4) ? "4" : "-"));
       }},
      {"a hidden column is passed over",
       [](GridScene& s) {
         s.grid->SetColumnVisible(2, FALSE);
         s.Quietly([&] { s.grid->AdjustLayout(); });
         s.Choose(1, 1);
         s.Press({VK_RIGHT});
       }},
      {"back, too", [](GridScene& s) { s.Press({VK_LEFT}); }},
      {"its width is kept",
       [](GridScene& s) {
         s.Say(s.grid->GetColsWidth().ToUtf8());
         s.Say(s.grid->GetColumnVisible(2) != FALSE ? "shown" : "hidden");
       }},
      {"with the first column hidden Home goes to the second",
       [](GridScene& s) {
         s.grid->SetColumnVisible(0, FALSE);
         s.Quietly([&] { s.grid->AdjustLayout(); });
         s.Press({VK_HOME});
       }},
      {"columns hidden by a width of 0",
       [](GridScene& s) {
         s.Quietly([&] { s.grid->InsertColumns(_T("n0,n1"), _T("50,0"), 0); });
         s.Say(s.grid->GetColsWidth().ToUtf8());
         s.Say(s.grid->GetColumnVisible(1) != FALSE ? "shown" : "hidden");
       }},
  };
}

std::vector<GridStep> GridMergingSteps() {
  return {
      {"merged cells are entered as one",
       [](GridScene& s) {
         s.Quietly([&] { s.grid->MergeRange(CBCGPGridRange(1, 1, 2, 3)); });
         s.Choose(1, 0);
         s.Press({VK_RIGHT});
       }},
      {"and left as one", [](GridScene& s) { s.Press({VK_RIGHT}); }},
      {"from the side", [](GridScene& s) { s.Choose(2, 3), s.Press({VK_LEFT}); }},
      {"from above and below",
       [](GridScene& s) { s.Press({VK_UP}), s.Press({VK_DOWN}), s.Press({VK_DOWN}); }},
      {"a click anywhere in them is one on the first",
       [](GridScene& s) {
         const CRect block = s.grid->GetItemRect({3, 2});
         s.Click(s.At({static_cast<int>(block.right) - 8, static_cast<int>(block.bottom) - 8}));
       }},
      {"they are edited as one",
       [](GridScene& s) {
         s.Type(_T("x"));
         s.Press({VK_RETURN});
         s.SayCell(1, 1);
         s.SayCell(2, 2);
       }},
      {"their ranges are told",
       [](GridScene& s) {
         CList<CBCGPGridRange, const CBCGPGridRange&> blocks;
         const long long count = s.grid->GetUnionCells(blocks);
         const CBCGPGridRange& block = blocks.GetHead();
         s.Say(std::to_string(count) + " from " + std::to_string(block.m_nTop) + "," +
               std::to_string(block.m_nLeft) + " to " + std::to_string(block.m_nBottom) + "," +
               std::to_string(block.m_nRight));
       }},
      {"a row inside them goes",
       [](GridScene& s) {
         s.Quietly([&] { s.grid->DeleteRows(2, 1); });
         const CBCGPGridRange block = s.grid->GetMergedRange({1, 1});
         s.Say("down to " + std::to_string(block.m_nBottom));
       }},
      {"taken apart again",
       [](GridScene& s) {
         s.Quietly([&] { s.grid->UnmergeAt({1, 1}); });
         s.Choose(1, 0);
         s.Press({VK_RIGHT, VK_RIGHT});
       }},
  };
}

static std::vector<GridStep> FirstRowSteps() {
  return {
      {"rows put in above the current cell take the user to the first",
       [](GridScene& s) {
         s.Choose(4, 2);
         s.Say(std::to_string(s.grid->InsertRows(2, 2)));
       }},
      {"rows appended leave the user where he is",
       [](GridScene& s) { s.Choose(4, 2), s.grid->AppendRows(2); }},
      {"rows put in past the end", [](GridScene& s) { s.Say(std::to_string(s.grid->InsertRows(99, 1))); }},
      {"a row above goes", [](GridScene& s) { s.Choose(5, 1), s.grid->DeleteRows(0, 1); }},
      {"the current row goes", [](GridScene& s) { s.Say(std::to_string(s.grid->RemoveCurRow())); }},
      {"more rows than there are",
       [](GridScene& s) {
         s.Choose(0, 0);
         s.Say(std::to_string(s.grid->DeleteRows(s.grid->GetRowCount() - 2, 9)));
       }},
      {"the selected rows go",
       [](GridScene& s) {
         s.Quietly([&] {
           s.grid->SetCurSel(CBCGPGridItemID(5, 1));
           s.grid->SetCurSel(CBCGPGridItemID(2, 1), lorv::kSelectAdd);
           s.grid->SetCurSel(CBCGPGridItemID(2, 2), lorv::kSelectAdd);
         });
         s.Say(std::to_string(s.grid->DeleteSelectedRows()));
         s.SayColumn(1);
       }},
      {"the row under the editor goes",
       [](GridScene& s) {
         s.Edit(3, 1);
         s.Type(_T("x"));
         s.grid->DeleteRows(3, 1);
         s.SayColumn(1);
       }},
  };
}

std::vector<GridStep> GridRowSteps() {
  return Joined(
      FirstRowSteps(),
      {
          {"a column goes, its cells close up",
           [](GridScene& s) {
             s.Choose(2, 4);
             s.Say(std::to_string(s.grid->DeleteColumn(1)));
             s.SayColumn(1);
           }},
          {"a column comes, with cells",
           [](GridScene& s) {
             s.Say(std::to_string(s.grid->AddColumn(_T("new"), 60.9, RUNTIME_CLASS(CBCGPGridCheckItem))));
             s.Say(s.grid->GetColsWidth().ToUtf8());
           }},
          {"rows are sorted, the user goes with his row",
           [](GridScene& s) {
             s.Choose(1, 0);
             s.grid->Sort(0, FALSE);
             s.SayColumn(0);
           }},
          {"and back", [](GridScene& s) { s.grid->Sort(0, TRUE), s.SayColumn(0); }},
          {"all cells are cleared", [](GridScene& s) { s.grid->ClearAll(), s.SayColumn(0); }},
          {"a selection that outlives a layout",
           [](GridScene& s) {
             s.grid->SetDefaultSel(true);
             s.grid->SelectRow(2);
             s.grid->AdjustLayout();
             s.grid->SetDefaultSel(false);
           }},
          {"one that does not", [](GridScene& s) { s.grid->SelectRow(2), s.grid->AdjustLayout(); }},
          {"all rows go", [](GridScene& s) { s.grid->RemoveAll(); }},
          {"keys on an empty table",
           [](GridScene& s) {
             s.Press({VK_DOWN, VK_F2, VK_RETURN, VK_HOME}), s.Type(_T("x"));
           }},
          {"the first row of an empty table", [](GridScene& s) { s.grid->AppendRows(1); }},
      });
}

}  // namespace lorv_test
