#include "tests/conformance/grid/grid_scene.h"

// Keys on closed cells: moving, selecting, and what Return and Tab stand for.

namespace lorv_test {

std::vector<GridStep> GridKeySteps() {
  return {
      {"a fresh grid stands on its first cell", [](GridScene&) {}},
      {"Right", [](GridScene& s) { s.Press({VK_RIGHT}); }},
      {"Down", [](GridScene& s) { s.Press({VK_DOWN}); }},
      {"Left", [](GridScene& s) { s.Press({VK_LEFT}); }},
      {"Left at the edge stays", [](GridScene& s) { s.Press({VK_LEFT}); }},
      {"Up", [](GridScene& s) { s.Press({VK_UP}); }},
      {"Up at the edge stays", [](GridScene& s) { s.Press({VK_UP}); }},
      {"End goes to the last column", [](GridScene& s) { s.Press({VK_END}); }},
      {"Right at the edge stays", [](GridScene& s) { s.Press({VK_RIGHT}); }},
      {"Home goes to the first column", [](GridScene& s) { s.Press({VK_HOME}); }},
      {"Ctrl and End", [](GridScene& s) { s.PressWith(VK_CONTROL, VK_END); }},
      {"Down on the last row stays", [](GridScene& s) { s.Press({VK_DOWN}); }},
      {"Ctrl and Home", [](GridScene& s) { s.PressWith(VK_CONTROL, VK_HOME); }},
      {"a page down", [](GridScene& s) { s.Press({VK_NEXT}); }},
      {"and up again", [](GridScene& s) { s.Press({VK_PRIOR}); }},
      {"Down along a column",
       [](GridScene& s) {
         s.Press({VK_DOWN, VK_DOWN, VK_DOWN});
       }},
  };
}

std::vector<GridStep> GridKeyStyleSteps() {
  return {
      {"Tab goes to the right", [](GridScene& s) { s.Press({VK_TAB}); }},
      {"Return goes down", [](GridScene& s) { s.Press({VK_RETURN}); }},
      {"Return to the right",
       [](GridScene& s) {
         s.grid->SetReturnToLeft(emReturnRight);
         s.Press({VK_RETURN});
       }},
      {"Tab down",
       [](GridScene& s) {
         s.grid->SetTabToLeft(emReturnDown);
         s.Press({VK_TAB});
       }},
      {"Tab as it is moves on",
       [](GridScene& s) {
         s.grid->SetTabToLeft(emReturnAsIs);
         s.Press({VK_TAB});
       }},
      {"and back with Shift", [](GridScene& s) { s.PressWith(VK_SHIFT, VK_TAB); }},
      {"Return as it is opens the editor",
       [](GridScene& s) {
         s.grid->SetReturnToLeft(emReturnAsIs);
         s.Press({VK_RETURN});
       }},
      {"Esc closes it", [](GridScene& s) { s.Press({VK_ESCAPE}); }},
      {"Return on the last row is Down where rows are added",
       [](GridScene& s) {
         s.grid->SetReturnToLeft(emReturnRight);
         s.grid->SetReturnAddNewRow(true);
         s.Choose(11, 0);
         s.Press({VK_RETURN});
       }},
      {"Down there too, and no row comes without an editor", [](GridScene& s) { s.Press({VK_DOWN}); }},
      {"a grid that is read-only keeps the style",
       [](GridScene& s) {
         s.grid->SetReadOnly(TRUE);
         s.Press({VK_RETURN});
       }},
  };
}

std::vector<GridStep> GridSelectionSteps() {
  return {
      {"Shift and Right extend", [](GridScene& s) { s.PressWith(VK_SHIFT, VK_RIGHT); }},
      {"Shift and Down extend", [](GridScene& s) { s.PressWith(VK_SHIFT, VK_DOWN); }},
      {"Shift and Left draw in", [](GridScene& s) { s.PressWith(VK_SHIFT, VK_LEFT); }},
      {"a key without Shift leaves one cell", [](GridScene& s) { s.Press({VK_DOWN}); }},
      {"Shift upwards from the middle",
       [](GridScene& s) {
         s.Choose(3, 3);
         s.PressWith(VK_SHIFT, VK_UP);
         s.PressWith(VK_SHIFT, VK_LEFT);
       }},
      {"Ctrl and A select all", [](GridScene& s) { s.PressWith(VK_CONTROL, 'A'); }},
      {"rows by program", [](GridScene& s) { s.grid->SelectRow(4); }},
      {"columns by program", [](GridScene& s) { s.grid->SelectColumn(2); }},
      {"corners of a range",
       [](GridScene& s) {
         s.grid->SetCurSel(CBCGPGridItemID(1, 1), lorv::kSelectFirstCorner, FALSE);
         s.grid->SetCurSel(CBCGPGridItemID(3, 2), lorv::kSelectOppositeCorner, FALSE);
       }},
      {"one cell more", [](GridScene& s) { s.grid->SetCurSel(CBCGPGridItemID(7, 5), lorv::kSelectAdd); }},
      {"rows of it",
       [](GridScene& s) {
         CArray<int, int> rows;
         std::string line = std::to_string(s.grid->GetSelectRows(rows)) + " rows";
         for (int i = 0; i < rows.GetSize(); ++i) line += " " + std::to_string(rows.GetAt(i));
         s.Say(line);
       }},
      {"columns of it",
       [](GridScene& s) {
         CArray<int, int> columns;
         std::string line = std::to_string(s.grid->GetSelectColumns(columns)) + " columns";
         for (int i = 0; i < columns.GetSize(); ++i) line += " " + std::to_string(columns.GetAt(i));
         s.Say(line);
       }},
      {"nothing is selected by the null id", [](GridScene& s) { s.grid->SetCurSel(CBCGPGridItemID(), 0); }},
      {"a key begins at the first cell then", [](GridScene& s) { s.Press({VK_DOWN}); }},
      {"first, last, next and previous",
       [](GridScene& s) {
         s.grid->MoveLast();
         s.grid->MoveNext();
         s.grid->MovePrevious();
         s.grid->MoveFirst();
       }},
      {"a row and a column that are not there",
       [](GridScene& s) {
         s.grid->SetRow(99);
         s.grid->SetCol(2);
       }},
  };
}

}  // namespace lorv_test
