#include "tests/conformance/grid/grid_scene.h"

#include <utility>

namespace lorv_test {
namespace {

constexpr UINT kGrid = 101;
constexpr UINT kOutside = 102;
constexpr int kRowHeight = 40;  // more than any desktop's font asks for

const lorv::DialogItem kItems[] = {
    {lorv::WindowKind::Button, IDOK, 7, 20, 50, 14, WS_TABSTOP | BS_DEFPUSHBUTTON, _T("确定")},
    {lorv::WindowKind::Button, IDCANCEL, 60, 20, 50, 14, WS_TABSTOP | BS_PUSHBUTTON, _T("取消")},
};
const lorv::DialogTemplate kForm = {2100, _T("构件"), 120, 40, _T("SimSun"), 9, kItems};

std::string Name(int row, int column) {
  return std::to_string(row) + "," + std::to_string(column);
}

std::string Name(const CBCGPGridRange& range) {
  const std::string first = Name(range.m_nTop, range.m_nLeft);
  return range.IsSingle() ? first : first + "-" + Name(range.m_nBottom, range.m_nRight);
}

// In a form that a table of texts can hold.
std::string Plain(CString text) {
  text.Replace(_T("\r\n"), _T("|"));
  text.Replace(_T("\n"), _T("|"));
  text.Replace(_T("\\"), _T("/"));
  return "[" + text.ToUtf8() + "]";
}

CString TextOf(const CWnd& window) {
  CString text;
  window.GetWindowText(text);
  return text;
}

}  // namespace

void TracedGrid::Say(const std::string& event) {
  scene_.Say(event);
  const auto reaction = on;
  if (reaction) reaction(event);
}

void TracedGrid::SetValue(int row, int column, const _variant_t& value, BOOL redraw) {
  Say("set " + Name(row, column));
  CBCGPBasicGridCtrl::SetValue(row, column, value, redraw);
}

void TracedGrid::OnItemUpdate() {
  Say("update");
  CBCGPBasicGridCtrl::OnItemUpdate();
}

BOOL TracedGrid::OnClickButton(CPoint point) {
  CBCGPGridItemID id;
  CRect rect;
  HitTest(point, id, rect);
  const auto life = Watch();
  Say("button " + Name(id.m_nRow, id.m_nColumn));
  return life.expired() ? FALSE : CBCGPBasicGridCtrl::OnClickButton(point);
}

void TracedGrid::OnItemChanged(CBCGPGridItem* item, int row, int column) {
  Say("changed " + Name(row, column) + " " + Plain(item->FormatItem()));
}

void TracedGrid::OnHeaderColumnClick(int column) {
  Say("header " + std::to_string(column));
}

void TracedGrid::OnSelChanged(const CBCGPGridRange& range, BOOL selected) {
  const auto life = Watch();
  Say((selected != FALSE ? "chosen " : "left ") + Name(range));
  if (!life.expired()) CBCGPBasicGridCtrl::OnSelChanged(range, selected);
}

void TracedGrid::OnAfterInplaceEditCreated(CBCGPGridItem* item, CWnd* editor) {
  const CBCGPGridItemID id = item->GetGridItemID();
  const auto life = Watch();
  Say("opens " + Name(id.m_nRow, id.m_nColumn));
  if (!life.expired() && GetEditingItem() == item)
    CBCGPBasicGridCtrl::OnAfterInplaceEditCreated(item, editor);
}

void TracedGrid::OnEndInplaceEdit(CBCGPGridItem* item) {
  const CBCGPGridItemID id = item->GetGridItemID();
  const auto life = Watch();
  Say("ends " + Name(id.m_nRow, id.m_nColumn));
  if (!life.expired() && GetGridItem(id) == item) CBCGPBasicGridCtrl::OnEndInplaceEdit(item);
}

void TracedGrid::OnResizeColumns() {
  const auto life = Watch();
  Say("resized");
  if (!life.expired()) CBCGPBasicGridCtrl::OnResizeColumns();
}

GridDialog::GridDialog(GridScene& scene) : CDialog(kForm, &scene.frame), scene_(scene) {}

void GridDialog::OnOK() {
  scene_.Say("dialog ok");
  CDialog::OnOK();
}

void GridDialog::OnCancel() {
  scene_.Say("dialog cancel");
  CDialog::OnCancel();
}

GridScene::GridScene(BehaviourDriver& player) : driver(player) {
  frame.Create(nullptr, _T("grid"), WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(60, 60, 760, 560), nullptr, 0);
  outside.Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP, CRect(10, 420, 160, 444), &frame, kOutside);
  frame.SetForegroundWindow();
  driver.Settle();
}

void GridScene::Quietly(const std::function<void()>& work) {
  const std::size_t before = trace.size();
  work();
  driver.Settle();
  trace.resize(before);
}

void GridScene::Make(int rows, int columns, int width) {
  Quietly([&] {
    grid = std::make_unique<TracedGrid>(*this);
    grid->Create(WS_CHILD | WS_VISIBLE, CRect(10, 10, 610, 410), &frame, kGrid);
    CString names = _T("c0");
    CString widths;
    widths.Format(_T("%d"), width);
    CString all_widths = widths;
    for (int column = 1; column < columns; ++column) {
      names.AppendFormat(_T(",c%d"), column);
      all_widths += _T(",") + widths;
    }
    grid->InsertColumns(names, all_widths, kRowHeight);
    grid->AppendRows(rows);
    FillByPlace(*grid, rows, columns);
    grid->SetFocus();
    grid->SetCurSel(CBCGPGridItemID(0, 0));
  });
}

void GridScene::SayState() {
  if (grid == nullptr) return Say("= gone");
  const CBCGPGridItemID at = grid->GetCurSelItemID();
  std::string line = at.IsNull() ? "= nowhere" : "= " + Name(at.m_nRow, at.m_nColumn);
  const std::vector<CBCGPGridRange>& ranges = grid->GetSelection();
  const bool alone = ranges.size() == 1 && !at.IsNull() && ranges.front() == CBCGPGridRange(at);
  if (!alone) line += " selected";
  if (!alone)
    for (const CBCGPGridRange& range : ranges) line += " " + Name(range);
  if (auto* edit = dynamic_cast<CEdit*>(grid->GetInPlaceWnd())) {
    int start = 0;
    int end = 0;
    edit->GetSel(start, end);
    line += " editor " + Plain(TextOf(*edit)) + " " + std::to_string(start) + "-" + std::to_string(end);
  }
  Say(line);
}

void GridScene::Choose(int row, int column) {
  Quietly([&] {
    grid->EndEditItem(FALSE);
    grid->SetFocus();
    grid->SetCurSel(CBCGPGridItemID(row, column));
  });
}

void GridScene::Edit(int row, int column) {
  Quietly([&] {
    grid->EndEditItem(FALSE);
    grid->SetFocus();
    grid->SetCurEditingItem(row, column);
  });
}

void GridScene::Press(std::initializer_list<int> keys) {
  for (const int key : keys) driver.Press(key);
}

CString GridScene::Text(int row, int column) const {
  const CBCGPGridItem* item = grid->GetItem(row, column);
  return item == nullptr ? CString(_T("none")) : item->FormatItem();
}

void GridScene::SayCell(int row, int column) {
  const CBCGPGridItem* item = grid->GetItem(row, column);
  if (item == nullptr) return Say(Name(row, column) + " is not there");
  Say(Name(row, column) + " " + Plain(item->FormatItem()) + " kind " + std::to_string(item->GetValue().vt));
}

void GridScene::SayColumn(int column) {
  std::string line = "column " + std::to_string(column);
  for (int row = 0; row < grid->GetRowCount(); ++row) line += " " + Text(row, column).ToUtf8();
  Say(line);
}

CBCGPGridPresentationItem* GridScene::PutList(int row, int column, int options) {
  auto* item = new CBCGPGridPresentationItem(_variant_t(_T("o1")));
  item->SetPresentationStyle(lorv::kListCell);
  for (int i = 0; i < options; ++i) {
    CString option;
    option.Format(_T("o%d"), i);
    item->AddOption(option);
  }
  return Put(row, column, item);
}

std::vector<GridStep> Joined(std::vector<GridStep> first, const std::vector<GridStep>& rest) {
  first.insert(first.end(), rest.begin(), rest.end());
  return first;
}

std::vector<std::string> PlayGrid(BehaviourDriver& driver) {
  GridScene scene(driver);
  int number = 0;
  using Part = std::vector<GridStep> (*)();
  for (const Part part :
       {GridKeySteps,     GridKeyStyleSteps, GridSelectionSteps,   GridTypingSteps,  GridCaretSteps,
        GridWalkSteps,    GridCopySteps,     GridLockedSteps,      GridNumberSteps,  GridLinesSteps,
        GridListSteps,    GridCheckSteps,    GridColourSteps,      GridButtonSteps,  GridMouseSteps,
        GridDividerSteps, GridHidingSteps,   GridMergingSteps,     GridRowSteps,     GridScrollSteps,
        GridMenuSteps,    GridDialogSteps,   GridFocusSteps,       GridRebuildSteps, GridFillSteps,
        GridDragSteps,    GridTipSteps,      GridRightButtonSteps, GridEndingSteps}) {
    scene.Make(12, 6);
    for (const GridStep& step : part()) {
      scene.trace.push_back(std::to_string(++number) + " " + step.name);
      step.play(scene);
      driver.Settle();
      scene.SayState();
    }
  }
  return scene.trace;
}

}  // namespace lorv_test
