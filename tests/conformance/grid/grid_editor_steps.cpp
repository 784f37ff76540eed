#include "tests/conformance/grid/grid_scene.h"

// Typing into cells, the caret in an open editor, and walking from cell to cell with it.

namespace lorv_test {

static std::vector<GridStep> FirstTypingSteps() {
  return {
      {"a letter opens the editor in place of the text", [](GridScene& s) { s.Type(_T("x")); }},
      {"more letters", [](GridScene& s) { s.Type(_T("yz")); }},
      {"Return takes them over and walks down", [](GridScene& s) { s.Press({VK_RETURN}); }},
      {"the text stands in its cell", [](GridScene& s) { s.SayCell(0, 0); }},
      {"Esc leaves the cell as it was",
       [](GridScene& s) {
         s.Type(_T("q"));
         s.Press({VK_ESCAPE});
         s.SayCell(1, 0);
       }},
      {"F2 opens it with the whole text selected", [](GridScene& s) { s.Press({VK_F2}); }},
      {"a letter replaces all of it", [](GridScene& s) { s.Type(_T("w")); }},
      {"Tab takes it over and walks on",
       [](GridScene& s) {
         s.Press({VK_END, VK_TAB});
         s.SayCell(1, 0);
       }},
      {"an editor that ends unchanged changes nothing", [](GridScene& s) { s.Press({VK_RETURN}); }},
      {"a click on another cell takes the text over",
       [](GridScene& s) {
         s.Type(_T("m"));
         s.Click(s.Cell(5, 2));
       }},
      {"the cell has it", [](GridScene& s) { s.SayColumn(1); }},
      {"a capital begins the editor", [](GridScene& s) { s.Choose(5, 2), s.Type(_T("K")); }},
  };
}

std::vector<GridStep> GridTypingSteps() {
  return Joined(FirstTypingSteps(), {
                                        {"Back takes it",
                                         [](GridScene& s) {
                                           s.Press({VK_BACK});
                                           s.Type(_T("ab"));
                                           s.Press({VK_BACK});
                                         }},
                                        {"saved by program",
                                         [](GridScene& s) {
                                           s.grid->EndEditItem(TRUE);
                                           s.driver.Settle();
                                           s.SayCell(5, 2);
                                         }},
                                        {"not saved by program",
                                         [](GridScene& s) {
                                           s.Edit(5, 2);
                                           s.Type(_T("zz"));
                                           s.grid->EndEditItem(FALSE);
                                           s.SayCell(5, 2);
                                         }},
                                        {"a value set under the editor closes it",
                                         [](GridScene& s) {
                                           s.Edit(5, 2);
                                           s.Type(_T("zz"));
                                           s.grid->SetValue(5, 2, _variant_t(_T("set")), TRUE);
                                           s.SayCell(5, 2);
                                         }},
                                        {"an empty text is one too",
                                         [](GridScene& s) {
                                           s.Edit(5, 2);
                                           s.Press({VK_DELETE, VK_RETURN});
                                           s.SayCell(5, 2);
                                         }},
                                    });
}

std::vector<GridStep> GridCaretSteps() {
  const auto open = [](GridScene& s, LPCTSTR text, int start, int end) {
    s.Quietly([&] { s.grid->SetValue(3, 3, _variant_t(text), FALSE); });
    s.Edit(3, 3);
    if (auto* edit = dynamic_cast<CEdit*>(s.grid->GetInPlaceWnd())) edit->SetSel(start, end);
  };
  return {
      {"Left of all collapses to the start",
       [open](GridScene& s) { open(s, _T("abc"), 0, 3), s.Press({VK_LEFT}); }},
      {"a second Left leaves", [](GridScene& s) { s.Press({VK_LEFT}); }},
      {"Right of all collapses to the end",
       [open](GridScene& s) { open(s, _T("abc"), 0, 3), s.Press({VK_RIGHT}); }},
      {"a second Right leaves", [](GridScene& s) { s.Press({VK_RIGHT}); }},
      {"Right before the last character leaves",
       [open](GridScene& s) { open(s, _T("abc"), 2, 2), s.Press({VK_RIGHT}); }},
      {"Right before that moves the caret",
       [open](GridScene& s) { open(s, _T("abc"), 1, 1), s.Press({VK_RIGHT}); }},
      {"Left behind the first character moves the caret",
       [open](GridScene& s) { open(s, _T("abc"), 1, 1), s.Press({VK_LEFT}); }},
      {"Home collapses a selection", [open](GridScene& s) { open(s, _T("abc"), 1, 3), s.Press({VK_HOME}); }},
      {"End collapses a selection", [open](GridScene& s) { open(s, _T("abc"), 0, 2), s.Press({VK_END}); }},
      {"Home moves the caret", [open](GridScene& s) { open(s, _T("abc"), 2, 2), s.Press({VK_HOME}); }},
      {"Shift and Left select and never leave",
       [open](GridScene& s) {
         open(s, _T("ab"), 1, 1);
         s.PressWith(VK_SHIFT, VK_LEFT);
         s.PressWith(VK_SHIFT, VK_LEFT);
       }},
      {"Shift and Down stay",
       [open](GridScene& s) { open(s, _T("ab"), 1, 1), s.PressWith(VK_SHIFT, VK_DOWN); }},
      {"Up leaves", [open](GridScene& s) { open(s, _T("ab"), 1, 1), s.Press({VK_UP}); }},
      {"Down leaves", [open](GridScene& s) { open(s, _T("ab"), 1, 1), s.Press({VK_DOWN}); }},
      {"Left in an empty editor leaves", [open](GridScene& s) { open(s, _T(""), 0, 0), s.Press({VK_LEFT}); }},
      {"Right of a style counts as Right",
       [open](GridScene& s) {
         s.grid->SetReturnToLeft(emReturnRight);
         open(s, _T("abc"), 0, 3);
         s.Press({VK_RETURN});
       }},
      {"and leaves only at the end", [](GridScene& s) { s.Press({VK_RETURN}); }},
  };
}

std::vector<GridStep> GridWalkSteps() {
  return {
      {"typed rows go down a column",
       [](GridScene& s) {
         s.Type(_T("u"));
         s.Press({VK_RETURN});
         s.Type(_T("v"));
         s.Press({VK_RETURN});
         s.Type(_T("w"));
         s.Press({VK_RETURN});
         s.SayColumn(0);
       }},
      {"a row is added at the end",
       [](GridScene& s) {
         s.grid->SetReturnAddNewRow(true);
         s.Edit(11, 1);
         s.Type(_T("n"));
         s.Press({VK_RETURN});
         s.SayColumn(1);
       }},
      {"and another by Down", [](GridScene& s) { s.Press({VK_DOWN}); }},
      {"none while the grid is read-only",
       [](GridScene& s) {
         s.grid->EndEditItem(FALSE);
         s.grid->SetReadOnly(TRUE);
         s.Press({VK_RETURN});
         s.grid->SetReadOnly(FALSE);
       }},
      {"editing by program", [](GridScene& s) { s.grid->SetCurEditingItem(2, 4); }},
      {"a message to move on without an editor",
       [](GridScene& s) {
         s.grid->EndEditItem(FALSE);
         s.grid->PostMessage(lorv::kMessageNavigate, 8);
         s.driver.Settle();
       }},
      {"in no direction it opens the editor",
       [](GridScene& s) {
         s.grid->EndEditItem(FALSE);
         s.grid->SendMessage(lorv::kMessageNavigate, 3);
       }},
      {"upwards", [](GridScene& s) { s.grid->SendMessage(lorv::kMessageNavigate, 1); }},
      {"with the focus elsewhere nothing moves",
       [](GridScene& s) {
         s.grid->EndEditItem(FALSE);
         s.outside.SetFocus();
         s.driver.Settle();
         s.grid->SendMessage(lorv::kMessageNavigate, 2);
       }},
  };
}

std::vector<GridStep> GridCopySteps() {
  return {
      {"Ctrl and D copy nothing while it is off",
       [](GridScene& s) { s.Choose(2, 2), s.PressWith(VK_CONTROL, 'D'); }},
      {"Ctrl and D copy the cell above",
       [](GridScene& s) {
         s.grid->SetShortCut(true);
         s.PressWith(VK_CONTROL, 'D');
         s.SayColumn(2);
       }},
      {"nothing stands above the first row",
       [](GridScene& s) { s.Choose(0, 2), s.PressWith(VK_CONTROL, 'D'); }},
      {"Ctrl and B copy the row above", [](GridScene& s) { s.Choose(5, 2), s.PressWith(VK_CONTROL, 'B'); }},
      {"but for columns that are left out",
       [](GridScene& s) {
         CUIntArray out;
         out.Add(1);
         out.Add(4);
         s.grid->SetNotShortCutCol(out);
         s.Choose(8, 1);
         s.PressWith(VK_CONTROL, 'B');
       }},
      {"Ctrl and D ask for none of them", [](GridScene& s) { s.PressWith(VK_CONTROL, 'D'); }},
      {"a cell that cannot be edited keeps its value",
       [](GridScene& s) {
         s.grid->SetItemReadOnly(9, 1, true);
         s.Choose(9, 1);
         s.PressWith(VK_CONTROL, 'D');
         s.SayColumn(1);
       }},
      {"in an editor the typed text is given up",
       [](GridScene& s) {
         s.Edit(10, 3);
         s.Type(_T("zz"));
         s.PressWith(VK_CONTROL, 'D');
         s.SayCell(10, 3);
       }},
  };
}

static std::vector<GridStep> FirstLockedSteps() {
  return {
      {"a cell that is read-only does not open",
       [](GridScene& s) {
         s.grid->GetItem(1, 1)->SetReadOnly();
         s.Choose(1, 1);
         s.Press({VK_F2});
         s.Type(_T("x"));
       }},
      {"nor one that cannot be edited",
       [](GridScene& s) {
         s.grid->SetItemReadOnly(2, 1, true);
         s.Choose(2, 1);
         s.Press({VK_F2});
       }},
      {"nor one that is off",
       [](GridScene& s) {
         s.grid->GetItem(3, 1)->Enable(FALSE);
         s.Choose(3, 1);
         s.Press({VK_F2});
       }},
      {"a walk ends on a cell that is locked twice",
       [](GridScene& s) {
         s.grid->GetItem(2, 1)->SetReadOnly();
         s.grid->GetItem(1, 1)->SetReadOnly(FALSE);
         s.Edit(1, 1);
         s.Press({VK_RETURN});
       }},
      {"a row that is read-only",
       [](GridScene& s) { s.grid->SetRowReadOnly(5, true), s.Choose(5, 0), s.Press({VK_F2}); }},
      {"and editable again",
       [](GridScene& s) {
         s.grid->SetRowReadOnly(5, false);
         s.Press({VK_F2});
       }},
  };
}

std::vector<GridStep> GridLockedSteps() {
  return Joined(FirstLockedSteps(), {
                                        {"a column that is read-only",
                                         [](GridScene& s) {
                                           s.grid->SetColReadOnly(4, true);
                                           s.Choose(6, 4);
                                           s.Press({VK_F2});
                                         }},
                                        {"a grid that is read-only",
                                         [](GridScene& s) {
                                           s.grid->SetReadOnly(TRUE);
                                           s.Choose(6, 0);
                                           s.Press({VK_F2});
                                           s.Type(_T("x"));
                                           s.grid->SetReadOnly(FALSE);
                                         }},
                                        {"a cell of the read-only class",
                                         [](GridScene& s) {
                                           s.Put(7, 0, new CBCGPGridReadOnlyItem(_variant_t(_T("grey"))));
                                           s.Choose(7, 0);
                                           s.Press({VK_F2});
                                           s.SayCell(7, 0);
                                         }},
                                        {"a click on a column that the mouse passes over",
                                         [](GridScene& s) {
                                           s.grid->SetAllowFocus(3, false);
                                           s.Click(s.Cell(2, 3));
                                         }},
                                        {"and again when it does not",
                                         [](GridScene& s) {
                                           s.grid->SetAllowFocus(true);
                                           s.Click(s.Cell(2, 3));
                                         }},
                                    });
}

}  // namespace lorv_test
