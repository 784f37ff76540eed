#include "tests/conformance/grid/grid_scene.h"

// Cells of each kind: numbers, several lines, lists, check boxes, colours, buttons.

namespace lorv_test {

std::vector<GridStep> GridNumberSteps() {
  const auto number = [](GridScene& s, const _variant_t& value) {
    s.Quietly([&] { s.grid->SetValue(2, 1, value, FALSE); });
    s.Edit(2, 1);
  };
  return {
      {"digits typed into an integer stay one",
       [number](GridScene& s) {
         number(s, _variant_t(7));
         s.Type(_T("42"));
         s.Press({VK_RETURN});
         s.SayCell(2, 1);
       }},
      {"letters typed into one stand as a text",
       [number](GridScene& s) {
         number(s, _variant_t(7));
         s.Type(_T("ab"));
         s.Press({VK_RETURN});
         s.SayCell(2, 1);
       }},
      {"a fraction", [number](GridScene& s) { number(s, _variant_t(1.5)); }},
      {"takes digits",
       [](GridScene& s) {
         s.Type(_T("25"));
         s.Press({VK_RETURN});
         s.SayCell(2, 1);
       }},
      {"an empty cell takes a text",
       [number](GridScene& s) {
         number(s, _variant_t());
         s.Type(_T("x"));
         s.Press({VK_RETURN});
         s.SayCell(2, 1);
       }},
  };
}

std::vector<GridStep> GridLinesSteps() {
  return {
      {"a cell of several lines",
       [](GridScene& s) {
         s.Quietly([&] { s.grid->SetMultiLineItem(1, 1, 2); });
         s.Edit(1, 1);
       }},
      {"takes letters", [](GridScene& s) { s.Type(_T("ab")); }},
      {"Return ends it all the same",
       [](GridScene& s) {
         s.Press({VK_RETURN});
         s.SayCell(1, 1);
       }},
      {"a row that grows with its lines",
       [](GridScene& s) {
         s.Quietly([&] {
           s.grid->AddMultiLineRow(3, 1);
           s.grid->AdjustLayout();
         });
         s.grid->SetRow(12);
         s.Say(std::to_string(s.grid->GetRow(12)->GetLinesNumber()) + " lines");
       }},
      {"its cells open", [](GridScene& s) { s.Edit(12, 0), s.Type(_T("abc")); }},
      {"a text of marked lines counts them",
       [](GridScene& s) {
         s.Quietly([&] {
           s.grid->EndEditItem(FALSE);
           s.grid->SetValue(12, 2, _variant_t(_T("a\\nb\\nc\\nd")), FALSE);
         });
         dynamic_cast<CBCGPGridMultiLineRow*>(s.grid->GetRow(12))->OnItemUpdate(TRUE);
         s.driver.Settle();
         s.Say(std::to_string(s.grid->GetRow(12)->GetLinesNumber()) + " lines");
       }},
      {"a bold cell opens as others do",
       [](GridScene& s) {
         s.Put(3, 3, new CBCGPGridPresentationItem(_variant_t(_T("bold"))));
         s.grid->SetBoldItem(3, 3, true);
         s.Edit(3, 3);
       }},
  };
}

std::vector<GridStep> GridListSteps() {
  return {
      {"a cell with a list opens as a text",
       [](GridScene& s) {
         s.PutList(2, 2, 4);
         s.Edit(2, 2);
       }},
      {"F4 shows the list",
       [](GridScene& s) {
         s.Press({VK_F4});
         CComboBox* list = s.grid->GetRow(2)->GetComboWnd();
         s.Say(list != nullptr && list->GetDroppedState() != FALSE ? "shown" : "not shown");
       }},
      {"Return is Down by its style, there too; F4 chooses",
       [](GridScene& s) {
         s.Press({VK_RETURN, VK_F4});
       }},
      {"saving takes the choice over",
       [](GridScene& s) {
         s.grid->EndEditItem(TRUE);
         s.driver.Settle();
         s.SayCell(2, 2);
       }},
      {"the button opens editor and list", [](GridScene& s) { s.Click(s.Button(2, 2)); }},
      {"Esc closes the list and keeps the editor", [](GridScene& s) { s.Press({VK_ESCAPE}); }},
      {"Esc again closes that", [](GridScene& s) { s.Press({VK_ESCAPE}), s.SayCell(2, 2); }},
      {"a text that is no option can be typed",
       [](GridScene& s) {
         s.Edit(2, 2);
         s.Type(_T("own"));
         s.Press({VK_RETURN});
         s.SayCell(2, 2);
       }},
      {"options by a list of texts",
       [](GridScene& s) {
         const CString texts[] = {_T("C20"), _T("C30")};
         s.Say(std::to_string(s.grid->AddStringToList(s.grid->GetItem(2, 2), texts, 2)));
         s.Edit(2, 2);
         s.Press({VK_F4});
       }},
      {"Return as it is chooses",
       [](GridScene& s) {
         s.grid->SetReturnToLeft(emReturnAsIs);
         s.Press({VK_DOWN, VK_RETURN});
         s.grid->EndEditItem(TRUE);
         s.driver.Settle();
         s.SayCell(2, 2);
       }},
      {"thirty-one options are a list still",
       [](GridScene& s) {
         s.PutList(3, 2, 31);
         s.Say(s.grid->ShowItemStringList(s.grid->GetItemRect({3, 2}).CenterPoint()) ? "menu" : "list");
       }},
  };
}

std::vector<GridStep> GridCheckSteps() {
  return {
      {"Space turns a check box over",
       [](GridScene& s) {
         s.Put(1, 0, new CBCGPGridCheckItem(false));
         s.Choose(1, 0);
         s.Press({VK_SPACE});
         s.SayCell(1, 0);
       }},
      {"and back", [](GridScene& s) { s.Press({VK_SPACE}), s.SayCell(1, 0); }},
      {"so does a click", [](GridScene& s) { s.Click(s.Cell(1, 0)), s.SayCell(1, 0); }},
      {"it has no editor", [](GridScene& s) { s.Press({VK_F2}); }},
      {"one that cannot be edited stays",
       [](GridScene& s) {
         s.grid->SetItemReadOnly(1, 0, true);
         s.Press({VK_SPACE});
         s.SayCell(1, 0);
       }},
      {"the third state is drawn, not kept",
       [](GridScene& s) {
         auto* box = s.Put(2, 0, new CBCGPGridCheckItemEx(true));
         box->EnableNotAllSelIcon(true);
         s.Say("state " + std::to_string(box->DrawnState()));
         s.Choose(2, 0);
         s.Press({VK_SPACE});
         s.Say("state " + std::to_string(box->DrawnState()));
       }},
      {"Space on a text opens nothing but a blank",
       [](GridScene& s) { s.Choose(3, 0), s.Press({VK_SPACE}); }},
  };
}

std::vector<GridStep> GridColourSteps() {
  return {
      {"a colour opens as six digits",
       [](GridScene& s) {
         s.Put(4, 4, new CBCGPGridColorItemEx(RGB(1, 2, 3), nullptr));
         s.Edit(4, 4);
       }},
      {"digits and letters of its alphabet",
       [](GridScene& s) {
         s.Press({VK_HOME});
         s.Type(_T("FF"));
       }},
      {"G is none of them", [](GridScene& s) { s.Type(_T("G")); }},
      {"Return takes the colour over", [](GridScene& s) { s.Press({VK_RETURN}), s.SayCell(4, 4); }},
      {"Esc gives it up",
       [](GridScene& s) {
         s.Edit(4, 4);
         s.Press({VK_HOME});
         s.Type(_T("0"));
         s.Press({VK_ESCAPE});
         s.SayCell(4, 4);
       }},
      {"the same colour changes nothing", [](GridScene& s) { s.Edit(4, 4), s.Press({VK_RETURN}); }},
  };
}

std::vector<GridStep> GridButtonSteps() {
  return {
      {"a button runs the grid's hook",
       [](GridScene& s) {
         s.Quietly([&] { s.grid->SetButton(2, 2, true); });
         s.Click(s.Button(2, 2));
       }},
      {"beside it the cell is chosen",
       [](GridScene& s) {
         // Near its left edge: on a fine screen the button reaches over the middle.
         const CRect cell = s.grid->GetItemRect({2, 2});
         s.Click(s.At({static_cast<int>(cell.left) + 8, static_cast<int>(cell.CenterPoint().y)}));
       }},
      {"a hook that changes the text is a change",
       [](GridScene& s) {
         s.grid->on = [&s](const std::string& event) {
           if (event == "button 2,2") s.grid->GetItem(2, 2)->SetValue(_variant_t(_T("new")));
         };
         s.Click(s.Button(2, 2));
         s.grid->on = nullptr;
       }},
      {"buttons in a row open no editor",
       [](GridScene& s) {
         auto* item = s.Put(3, 3, new CBCGPGridButtonItem(_variant_t(), 2));
         item->AppendButton(_T("+"));
         item->AppendButton(_T("-"));
         s.Choose(3, 3);
         s.Press({VK_F2});
       }},
      {"a press on one runs the hook", [](GridScene& s) { s.Click(s.Cell(3, 3)); }},
      {"a button that is off runs nothing",
       [](GridScene& s) {
         dynamic_cast<CBCGPGridButtonItem*>(s.grid->GetItem(2, 2))->EnableButton(false);
         s.Click(s.Button(2, 2));
       }},
      {"a cell that is off neither",
       [](GridScene& s) {
         s.grid->GetItem(2, 2)->Enable(FALSE);
         s.Click(s.Button(2, 2));
       }},
  };
}

}  // namespace lorv_test
