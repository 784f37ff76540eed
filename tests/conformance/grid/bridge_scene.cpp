#include "tests/conformance/grid/bridge_scene.h"

#include "tests/conformance/grid/bridge_trace_table.inc"

namespace lorv_test {
namespace {

constexpr int kRowHeight = 40;  // above that of any font here
constexpr int kColumnWidth = 80;

}  // namespace

void BridgeScene::Make(int rows, int columns) {
  if (sheet != nullptr) sheet->on = nullptr;
  grid.reset();
  sheet = std::make_unique<EventSheet>();
  sheet->Create(nullptr, _T("sheet"), WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(50, 50, 560, 460), nullptr, 0);
  sheet->SetForegroundWindow();
  grid = std::make_unique<Grid>();
  grid->Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 430, 300), sheet.get(), kTableId);
  grid->SetRowHeight(kRowHeight);
  grid->ReDim(rows, columns);
  // The window has the same pixels at any dots an inch, and so has what stands in it.
  for (int column = 0; column < columns; ++column)
    grid->GetColumnsInfo().SetColumnWidth(column, kColumnWidth);
  grid->AdjustLayout();
  FillByPlace(*grid, rows, columns);
  grid->SetFocus();
  grid->SetCurSel(CBCGPGridItemID(0, 0));
  driver.Settle();
}

void BridgeScene::Forget() {
  driver.Settle();
  if (sheet != nullptr) sheet->Taken();
}

void BridgeScene::SayState() {
  if (grid == nullptr || grid->m_hWnd == nullptr) return Say("= gone");
  const CBCGPGridItemID id = grid->GetCurSelItemID();
  std::string line = "= " + std::to_string(id.m_nRow) + "," + std::to_string(id.m_nColumn) + " of " +
                     std::to_string(grid->GetRowCount());
  if (auto* const editor = dynamic_cast<CEdit*>(grid->GetInPlaceWnd())) {
    CString text;
    editor->GetWindowText(text);
    line += " editor \"" + text.ToUtf8() + "\"";
  }
  Say(line);
}

void BridgeScene::SayCell(int row, int column) {
  const CBCGPGridItem* const item = grid->GetItem(row, column);
  Say("cell " + std::to_string(row) + "," + std::to_string(column) + " " +
      (item == nullptr ? "none" : "\"" + item->FormatItem().ToUtf8() + "\""));
}

void BridgeScene::SayHeard() {
  if (sheet == nullptr) return;
  std::set<std::string> painted;
  std::string last;
  for (std::string note : sheet->Taken()) {
    // Where the mouse was follows from the font's height.
    if (note.find("Mouse") != std::string::npos) note.erase(note.rfind(',', note.rfind(',') - 1));
    const bool of_painting =
        note.find("Fetch") != std::string::npos || note.find("Paint") != std::string::npos;
    // A key of Shift or Ctrl that is held down may repeat itself.
    const bool repeats =
        note == last && (note.find(" 16,") != std::string::npos || note.find(" 17,") != std::string::npos);
    if (!repeats && (!of_painting || painted.insert(note).second)) Say(note);
    last = note;
  }
}

void BridgeScene::When(int event, std::function<void()> action) {
  sheet->on = [this, event, action = std::move(action)](int heard) {
    if (heard != event) return;
    // The action may end the sheet, and this with it.
    const auto once = action;
    sheet->on = nullptr;
    once();
  };
}

void BridgeScene::Choose(int row, int column) {
  grid->EndEditItem(FALSE);
  grid->SetFocus();
  grid->SetCurSel(CBCGPGridItemID(row, column));
  Forget();
}

void BridgeScene::Edit(int row, int column, LPCTSTR text) {
  Choose(row == 0 ? 1 : 0, column);
  Choose(row, column);
  driver.Press(VK_F2);
  if (auto* const editor = dynamic_cast<CEdit*>(grid->GetInPlaceWnd())) {
    editor->SetWindowText(text);
    editor->SetSel(editor->GetWindowTextLength(), editor->GetWindowTextLength());
  }
  Forget();
}

void BridgeScene::Press(std::initializer_list<int> keys) {
  for (const int key : keys) driver.Press(key);
}

std::vector<std::string> PlayBridge(BehaviourDriver& driver) {
  BridgeScene scene(driver);
  int number = 0;
  using Part = std::vector<BridgeStep> (*)();
  for (const Part part :
       {BridgeOrderSteps, BridgeKeySteps, BridgeMouseSteps, BridgePartSteps, BridgeCancelSteps,
        BridgeHostileSteps, BridgeTableSteps, BridgeScreenSteps, BridgeHeightSteps, BridgeAutoRowSteps}) {
    for (const BridgeStep& step : part()) {
      // Each begins with a dialog of its own: what one does to its table is no part of the next.
      scene.Make(4, 3);
      scene.sheet->MuteNoise();
      // Which keys have a character of their own differs.
      scene.sheet->muted.insert(-603);
      scene.Forget();
      scene.trace.push_back(std::to_string(++number) + " " + step.name);
      step.play(scene);
      driver.Settle();
      scene.SayHeard();
      scene.SayState();
    }
  }
  return scene.trace;
}

std::vector<std::string> KeptBridgeTrace() {
  return {std::begin(kBridgeTrace), std::end(kBridgeTrace)};
}

}  // namespace lorv_test
