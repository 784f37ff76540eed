#include "tests/conformance/grid/bridge_scene.h"

// Keys and the mouse as a dialog hears them.

namespace lorv_test {
namespace {

std::function<void(BridgeScene&)> Keys(std::initializer_list<int> keys) {
  return [pressed = std::vector<int>(keys)](BridgeScene& s) {
    s.Choose(1, 1);
    for (const int key : pressed) s.driver.Press(key);
  };
}

std::function<void(BridgeScene&)> With(int modifier, int key) {
  return [=](BridgeScene& s) {
    s.Choose(1, 1);
    s.driver.PressWith(modifier, key);
  };
}

std::function<void(BridgeScene&)> Clicking(int row, int column) {
  return [=](BridgeScene& s) { s.driver.Click(s.Cell(row, column)); };
}

std::function<void(BridgeScene&)> ClickingWith(int modifier, int row, int column) {
  return [=](BridgeScene& s) { s.driver.ClickWith(modifier, s.Cell(row, column)); };
}

// The right edge of a column, moved by so many pixels; its width afterwards.
void Resize(BridgeScene& s, int column, int by) {
  const POINT at = DividerPoint(*s.grid, column);
  s.driver.Drag(at, {at.x + by, at.y});
  s.SayHeard();
  s.Say("width " + std::to_string(s.grid->GetColumnsInfo().GetColumnWidth(column)));
}

}  // namespace

std::vector<BridgeStep> BridgeKeySteps() {
  return {
      {"Down", Keys({VK_DOWN})},
      {"Up", Keys({VK_UP})},
      {"Right and Left", Keys({VK_RIGHT, VK_LEFT})},
      {"Up at the first row", Keys({VK_UP, VK_UP})},
      {"Home and End", Keys({VK_HOME, VK_END})},
      {"a letter opens the editor",
       [](BridgeScene& s) {
         s.Choose(1, 1);
         s.sheet->muted.erase(-603);
         s.driver.Type(_T("x"));
       }},
      {"letters in the editor",
       [](BridgeScene& s) {
         s.Edit(1, 1, _T("typed"));
         s.driver.Type(_T("xy"));
       }},
      {"Shift and Down", With(VK_SHIFT, VK_DOWN)},
      {"Ctrl and Home", With(VK_CONTROL, VK_HOME)},
      {"Delete", Keys({VK_DELETE})},
      {"a key that the dialog changes into another",
       [](BridgeScene& s) {
         s.Choose(1, 1);
         s.sheet->on_key = [](short& key) { key = key == VK_DOWN ? VK_UP : key; };
         s.driver.Press(VK_DOWN);
       }},
      {"a key that the dialog takes away",
       [](BridgeScene& s) {
         s.Choose(1, 1);
         s.sheet->on_key = [](short& key) { key = 0; };
         s.driver.Press(VK_DOWN);
       }},
      {"a key changed while editing changes nothing",
       [](BridgeScene& s) {
         s.Edit(1, 1, _T("typed"));
         s.sheet->on_key = [](short& key) { key = VK_UP; };
         s.driver.Press(VK_DOWN);
       }},
  };
}

std::vector<BridgeStep> BridgeMouseSteps() {
  return {
      {"a click on another cell", Clicking(2, 1)},
      {"a click on the current cell", Clicking(0, 0)},
      {"a click with Shift", ClickingWith(VK_SHIFT, 2, 2)},
      {"a click with Ctrl", ClickingWith(VK_CONTROL, 2, 2)},
      {"a click with the right button", [](BridgeScene& s) { s.driver.RightClick(s.Cell(2, 1)); }},
      {"a double click on a cell that is read-only",
       [](BridgeScene& s) {
         s.grid->SetItemReadOnly(2, 1, true);
         s.driver.DoubleClick(s.Cell(2, 1));
       }},
      {"a click leaves an editor",
       [](BridgeScene& s) {
         s.Edit(1, 1, _T("typed"));
         s.driver.Click(s.Cell(3, 2));
       }},
      {"a click below the rows",
       [](BridgeScene& s) {
         const POINT last = s.Cell(3, 1);
         s.driver.Click({last.x, last.y + 80});
       }},
      {"a click in a column that the mouse passes over",
       [](BridgeScene& s) {
         s.grid->SetAllowFocus(1, false);
         s.driver.Click(s.Cell(2, 1));
       }},
      {"a click on a header", [](BridgeScene& s) { s.driver.Click(HeaderPoint(*s.grid, 1)); }},
      {"a click on a row header", [](BridgeScene& s) { s.driver.Click(RowHeaderPoint(*s.grid, 2)); }},
      {"a drag over cells", [](BridgeScene& s) { s.driver.Drag(s.Cell(1, 0), s.Cell(3, 2)); }},
  };
}

std::vector<BridgeStep> BridgePartSteps() {
  return {
      {"a check box",
       [](BridgeScene& s) {
         s.grid->ReplaceItem(2, 1, new CBCGPGridCheckItem(false), FALSE);
         s.Forget();
         s.driver.Click(s.Cell(2, 1));
       }},
      {"a button in a cell",
       [](BridgeScene& s) {
         s.grid->SetButton(2, 1, true);
         s.Choose(2, 1);
         s.driver.Click(ButtonPoint(*s.grid, 2, 1));
       }},
      {"a column made wider", [](BridgeScene& s) { Resize(s, 0, 30); }},
      {"a column made narrower", [](BridgeScene& s) { Resize(s, 0, -30); }},
      {"a column whose narrowing is refused",
       [](BridgeScene& s) {
         s.sheet->cancelled = {9};
         Resize(s, 0, -30);
       }},
      {"a column whose widening is refused all the same",
       [](BridgeScene& s) {
         s.sheet->cancelled = {9};
         Resize(s, 0, 30);
       }},
      {"the table emptied by a press",
       [](BridgeScene& s) {
         s.When(-605, [&s] { s.grid->RemoveAll(); });
         s.driver.Click(s.Cell(2, 1));
       }},
      {"the grid ended by a release",
       [](BridgeScene& s) {
         s.When(-607, [&s] { s.grid->DestroyWindow(); });
         s.driver.Click(s.Cell(2, 1));
       }},
      {"the grid ended by a click on a header",
       [](BridgeScene& s) {
         s.When(10, [&s] { s.grid->DestroyWindow(); });
         s.driver.Click(HeaderPoint(*s.grid, 1));
       }},
  };
}

}  // namespace lorv_test
