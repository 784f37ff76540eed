#include <utility>

#include "framework/objects/exceptions.h"
#include "framework/windows/controls.h"
#include "framework/windows/dialog.h"
#include "tests/conformance/grid/bridge_scene.h"

// Edits as a dialog hears them: their order, what it may refuse, and what becomes of a table whose dialog
// does as it likes in the middle of one.

namespace lorv_test {
namespace {

// Edits a cell and leaves it by a key.
std::function<void(BridgeScene&)> Leaving(int row, int column, int key) {
  return [=](BridgeScene& s) {
    s.Edit(row, column, _T("typed"));
    s.driver.Press(key);
  };
}

std::function<void(BridgeScene&)> Refusing(const std::set<int>& events, int key = VK_RETURN) {
  return [=](BridgeScene& s) {
    s.Edit(1, 1, _T("typed"));
    s.sheet->cancelled = events;
    s.driver.Press(key);
    s.SayHeard();
    s.SayCell(1, 1);
  };
}

// Leaves an edited cell, and does it in the first event of that number.
std::function<void(BridgeScene&)> Within(int event, const std::function<void(BridgeScene&)>& action) {
  return [=](BridgeScene& s) {
    s.Edit(1, 1, _T("typed"));
    s.When(event, [&s, action] { action(s); });
    s.driver.Press(VK_RETURN);
  };
}

void Empty(BridgeScene& s) {
  s.grid->RemoveAll();
}

void EndGrid(BridgeScene& s) {
  s.grid->DestroyWindow();
}

void EndSheet(BridgeScene& s) {
  s.sheet->DestroyWindow();
}

void Rebuild(BridgeScene& s) {
  s.grid->ReDim(2, 2);
}

constexpr lorv::DialogTemplate kQuestion = {300, _T("question"), 80, 40, _T("font"), 9, {}};

void Ask(BridgeScene& s) {
  CDialog question(kQuestion, s.sheet.get());
  s.driver.WhenModal([&] { s.driver.Press(VK_ESCAPE); });
  s.Say("answered " + std::to_string(question.DoModal()));
}

}  // namespace

std::vector<BridgeStep> BridgeOrderSteps() {
  return {
      {"one edit, from a key to the next cell", Leaving(0, 1, VK_DOWN)},
      {"the same to the right, with the caret at the end", Leaving(1, 0, VK_RIGHT)},
      {"the same to the left, with the caret at the start",
       [](BridgeScene& s) {
         s.Edit(1, 1, _T("typed"));
         if (auto* const edit = dynamic_cast<CEdit*>(s.grid->GetInPlaceWnd())) edit->SetSel(0, 0);
         s.driver.Press(VK_LEFT);
       }},
      {"the same upwards", Leaving(2, 1, VK_UP)},
      {"by Tab", Leaving(1, 0, VK_TAB)},
      {"Return above the last row", Leaving(1, 0, VK_RETURN)},
      {"Return on the last row", Leaving(3, 1, VK_RETURN)},
      {"Return on the last row, which adds one",
       [](BridgeScene& s) {
         s.grid->SetReturnAddNewRow(true);
         Leaving(3, 1, VK_RETURN)(s);
       }},
      {"Return that moves to the right",
       [](BridgeScene& s) {
         s.grid->SetReturnToLeft(emReturnRight);
         Leaving(1, 0, VK_RETURN)(s);
       }},
      {"Escape",
       [](BridgeScene& s) {
         Leaving(1, 1, VK_ESCAPE)(s);
         s.SayHeard();
         s.SayCell(1, 1);
       }},
      {"a value that was not changed",
       [](BridgeScene& s) {
         s.Choose(1, 1);
         s.Press({VK_F2, VK_RETURN});
       }},
      {"saved by the program",
       [](BridgeScene& s) {
         s.Edit(1, 1, _T("typed"));
         s.Say("result " + std::to_string(s.grid->EndEditItem(TRUE)));
       }},
      {"given up by the program",
       [](BridgeScene& s) {
         s.Edit(1, 1, _T("typed"));
         s.Say("result " + std::to_string(s.grid->EndEditItem(FALSE)));
       }},
      {"another cell by the program",
       [](BridgeScene& s) {
         s.Edit(1, 1, _T("typed"));
         s.grid->SetCurSel(CBCGPGridItemID(3, 2));
       }},
      {"a cell that is read-only",
       [](BridgeScene& s) {
         s.grid->SetItemReadOnly(1, 1, true);
         s.Choose(1, 1);
         s.Press({VK_F2, VK_RETURN});
       }},
  };
}

std::vector<BridgeStep> BridgeCancelSteps() {
  return {
      {"an edit that the dialog refuses", Refusing({5})},
      {"one whose update is refused", Refusing({8})},
      {"both refused", Refusing({5, 8})},
      {"refused in an empty cell",
       [](BridgeScene& s) {
         s.grid->SetValue(1, 1, _variant_t(), FALSE);
         Refusing({5})(s);
       }},
      {"an update refused in an empty cell",
       [](BridgeScene& s) {
         s.grid->SetValue(1, 1, _variant_t(), FALSE);
         Refusing({8})(s);
       }},
      {"a table that is not updated",
       [](BridgeScene& s) {
         s.grid->SetAllowUpdate(false);
         Refusing({})(s);
       }},
      {"a table that is not updated, refused",
       [](BridgeScene& s) {
         s.grid->SetAllowUpdate(false);
         Refusing({5, 8})(s);
       }},
      {"the old value written over by the dialog",
       [](BridgeScene& s) {
         s.sheet->on_old = [](VARIANT& old) {
           VariantClear(&old);
           old.vt = VT_I4;
           old.lVal = 7;
         };
         Refusing({5})(s);
       }},
      {"Delete that the dialog holds", Refusing({26}, VK_DELETE)},
      {"Home that the dialog holds", Refusing({26}, VK_HOME)},
      {"Down cannot be held", Refusing({26}, VK_DOWN)},
      {"Return cannot be held", Refusing({26}, VK_RETURN)},
      {"Tab cannot be held", Refusing({26}, VK_TAB)},
      {"a change of the cell that is refused goes on", Refusing({63})},
      {"a selection that is refused goes on", Refusing({15})},
  };
}

std::vector<BridgeStep> BridgeHostileSteps() {
  return {
      {"emptied before the update of a column", Within(5, Empty)},
      {"emptied before the update", Within(8, Empty)},
      {"emptied after the update of a column", Within(1, Empty)},
      {"emptied after the edit of a column", Within(25, Empty)},
      {"emptied after the update", Within(4, Empty)},
      {"emptied before the cell changes", Within(63, Empty)},
      {"emptied as the selection changes", Within(15, Empty)},
      {"emptied as the cell changes", Within(11, Empty)},
      {"emptied by a key", Within(-602, Empty)},
      {"emptied before the edit", Within(26, Empty)},
      {"made anew before the update of a column", Within(5, Rebuild)},
      {"made anew after the edit of a column", Within(25, Rebuild)},
      {"made anew as the cell changes", Within(11, Rebuild)},
      {"the grid ends before the update of a column", Within(5, EndGrid)},
      {"the grid ends after the edit of a column", Within(25, EndGrid)},
      {"the grid ends as the cell changes", Within(11, EndGrid)},
      {"the grid ends by a key", Within(-602, EndGrid)},
      {"the dialog ends before the update", Within(8, EndSheet)},
      {"the dialog ends after the update", Within(4, EndSheet)},
      {"a question before the update of a column", Within(5, Ask)},
      {"a question after the update", Within(4, Ask)},
      {"an exception of the framework", Within(5, [](BridgeScene&) { throw new CInvalidArgException; })},
      {"a text thrown", Within(1, [](BridgeScene&) { throw static_cast<LPCTSTR>(_T("raised")); })},
      {"a number thrown", Within(4, [](BridgeScene&) { throw 5; })},
      {"another cell chosen in the middle",
       Within(1, [](BridgeScene& s) { s.grid->SetCurSel(CBCGPGridItemID(3, 2)); })},
      {"the row deleted in the middle", Within(1, [](BridgeScene& s) { s.grid->DeleteRows(1, 1); })},
      {"a row inserted above in the middle", Within(1, [](BridgeScene& s) { s.grid->InsertRows(0, 1); })},
      {"the editor ended in the middle", Within(26, [](BridgeScene& s) { s.grid->EndEditItem(FALSE); })},
  };
}

}  // namespace lorv_test
