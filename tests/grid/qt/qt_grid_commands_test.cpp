#include "grid/basic/basic_grid.h"
#include "grid/commands/grid_commands.h"
#include "grid/find/grid_find.h"
#include "grid/view/grid_sort.h"
#include "grid/view/grid_zoom.h"
#include "tests/platform/qt/qt_fixture.h"

// Additions of a grid by keys and fonts of a real toolkit.

namespace lorv::test {
namespace {

class QtGridCommands : public QtTest {
 protected:
  QtGridCommands() {
    window_.Create(nullptr, _T("grid"), WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(50, 50, 550, 450), nullptr,
                   0);
    grid_.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 450, 300), &window_, 5);
    grid_.InsertColumns(_T("a,b"), _T("80,80"), 0);
    grid_.AppendRows(4);
    for (int row = 0; row < 4; ++row) grid_.SetValue(row, 0, _variant_t(40 - row), FALSE);
    grid_.SetFocus();
    grid_.SetCurSel({0, 0});
    Settle();
  }
  void Press(int key, const QString& text = {}, Qt::KeyboardModifiers held = Qt::NoModifier) {
    Key(grid_.m_hWnd, key, text, held);
  }

  CWnd window_;
  CBCGPBasicGridCtrl grid_;
};

TEST_F(QtGridCommands, KeysOfTheToolkitGiveCommands) {
  GridCommands commands(grid_);
  int given = 0;
  commands.Bind(_T("undo"), [&](CBCGPGridCtrl&) { return ++given > 0; });
  Press(Qt::Key_Z, QStringLiteral("\x1a"), Qt::ControlModifier);
  EXPECT_EQ(given, 1);
  EXPECT_EQ(grid_.GetEditingItem(), nullptr);
  // A key of a letter alone takes its character along.
  ASSERT_TRUE(commands.SetKeys(_T("undo"), _T("Q")));
  Press(Qt::Key_Q, QStringLiteral("q"));
  EXPECT_EQ(given, 2);
  EXPECT_EQ(grid_.GetEditingItem(), nullptr);
  Press(Qt::Key_W, QStringLiteral("w"));
  EXPECT_NE(grid_.GetEditingItem(), nullptr);
}

TEST_F(QtGridCommands, FindingByItsKeyShowsTheCell) {
  GridCommands commands(grid_);
  GridFind find(grid_);
  find.Bind(commands);
  FindOptions options;
  options.text = _T("38");
  find.SetOptions(options);
  Press(Qt::Key_F3);
  EXPECT_EQ(grid_.GetCurSelItemID(), CBCGPGridItemID(2, 0));
}

TEST_F(QtGridCommands, ZoomMakesTheFontLarger) {
  GridZoom zoom(grid_);
  const LOGFONT before = grid_.GetFont()->Face();
  const int row = grid_.GetRowHeight();
  zoom.SetZoom(200);
  EXPECT_EQ(grid_.GetFont()->Face().lfHeight, 2 * before.lfHeight);
  EXPECT_EQ(grid_.GetRowHeight(), 2 * row);
  zoom.SetZoom(100);
  EXPECT_EQ(grid_.GetFont()->Face().lfHeight, before.lfHeight);
  EXPECT_EQ(grid_.GetRowHeight(), row);
}

TEST_F(QtGridCommands, SortingKeepsTheCurrentRowCurrent) {
  const GridSort sort(grid_);
  grid_.Sort(0, TRUE);
  Settle();
  EXPECT_EQ(grid_.GetValue(0, 0), _variant_t(37));
  EXPECT_EQ(grid_.GetCurSelItemID(), CBCGPGridItemID(3, 0));
}

}  // namespace
}  // namespace lorv::test
