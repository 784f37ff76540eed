#include "grid/items/presentation_item.h"
#include "tests/conformance/grid/bridge_scene.h"

// The row that is always there: the one below the last, which becomes a row of the table as soon as something
// is typed into it, and goes when two of them are empty.

namespace lorv_test {
namespace {

constexpr int kRows = 4;

// How many rows the table has, the one that waits included.
void SayRows(BridgeScene& s) {
  s.SayHeard();
  s.Say("rows " + std::to_string(s.grid->CBCGPGridCtrl::GetRowCount()));
}

// A step in the row that waits.
std::function<void(BridgeScene&)> Below(const std::function<void(BridgeScene&)>& play) {
  return [=](BridgeScene& s) {
    s.grid->SetAutoAddRow(true);
    s.Choose(kRows, 0);
    play(s);
    SayRows(s);
  };
}

std::function<void(BridgeScene&)> Typing(LPCTSTR text, std::initializer_list<int> keys = {}) {
  return Below([=, pressed = std::vector<int>(keys)](BridgeScene& s) {
    s.driver.Type(lorv::TextView(text));
    for (const int key : pressed) s.driver.Press(key);
  });
}

// Another row, of which all cells but the first are empty.
void AddAlmostEmptyRow(BridgeScene& s) {
  s.driver.Type(_T("x"));
  s.driver.Press(VK_RETURN);
  s.grid->EndEditItem(FALSE);
  s.Forget();
}

}  // namespace

std::vector<BridgeStep> BridgeAutoRowSteps() {
  return {
      {"switched on, a row waits", Below([](BridgeScene&) {})},
      {"a letter in it makes another", Typing(_T("x"))},
      {"deleted again, the other goes", Typing(_T("x"), {VK_BACK})},
      {"typed and left by Return", Typing(_T("xy"), {VK_RETURN})},
      {"typed and given up", Typing(_T("x"), {VK_ESCAPE})},
      {"typed and left upwards", Typing(_T("x"), {VK_UP})},
      {"two rows typed one after the other", Below([](BridgeScene& s) {
         s.driver.Type(_T("x"));
         s.driver.Press(VK_RETURN);
         s.driver.Type(_T("y"));
         s.driver.Press(VK_RETURN);
       })},
      {"Down from the last row comes there", Below([](BridgeScene& s) {
         s.Choose(kRows - 1, 1);
         s.driver.Press(VK_DOWN);
       })},
      {"the row above emptied by typing", Below([](BridgeScene& s) {
         AddAlmostEmptyRow(s);
         s.Choose(kRows, 0);
         s.driver.Press(VK_F2);
         if (auto* const editor = dynamic_cast<CEdit*>(s.grid->GetInPlaceWnd())) editor->SetSel(0, -1);
         s.driver.Press(VK_DELETE);
       })},
      {"typing that waits until it is saved", Below([](BridgeScene& s) {
         s.grid->SetIsSame2014(true);
         s.driver.Type(_T("x"));
         SayRows(s);
         s.driver.Press(VK_RETURN);
       })},
      {"it cannot be removed",
       Below([](BridgeScene& s) { s.Say("removed " + std::to_string(s.grid->RemoveRow(kRows, TRUE))); })},
      {"all rows removed, one waits", Below([](BridgeScene& s) { s.grid->RemoveAll(); })},
      {"another size, one waits", Below([](BridgeScene& s) { s.grid->ReDim(2, 2); })},
      {"switched off, it stays", Below([](BridgeScene& s) { s.grid->SetAutoAddRow(false); })},
      {"the row that waits has the lists of the one above",
       [](BridgeScene& s) {
         auto* const list = new CBCGPGridPresentationItem(_variant_t());
         list->SetPresentationStyle(lorv::kListCell);
         for (LPCTSTR option : {_T("o0"), _T("o1")}) list->AddOption(option);
         s.grid->ReplaceItem(kRows - 1, 1, list, FALSE);
         s.grid->SetAutoAddRow(true);
         s.Say("options " + std::to_string(s.grid->GetPrepareRow()->GetItem(1)->GetOptionCount()));
       }},
      {"the table emptied by the key that is typed", Below([](BridgeScene& s) {
         s.When(-602, [&s] { s.grid->RemoveAll(); });
         s.driver.Type(_T("x"));
       })},
      {"the grid ended by the key that is typed", Below([](BridgeScene& s) {
         s.When(-602, [&s] { s.grid->DestroyWindow(); });
         s.driver.Type(_T("x"));
       })},
  };
}

}  // namespace lorv_test
