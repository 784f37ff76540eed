#include <random>

#include "grid/basic/basic_grid.h"
#include "gridcore/items/check_item.h"
#include "tests/platform/qt/qt_fixture.h"

namespace lorv_test {
namespace {

constexpr int kRows = 40;
constexpr int kColumns = 8;

// A grid whose cells change, are chosen, edited, scrolled and frozen, and whose picture is always that of
// painting all of it.
class QtGridPictures : public lorv::test::QtTest {
 protected:
  QtGridPictures() {
    grid.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 380, 280), CWnd::FromHandle(top.window), 7);
    for (int column = 0; column < kColumns; ++column) grid.InsertColumn(column, _T("墙体"), 70, -1, FALSE);
    for (int row = 0; row < kRows; ++row) {
      grid.CBCGPBasicGridCtrl::AddRow(FALSE);
      for (int column = 0; column < kColumns; ++column) Put(row, column);
    }
    grid.GetRow(3)->ReplaceItem(2, new CBCGPGridCheckItem(false));
    grid.GetGridItem({5, 1})->AddOption(_T("板"));
    grid.GetGridItem({5, 1})->AddOption(_T("柱"));
    grid.GetGridItem({7, 2})->SetReadOnly(TRUE);
    grid.GetGridItem({8, 3})->SetTextColor(RGB(200, 0, 0));
    grid.GetGridItem({8, 3})->SetBackgroundColor(RGB(255, 255, 180));
    grid.MergeRange({1, 1, 2, 3});
    grid.MergeRange({4, 8, 6, 9});
    grid.AdjustLayout();
    grid.SetFocus();
    Settle();
  }
  int Below(int most) { return static_cast<int>(random_() % static_cast<unsigned>(most)); }
  void Put(int row, int column) {
    CString text;
    if (column % 3 == 0) {
      text.Format(_T("梁K%d"), Below(100000));
    } else if (column % 3 == 1) {
      text.Format(_T("%d.%03d"), Below(1000), Below(1000));
    } else {
      text = Below(2) == 0 ? _T("混凝土") : _T("beam i");
    }
    grid.SetValue(row, column, _variant_t(text), TRUE);
  }
  std::vector<DWORD> Picture() {
    return desktop_->Find(grid.m_hWnd)->ClientCanvas()->Pixels(CRect(0, 0, 380, 280));
  }
  CBCGPGridItemID SomeCell() { return {Below(kRows), Below(kColumns)}; }
  void Choose();
  void Edit();
  void Change();

  class Grid : public CBCGPBasicGridCtrl {
   public:
    using CBCGPBasicGridCtrl::ScrollTo;
  };
  Grid grid;
  std::mt19937 random_{4};
};

void QtGridPictures::Choose() {
  const CBCGPGridItemID id = SomeCell();
  const CBCGPGridItemID other = SomeCell();
  constexpr Qt::Key kKeys[] = {Qt::Key_Up,    Qt::Key_Down, Qt::Key_Left,
                               Qt::Key_Right, Qt::Key_End,  Qt::Key_Home};
  switch (Below(7)) {
    case 0:
      grid.SelectRange(CBCGPGridRange(id, other));
      break;
    case 1:
      grid.SetCurSel(id, lorv::kSelectAdd, TRUE);
      break;
    case 2:
      grid.SelectColumn(id.m_nColumn, TRUE);
      break;
    case 3:
      grid.CBCGPGridCtrl::SelectRow(id.m_nRow, TRUE);
      break;
    case 4:
      grid.SetCurSel(id);
      break;
    default:
      if (const HWND focus = desktop_->Focus(); desktop_->Find(focus) != nullptr)
        Key(focus, kKeys[Below(6)], {}, Below(4) == 0 ? Qt::ShiftModifier : Qt::NoModifier);
  }
}

void QtGridPictures::Edit() {
  if (grid.GetEditingItem() == nullptr) {
    if (grid.GetCurSel() != nullptr) grid.EditItem(grid.GetCurSel());
    return;
  }
  const HWND editor = grid.GetInPlaceWnd() == nullptr ? nullptr : grid.GetInPlaceWnd()->m_hWnd;
  switch (Below(5)) {
    case 0:
      grid.EndEditItem(FALSE);
      break;
    case 1:
      grid.EndEditItem(TRUE);
      break;
    case 2:
      if (editor != nullptr) Key(editor, Qt::Key_Return, QStringLiteral("\r"));
      break;
    case 3:
      if (editor != nullptr) Key(editor, Qt::Key_Escape);
      break;
    default:
      if (editor != nullptr) Type(editor, QString::number(Below(1000)));
  }
}

void QtGridPictures::Change() {
  const CBCGPGridItemID id = SomeCell();
  switch (Below(8)) {
    case 0:
      lorv::DesktopInForce().ClearFocus();
      break;
    case 1:
      grid.SetFocus();
      break;
    case 2:
      grid.ScrollTo(Below(300), Below(600));
      break;
    case 3:
      grid.SetFrozenColumns(Below(3));
      break;
    default:
      Put(id.m_nRow, id.m_nColumn);
  }
}

TEST_F(QtGridPictures, NothingStaleIsLeftByTwoThousandSteps) {
  int edited = 0;
  for (int step = 0; step < 2000; ++step) {
    const int kind = Below(3);
    kind == 0 ? Choose() : (kind == 1 ? Edit() : Change());
    Settle();
    edited += grid.GetEditingItem() != nullptr ? 1 : 0;
    const std::vector<DWORD> seen = Picture();
    grid.Invalidate(FALSE);
    grid.UpdateWindow();
    // Not printed: it has a hundred thousand pixels.
    ASSERT_TRUE(seen == Picture()) << "step " << step << " of kind " << kind;
    Settle();
  }
  EXPECT_GT(edited, 300);
}

}  // namespace
}  // namespace lorv_test
