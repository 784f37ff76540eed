#include "tests/conformance/grid/grid_scene.h"

// Menus and dialogs over a cell, the focus, and handlers that rebuild or end the grid in the middle of what
// it does.

namespace lorv_test {
namespace {

constexpr UINT kFirstCommand = 57665;

void AnswerOnce(GridScene& s, const std::string& event, std::function<void()> work) {
  s.grid->on = [&s, event, work = std::move(work)](const std::string& reported) {
    if (reported != event) return;
    s.grid->on = nullptr;
    work();
  };
}

}  // namespace

std::vector<GridStep> GridMenuSteps() {
  return {
      {"a long list is a menu, and its choice a text",
       [](GridScene& s) {
         s.PutList(2, 2, 40);
         s.driver.AnswerMenu(kFirstCommand + 5);
         s.Click(s.Button(2, 2));
       }},
      {"saved with the editor",
       [](GridScene& s) {
         s.grid->EndEditItem(TRUE);
         s.driver.Settle();
         s.SayCell(2, 2);
       }},
      {"an entry of its second column",
       [](GridScene& s) {
         s.driver.AnswerMenu(kFirstCommand + 33);
         s.Click(s.Button(2, 2));
         s.grid->EndEditItem(TRUE);
         s.driver.Settle();
         s.SayCell(2, 2);
       }},
      {"a menu that is left chooses nothing",
       [](GridScene& s) {
         s.driver.AnswerMenu(0);
         s.Click(s.Button(2, 2));
         s.grid->EndEditItem(FALSE);
         s.SayCell(2, 2);
       }},
      {"two options are a list",
       [](GridScene& s) {
         s.PutList(3, 3, 2);
         s.Say(s.grid->ShowItemStringList(s.grid->GetItemRect({3, 3}).CenterPoint()) ? "menu" : "list");
       }},
      {"or a menu where all are",
       [](GridScene& s) {
         s.grid->SetDropdownShowOffset(true);
         s.driver.AnswerMenu(kFirstCommand);
         s.Click(s.Button(3, 3));
         s.grid->EndEditItem(TRUE);
         s.driver.Settle();
         s.SayCell(3, 3);
       }},
      {"without an editor the choice goes nowhere",
       [](GridScene& s) {
         s.driver.AnswerMenu(kFirstCommand + 1);
         s.Say(s.grid->ShowItemStringList(s.grid->GetItemRect({3, 3}).CenterPoint()) ? "menu" : "list");
         s.SayCell(3, 3);
       }},
      {"the table changes while the menu is up",
       [](GridScene& s) {
         s.driver.WhenMenu([&s] { s.grid->RemoveAll(); });
         s.driver.AnswerMenu(kFirstCommand + 1);
         s.Click(s.Button(2, 2));
       }},
  };
}

static std::vector<GridStep> FirstDialogSteps() {
  return {
      {"a window is placed at the current cell",
       [](GridScene& s) {
         s.Choose(1, 1);
         CWnd window;
         window.Create(nullptr, nullptr, WS_POPUP, CRect(0, 0, 90, 50), &s.frame, 0);
         s.grid->ShowDlg(&window);
         s.driver.Settle();
         CRect place;
         window.GetWindowRect(&place);
         const CRect cell = s.grid->GetItemRect({1, 1});
         const POINT corner = s.At({static_cast<int>(cell.left), static_cast<int>(cell.bottom)});
         s.Say("beside the corner " + std::to_string(place.left - corner.x) + "," +
               std::to_string(place.top - corner.y) + " of " + std::to_string(place.Width()) + " by " +
               std::to_string(place.Height()));
         s.Say(window.IsWindowVisible() != FALSE ? "shown" : "not shown");
         window.DestroyWindow();
         s.grid->SetFocus();
       }},
      {"without a current cell it is not shown",
       [](GridScene& s) {
         s.Quietly([&] { s.grid->SetCurSel(CBCGPGridItemID(), 0); });
         CWnd window;
         window.Create(nullptr, nullptr, WS_POPUP, CRect(0, 0, 90, 50), &s.frame, 0);
         s.grid->ShowDlg(&window);
         s.Say(window.IsWindowVisible() != FALSE ? "shown" : "not shown");
       }},
  };
}

std::vector<GridStep> GridDialogSteps() {
  return Joined(FirstDialogSteps(),
                {
                    {"a dialog in the middle of a change",
                     [](GridScene& s) {
                       s.Edit(2, 2);
                       AnswerOnce(s, "changed 2,2 [x]", [&s] {
                         GridDialog dialog(s);
                         s.driver.WhenModal([&s] { s.driver.Press(VK_RETURN); });
                         s.Say("result " + std::to_string(dialog.DoModal()));
                       });
                       s.Type(_T("x"));
                       s.Press({VK_RETURN});
                     }},
                    {"a dialog of a button",
                     [](GridScene& s) {
                       s.Quietly([&] { s.grid->SetButton(4, 4, true); });
                       AnswerOnce(s, "button 4,4", [&s] {
                         GridDialog dialog(s);
                         s.driver.WhenModal([&s] { s.driver.Press(VK_ESCAPE); });
                         s.Say("result " + std::to_string(dialog.DoModal()));
                       });
                       s.Click(s.Button(4, 4));
                     }},
                    {"a dialog that fills the cell it stands over",
                     [](GridScene& s) {
                       AnswerOnce(s, "button 4,4", [&s] {
                         GridDialog dialog(s);
                         s.driver.WhenModal([&s] {
                           s.grid->SetValue(4, 4, _variant_t(_T("chosen")), TRUE);
                           s.driver.Press(VK_RETURN);
                         });
                         dialog.DoModal();
                       });
                       s.Click(s.Button(4, 4));
                       s.SayCell(4, 4);
                     }},
                    {"with the focus keys go on in the grid",
                     [](GridScene& s) { s.grid->SetFocus(), s.driver.Settle(), s.Press({VK_DOWN}); }},
                });
}

std::vector<GridStep> GridFocusSteps() {
  return {
      {"a window beside the grid takes the focus and the text is saved",
       [](GridScene& s) {
         s.Edit(1, 1);
         s.Type(_T("x"));
         s.Click([&s] {
           POINT at = {20, 10};
           s.outside.ClientToScreen(&at);
           return at;
         }());
         s.SayCell(1, 1);
       }},
      {"a click into the grid brings it back",
       [](GridScene& s) { s.Click(s.Cell(2, 2)), s.Press({VK_RIGHT}); }},
      {"another program leaves the editor open",
       [](GridScene& s) {
         s.Edit(3, 3);
         s.Type(_T("y"));
         s.driver.LeaveProgram();
         s.Say(s.grid->GetInPlaceWnd() != nullptr ? "open" : "closed");
         s.frame.SetForegroundWindow();
         s.grid->GetInPlaceWnd()->SetFocus();
         s.driver.Settle();
       }},
      {"and typing goes on", [](GridScene& s) { s.Type(_T("z")), s.Press({VK_RETURN}), s.SayCell(3, 3); }},
      {"a grid that is hidden while it edits",
       [](GridScene& s) {
         s.Edit(5, 1);
         s.Type(_T("h"));
         s.grid->EndEditItem(TRUE);
         s.grid->ShowWindow(SW_HIDE);
         s.driver.Settle();
         s.grid->ShowWindow(SW_SHOW);
         s.grid->SetFocus();
         s.driver.Settle();
         s.SayCell(5, 1);
       }},
  };
}

static std::vector<GridStep> FirstRebuildSteps() {
  return {
      {"a change that takes the row away",
       [](GridScene& s) {
         s.Edit(2, 1);
         AnswerOnce(s, "changed 2,1 [x]", [&s] { s.grid->DeleteRows(2, 1); });
         s.Type(_T("x"));
         s.Press({VK_RETURN});
         s.SayColumn(1);
       }},
      {"a change that rebuilds the table",
       [](GridScene& s) {
         s.Edit(2, 1);
         AnswerOnce(s, "changed 2,1 [y]", [&s] {
           s.grid->RemoveAll();
           s.grid->AppendRows(3);
         });
         s.Type(_T("y"));
         s.Press({VK_RETURN});
       }},
      {"an opened editor that rebuilds it",
       [](GridScene& s) {
         s.Choose(1, 1);
         AnswerOnce(s, "opens 1,1", [&s] {
           s.grid->RemoveAll();
           s.grid->AppendRows(3);
         });
         s.Press({VK_F2});
       }},
      {"an ended edit that takes the column away",
       [](GridScene& s) {
         s.Edit(1, 1);
         AnswerOnce(s, "ends 1,1", [&s] { s.grid->DeleteColumn(1); });
         s.Type(_T("z"));
         s.Press({VK_RETURN});
       }},
  };
}

std::vector<GridStep> GridRebuildSteps() {
  return Joined(FirstRebuildSteps(), {
                                         {"a chosen cell that goes",
                                          [](GridScene& s) {
                                            s.Choose(0, 0);
                                            AnswerOnce(s, "chosen 2,0", [&s] { s.grid->DeleteRows(2, 1); });
                                            s.grid->SetCurSel(CBCGPGridItemID(2, 0));
                                          }},
                                         {"a left cell whose table goes",
                                          [](GridScene& s) {
                                            s.Choose(0, 0);
                                            AnswerOnce(s, "left 0,0", [&s] { s.grid->RemoveAll(); });
                                            s.Press({VK_DOWN});
                                          }},
                                         {"a table filled anew by a button",
                                          [](GridScene& s) {
                                            s.Quietly([&] {
                                              s.grid->AppendRows(3);
                                              s.grid->SetButton(1, 1, true);
                                            });
                                            AnswerOnce(s, "button 1,1", [&s] {
                                              s.grid->RemoveAll();
                                              s.grid->AppendRows(2);
                                            });
                                            s.Click(s.Button(1, 1));
                                          }},
                                         {"a change that moves the focus",
                                          [](GridScene& s) {
                                            s.Edit(0, 1);
                                            AnswerOnce(s, "changed 0,1 [f]", [&s] { s.outside.SetFocus(); });
                                            s.Type(_T("f"));
                                            s.Press({VK_RETURN});
                                          }},
                                     });
}

static std::vector<GridStep> FirstEndingSteps() {
  return {
      {"the window goes in the middle of a change",
       [](GridScene& s) {
         s.Edit(1, 1);
         AnswerOnce(s, "changed 1,1 [x]", [&s] { s.grid->DestroyWindow(); });
         s.Type(_T("x"));
         s.Press({VK_RETURN});
       }},
      {"the table outlives its window",
       [](GridScene& s) { s.SayCell(1, 1), s.grid->SetCurSel(CBCGPGridItemID(2, 2)); }},
      {"the grid goes in the middle of a change",
       [](GridScene& s) {
         s.Make(4, 3);
         s.Edit(1, 1);
         AnswerOnce(s, "changed 1,1 [x]", [&s] { s.grid.reset(); });
         s.Type(_T("x"));
         s.Press({VK_RETURN});
       }},
      {"in a selection",
       [](GridScene& s) {
         s.Make(4, 3);
         AnswerOnce(s, "chosen 1,0", [&s] { s.grid.reset(); });
         s.Press({VK_DOWN});
       }},
      {"in a button's hook",
       [](GridScene& s) {
         s.Make(4, 3);
         s.Quietly([&] { s.grid->SetButton(1, 1, true); });
         AnswerOnce(s, "button 1,1", [&s] { s.grid.reset(); });
         s.Click(s.Button(1, 1));
       }},
  };
}

std::vector<GridStep> GridEndingSteps() {
  return Joined(FirstEndingSteps(),
                {
                    {"in an opened editor",
                     [](GridScene& s) {
                       s.Make(4, 3);
                       AnswerOnce(s, "opens 0,0", [&s] { s.grid.reset(); });
                       s.Press({VK_F2});
                     }},
                    {"in a choice of a menu",
                     [](GridScene& s) {
                       s.Make(4, 3);
                       s.PutList(1, 1, 40);
                       AnswerOnce(s, "combo", [&s] { s.grid.reset(); });
                       s.driver.AnswerMenu(kFirstCommand + 1);
                       s.Click(s.Button(1, 1));
                     }},
                    {"in a dragged column",
                     [](GridScene& s) {
                       s.Make(4, 3);
                       AnswerOnce(s, "resized", [&s] { s.grid.reset(); });
                       const POINT from = s.Divider(1);
                       s.Drag(from, {from.x + 20, from.y});
                     }},
                    {"with an editor open", [](GridScene& s) { s.Make(4, 3), s.Edit(1, 1), s.grid.reset(); }},
                    {"with its parent",
                     [](GridScene& s) {
                       s.Make(4, 3);
                       s.Edit(1, 1);
                       s.Type(_T("x"));
                       s.frame.DestroyWindow();
                       s.driver.Settle();
                       s.Say(s.grid->m_hWnd == nullptr ? "no window" : "a window");
                       s.SayCell(1, 1);
                     }},
                });
}

}  // namespace lorv_test
