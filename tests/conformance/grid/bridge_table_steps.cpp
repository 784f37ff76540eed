#include "grid/records/memory_records.h"
#include "tests/conformance/grid/bridge_scene.h"

// What a dialog hears as its program changes the table, scrolls it and has it painted.

namespace lorv_test {
namespace {

void Repaint(BridgeScene& s) {
  s.grid->Invalidate();
  s.grid->UpdateWindow();
  s.driver.Settle();
}

}  // namespace

std::vector<BridgeStep> BridgeTableSteps() {
  return {
      {"another size", [](BridgeScene& s) { s.grid->ReDim(2, 5); }},
      {"no rows", [](BridgeScene& s) { s.grid->ReDim(-3, 2); }},
      {"a size without columns changes nothing", [](BridgeScene& s) { s.grid->ReDim(2, 0); }},
      {"records bound to it",
       [](BridgeScene& s) {
         lorv::MemoryRecords records({_T("a"), _T("b")});
         for (int i = 0; i < 2; ++i) records.Add({_variant_t(i), _variant_t(_T("r"))});
         s.grid->SetDataSource(&records);
         s.SayHeard();
         s.SayCell(1, 0);
       }},
      {"rows deleted from under the current cell",
       [](BridgeScene& s) {
         s.Choose(2, 1);
         s.grid->DeleteRows(1, 3);
       }},
      {"a row appended", [](BridgeScene& s) { s.Say("row " + std::to_string(s.grid->Append())); }},
      {"all rows removed", [](BridgeScene& s) { s.grid->RemoveAll(); }},
      {"a bookmark", [](BridgeScene& s) { s.grid->SetBookmark(_variant_t(2L)); }},
      {"a bookmark of another kind", [](BridgeScene& s) { s.grid->SetBookmark(_variant_t(_T("2"))); }},
      {"asking for a bookmark moves there", [](BridgeScene& s) { s.grid->RowBookmark(3); }},
      {"a message that the program posts to itself", [](BridgeScene& s) { s.grid->PostMsg(77); }},
      {"a filter typed",
       [](BridgeScene& s) {
         s.grid->EnableFilterBar();
         s.Forget();
         s.grid->SetFilterBarText(0, _T("b"));
       }},
      {"a drag that begins at the current cell",
       [](BridgeScene& s) {
         s.Choose(2, 1);
         s.grid->OnBeginDrag(CPoint(100, 50));
       }},
      {"an option chosen",
       [](BridgeScene& s) {
         s.Choose(2, 1);
         s.grid->OnComboItemSelect();
       }},
      {"a value set by the program", [](BridgeScene& s) { s.grid->SetValue(1, 1, _variant_t(_T("set"))); }},
      {"a search",
       [](BridgeScene& s) {
         s.Say("row " + std::to_string(s.grid->Find(0, 1, _variant_t(_T("C1")), 0, 1, 0)));
         s.Say("row " + std::to_string(s.grid->Find(0, 1, _variant_t(_T("C1")), 0, 1, 10)));
       }},
  };
}

std::vector<BridgeStep> BridgeScreenSteps() {
  return {
      {"scrolled down and back",
       [](BridgeScene& s) {
         s.Make(40, 3);
         s.Hear({28, 29});
         s.Forget();
         s.grid->ScrollTo(0, 5 * s.grid->GetRowHeight());
         s.driver.Settle();
         s.grid->ScrollTo(0, 5 * s.grid->GetRowHeight());
         s.driver.Settle();
         s.grid->ScrollTo(0, 0);
       }},
      {"scrolled to the right",
       [](BridgeScene& s) {
         s.Make(4, 12);
         s.Hear({28, 29});
         s.Forget();
         s.grid->ScrollTo(100, 0);
         s.driver.Settle();
         s.grid->ScrollTo(120, 0);
         s.driver.Settle();
         s.grid->ScrollTo(0, 0);
       }},
      {"cells asked for their style",
       [](BridgeScene& s) {
         s.Hear({36});
         s.grid->SetFetchStyle(true);
         Repaint(s);
       }},
      {"rows asked for their style",
       [](BridgeScene& s) {
         s.Hear({51});
         s.grid->SetFetchRowStyle(true);
         Repaint(s);
       }},
      {"painting",
       [](BridgeScene& s) {
         s.Hear({38});
         Repaint(s);
       }},
  };
}

std::vector<BridgeStep> BridgeHeightSteps() {
  return {
      {"rows of another height",
       [](BridgeScene& s) {
         s.Hear({13});
         s.grid->SetRowHeight(60);
         s.grid->AdjustLayout();
         Repaint(s);
         s.SayHeard();
         s.Say("height " + std::to_string(s.grid->GetRowHeight()));
       }},
      {"rows that the dialog keeps from getting lower",
       [](BridgeScene& s) {
         s.grid->SetRowHeight(60);
         s.grid->AdjustLayout();
         Repaint(s);
         s.Hear({13});
         s.Forget();
         s.sheet->cancelled = {13};
         s.grid->SetRowHeight(45);
         s.grid->AdjustLayout();
         Repaint(s);
         s.SayHeard();
         // The height that is given back counts from the next layout on.
         s.Say("height " + std::to_string(s.grid->GetRowHeight()));
         s.grid->AdjustLayout();
         Repaint(s);
         s.Say("height " + std::to_string(s.grid->GetRowHeight()));
       }},
      {"the mouse over a cell asks for its tip",
       [](BridgeScene& s) {
         s.Hear({49});
         s.sheet->tip = _T("from the dialog");
         s.driver.MoveMouse(s.Cell(2, 1));
       }},
      {"the mouse beside the cells asks for none",
       [](BridgeScene& s) {
         s.Hear({49});
         s.driver.MoveMouse(HeaderPoint(*s.grid, 1));
       }},
      {"the table emptied while it asks for styles",
       [](BridgeScene& s) {
         s.Hear({});
         s.grid->SetFetchRowStyle(true);
         s.When(51, [&s] { s.grid->RemoveAll(); });
         Repaint(s);
       }},
      {"the grid ended while it is painted",
       [](BridgeScene& s) {
         s.Hear({});
         s.When(38, [&s] { s.grid->DestroyWindow(); });
         Repaint(s);
       }},
  };
}

}  // namespace lorv_test
