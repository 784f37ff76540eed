#include <QTimer>
#include <set>

#include "framework/windows/menu.h"
#include "grid/buttons/menu_button_ex.h"
#include "gridcore/control/grid_control.h"
#include "tests/platform/qt/qt_fixture.h"

// Lines of groups, boxes of nested rows, the filter bar and the menu button as they stand on the screen.

namespace lorv::test {
namespace {

class QtGridRows : public QtTest {
 protected:
  QtGridRows() {
    window_.Create(nullptr, _T("grid"), WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(50, 50, 550, 450), nullptr,
                   0);
    grid_.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 450, 300), &window_, 7);
    grid_.InsertColumn(0, _T("grade"), 100);
    grid_.InsertColumn(1, _T("name"), 100);
    for (int row = 0; row < 4; ++row) {
      grid_.AddRow(FALSE);
      grid_.GetGridItem({row, 0})->SetValue(_variant_t(row % 2 == 0 ? _T("C30") : _T("C35")));
      grid_.GetGridItem({row, 1})->SetValue(_variant_t(row));
    }
    grid_.AdjustLayout();
    Settle();
  }
  // How many colours a part of the window shows.
  std::size_t Colours(const CRect& part) {
    grid_.UpdateWindow();
    Settle();
    CSize size;
    const std::vector<DWORD> picture = PeerOf(grid_.m_hWnd)->Picture(size);
    std::set<DWORD> colours;
    for (int y = static_cast<int>(part.top); y < std::min(part.bottom, size.cy); ++y)
      for (int x = static_cast<int>(part.left); x < std::min(part.right, size.cx); ++x)
        colours.insert(picture[static_cast<std::size_t>(y) * static_cast<std::size_t>(size.cx) +
                               static_cast<std::size_t>(x)]);
    return colours.size();
  }
  void Press(const CRect& place) {
    const CPoint at = place.CenterPoint();
    Click(grid_.m_hWnd, {static_cast<int>(at.x), static_cast<int>(at.y)});
  }
  CRect BoxPlace(int id, int level) const {
    CRect place = grid_.GetRowRect(id);
    const int step = grid_.GetHierarchyLevelOffset();
    place.left += level * step;
    place.right = place.left + step;
    return place;
  }

  CWnd window_;
  CBCGPGridCtrl grid_;
};

TEST_F(QtGridRows, GroupsShowTheirTextAndCollapse) {
  grid_.InsertGroupColumn(0, 0);
  Settle();
  const CRect line = grid_.GetRowRect(4);
  ASSERT_FALSE(line.IsRectEmpty());
  CRect text = line;
  text.left += grid_.GetHierarchyLevelOffset() + 4;
  text.right = text.left + 60;
  EXPECT_GT(Colours(text), 2U);
  EXPECT_GT(Colours(BoxPlace(4, 0)), 2U);
  Press(BoxPlace(4, 0));
  EXPECT_TRUE(grid_.GetRowRect(0).IsRectEmpty());
  EXPECT_FALSE(grid_.GetRowRect(2).IsRectEmpty());
  Press(BoxPlace(4, 0));
  EXPECT_FALSE(grid_.GetRowRect(0).IsRectEmpty());
}

TEST_F(QtGridRows, NestedRowsHaveABoxBeforeTheirRow) {
  grid_.GetRow(1)->AddSubItem(grid_.CreateRow(2));
  Settle();
  EXPECT_GT(grid_.GetItemRect({0, 0}).left, grid_.GetListRect().left);
  EXPECT_GT(Colours(BoxPlace(1, 0)), Colours(BoxPlace(0, 0)));
  Press(BoxPlace(1, 0));
  EXPECT_TRUE(grid_.GetRowRect(2).IsRectEmpty());
  Press(BoxPlace(1, 0));
  EXPECT_FALSE(grid_.GetRowRect(2).IsRectEmpty());
}

TEST_F(QtGridRows, TheFilterBarIsTypedInto) {
  grid_.EnableFilterBar();
  Settle();
  CRect cell = grid_.GetFilterBarRect();
  ASSERT_FALSE(cell.IsRectEmpty());
  cell.right = cell.left + 100;
  Press(cell);
  // A window system may take its time to give the focus.
  const CWnd* const editor = grid_.GetDlgItem(lorv::kFilterEditorId);
  ASSERT_NE(editor, nullptr);
  Type(editor->m_hWnd, QStringLiteral("35"));
  EXPECT_EQ(grid_.GetFilterBarText(0), CString(_T("35")));
  EXPECT_TRUE(grid_.GetRowRect(0).IsRectEmpty());
  EXPECT_FALSE(grid_.GetRowRect(1).IsRectEmpty());
}

TEST_F(QtGridRows, TheMenuButtonShowsItsMenu) {
  CMenu menu;
  menu.CreatePopupMenu();
  menu.AppendMenu(MF_STRING, 40, _T("C30"));
  menu.AppendMenu(MF_STRING, 41, _T("C35"));
  CBCGPMenuButtonEx button;
  button.Create(_T("grades"), WS_CHILD | WS_VISIBLE, CRect(10, 320, 130, 350), &window_, 9);
  button.SetMenuHandle(menu.m_hMenu);
  Settle();
  QTimer::singleShot(0, [] {
    ASSERT_NE(QApplication::activePopupWidget(), nullptr);
    for (const int key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Return}) {
      QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier);
      QCoreApplication::sendEvent(QApplication::activePopupWidget(), &down);
    }
  });
  Click(button.m_hWnd, {20, 10});
  EXPECT_EQ(button.GetSelectedItem(), 41U);
  EXPECT_NE(menu.GetMenuState(41, MF_BYCOMMAND) & MF_CHECKED, 0U);
}

}  // namespace
}  // namespace lorv::test
