#include <QWheelEvent>

#include "grid/basic/basic_grid.h"
#include "grid/commands/grid_commands.h"
#include "grid/items/check_item_ex.h"
#include "grid/view/grid_column_order.h"
#include "grid/view/grid_frozen_columns.h"
#include "grid/view/grid_zoom.h"
#include "tests/platform/qt/qt_fixture.h"

// Frozen columns, dragged headers and the wheel with the widget set's own events and pixels.

namespace lorv::test {
namespace {

class QtGridView : public QtTest {
 protected:
  QtGridView() {
    grid_.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 400, 200), CWnd::FromHandle(top.window), 7);
    grid_.InsertColumns(_T("名称,强度,长度,数量,备注,合计,单位,类别"), _T(""), 0);
    grid_.AppendRows(40);
    for (int row = 0; row < 40; ++row)
      for (int column = 0; column < 8; ++column) {
        CString text;
        text.Format(_T("%d墙%d"), row, column);
        grid_.SetValue(row, column, _variant_t(text));
      }
    grid_.AdjustLayout();
    grid_.SetFocus();
    Settle();
  }
  // The pixels of a part of the window.
  std::vector<DWORD> Shown(const CRect& part) {
    grid_.UpdateWindow();
    Settle();
    CSize size;
    const std::vector<DWORD> picture = PeerOf(grid_.m_hWnd)->Picture(size);
    std::vector<DWORD> shown;
    // The picture is that of the window, with its frame.
    CRect window;
    grid_.GetWindowRect(window);
    POINT origin = {0, 0};
    grid_.ClientToScreen(&origin);
    const CRect from = part + CPoint(origin.x - window.left, origin.y - window.top);
    for (int y = static_cast<int>(from.top); y < from.bottom; ++y)
      for (int x = static_cast<int>(from.left); x < from.right; ++x)
        shown.push_back(picture[static_cast<std::size_t>(y) * static_cast<std::size_t>(size.cx) +
                                static_cast<std::size_t>(x)]);
    return shown;
  }
  QPoint Header(int column, int from_left) const {
    const CRect rect = grid_.GetColumnRect(column);
    return {static_cast<int>(rect.left) + from_left, static_cast<int>(rect.top) + 5};
  }
  void Drag(QPoint from, QPoint to) {
    QWidget* const widget = WidgetOf(grid_.m_hWnd);
    Mouse(widget, QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton);
    Mouse(widget, QEvent::MouseMove, to, Qt::NoButton, Qt::LeftButton);
    Mouse(widget, QEvent::MouseButtonRelease, to, Qt::LeftButton, Qt::NoButton);
  }
  void Wheel(int delta, Qt::KeyboardModifiers held) {
    QWidget* const widget = WidgetOf(grid_.m_hWnd);
    QWheelEvent turned(QPointF(60, 60), widget->mapToGlobal(QPointF(60, 60)), QPoint(), QPoint(0, delta),
                       Qt::NoButton, held, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(widget, &turned);
    Settle();
  }
  std::string Row() const {
    std::string row;
    for (int column = 0; column < grid_.GetColumnCount(); ++column)
      row += grid_.GetGridItem({0, column})->FormatItem().Right(1).ToUtf8();
    return row;
  }

  CBCGPBasicGridCtrl grid_;
};

TEST_F(QtGridView, FrozenColumnsStayToThePixelWhileOthersScroll) {
  GridFrozenColumns frozen(grid_, 2);
  Settle();
  CRect part = grid_.GetRangeRect({0, 0, 1, 4});
  part.top = grid_.GetHeaderRect().top;
  const int edge = static_cast<int>(part.right);
  const CRect beside(edge, part.top, edge + 100, part.bottom);
  const std::vector<DWORD> before = Shown(part);
  const std::vector<DWORD> others = Shown(beside);
  grid_.SendMessage(WM_HSCROLL, SB_RIGHT, 0);
  Settle();
  ASSERT_GT(grid_.GetHorzScrollOffset(), 0);
  EXPECT_EQ(Shown(part), before);
  EXPECT_NE(Shown(beside), others);
  // The line between both is one pixel wide, from the header to the last row.
  const std::vector<DWORD> line = Shown({edge - 1, part.top, edge, part.bottom});
  EXPECT_TRUE(std::all_of(line.begin(), line.end(), [&](DWORD pixel) { return pixel == line[0]; }));
  EXPECT_NE(Shown({edge - 2, part.top, edge - 1, part.bottom}), line);
  EXPECT_NE(Shown({edge, part.top, edge + 1, part.bottom}), line);
  // A click in the frozen part means its cell.
  const CPoint cell = grid_.GetItemRect({2, 1}).CenterPoint();
  Click(grid_.m_hWnd, {static_cast<int>(cell.x), static_cast<int>(cell.y)});
  EXPECT_EQ(grid_.GetCurSelItemID(), CBCGPGridItemID(2, 1));
}

TEST_F(QtGridView, AHeaderIsDraggedToAnotherPlace) {
  GridColumnOrder order(grid_);
  Drag(Header(0, 30), Header(2, static_cast<int>(grid_.GetColumnRect(2).Width()) - 5));
  EXPECT_EQ(Row(), "12034567");
  Drag(Header(3, 30), Header(0, 5));
  EXPECT_EQ(Row(), "31204567");
  EXPECT_FALSE(grid_.GetColumnsInfo().GetUnmovedColumn(0) == 0);
}

TEST_F(QtGridView, AMarkShowsWhereTheColumnWouldCome) {
  GridColumnOrder order(grid_);
  QWidget* const widget = WidgetOf(grid_.m_hWnd);
  const CRect second = grid_.GetColumnRect(1);
  const int edge = static_cast<int>(second.right);
  const CRect around(edge - 3, grid_.GetListRect().top, edge + 3, grid_.GetListRect().bottom);
  const std::vector<DWORD> before = Shown(around);
  Mouse(widget, QEvent::MouseButtonPress, Header(3, 30), Qt::LeftButton, Qt::LeftButton);
  Mouse(widget, QEvent::MouseMove, {edge + 3, 5}, Qt::NoButton, Qt::LeftButton);
  EXPECT_NE(Shown(around), before);
  Key(grid_.m_hWnd, Qt::Key_Escape);
  EXPECT_EQ(Shown(around), before);
  Mouse(widget, QEvent::MouseButtonRelease, {edge + 3, 5}, Qt::LeftButton, Qt::NoButton);
  EXPECT_EQ(Row(), "01234567");
}

TEST_F(QtGridView, OpenColoursFollowTheDesktopAndFixedOnesStay) {
  CBCGPGridCtrl open;
  open.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 300, 150), CWnd::FromHandle(top.window), 8);
  open.InsertColumn(0, _T("名称"), 80);
  open.AddRow(FALSE);
  open.AddRow(FALSE);
  open.GetGridItem({1, 0})->SetBackgroundColor(RGB(200, 230, 230));
  open.AdjustLayout();
  Settle();
  const auto ground = [&](int row) {
    open.UpdateWindow();
    Settle();
    CSize size;
    const std::vector<DWORD> picture = PeerOf(open.m_hWnd)->Picture(size);
    const CRect cell = open.GetItemRect({row, 0});
    return picture[static_cast<std::size_t>(cell.bottom - 4) * static_cast<std::size_t>(size.cx) +
                   static_cast<std::size_t>(cell.right - 5)];
  };
  const DWORD light = ground(0);
  const DWORD fixed = ground(1);
  const QPalette usual = QApplication::palette();
  QPalette dark = usual;
  dark.setColor(QPalette::Base, QColor(30, 30, 30));
  dark.setColor(QPalette::Window, QColor(40, 40, 40));
  dark.setColor(QPalette::Text, QColor(220, 220, 220));
  dark.setColor(QPalette::WindowText, QColor(220, 220, 220));
  QApplication::setPalette(dark);
  Settle();
  const DWORD night = ground(0);
  EXPECT_NE(night, light);
  EXPECT_LT(night & 0xFFU, 0x60U);
  EXPECT_EQ(ground(1), fixed);
  QApplication::setPalette(usual);
  Settle();
  EXPECT_EQ(ground(0), light);
}

// The suite's grid is light on every desktop; a dark one's texts are light.
TEST_F(QtGridView, OpenTextsCanBeReadOnFixedGroundsOfADarkDesktop) {
  const QPalette usual = QApplication::palette();
  QPalette dark = usual;
  for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
    dark.setColor(role, QColor(220, 220, 220));
  for (const auto role : {QPalette::Base, QPalette::Window, QPalette::Button})
    dark.setColor(role, QColor(30, 30, 30));
  QApplication::setPalette(dark);
  CBCGPBasicGridCtrl light;
  light.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 300, 150), CWnd::FromHandle(top.window), 8);
  light.InsertColumn(0, _T("名称"), 80);
  light.InsertColumn(1, _T("选"), 80);
  light.AddRow(FALSE);
  light.SetValue(0, 0, _variant_t(_T("梁")), FALSE);
  light.ReplaceItem(0, 1, new CBCGPGridCheckItemEx(false), FALSE);
  light.EnableFilterBar();
  light.SetFilterBarText(0, _T("梁"));
  light.AdjustLayout();
  light.UpdateWindow();
  Settle();
  CSize size;
  const std::vector<DWORD> picture = PeerOf(light.m_hWnd)->Picture(size);
  const auto has_dark_text = [&](CRect place) {
    place.DeflateRect(3, 2);
    for (LONG y = place.top; y < place.bottom; ++y)
      for (LONG x = place.left; x < place.right; ++x)
        if ((picture[static_cast<std::size_t>(y) * static_cast<std::size_t>(size.cx) +
                     static_cast<std::size_t>(x)] &
             0xFF) < 0x50)
          return true;
    return false;
  };
  const CRect cell = light.GetItemRect({0, 0});
  EXPECT_TRUE(has_dark_text(cell));
  CRect header = cell;
  header.top = light.GetHeaderRect().top;
  header.bottom = light.GetHeaderRect().bottom;
  EXPECT_TRUE(has_dark_text(header));
  CRect filter = cell;
  filter.top = light.GetFilterBarRect().top;
  filter.bottom = light.GetFilterBarRect().bottom;
  EXPECT_TRUE(has_dark_text(filter));
  // An empty box is light within a dark frame: dark, it would be taken for a full one.
  const CRect box = light.GetItemRect({0, 1});
  EXPECT_TRUE(has_dark_text(box));
  const CPoint middle = box.CenterPoint();
  EXPECT_FALSE(has_dark_text(CRect(middle.x - 6, middle.y - 5, middle.x + 6, middle.y + 5)));
  QApplication::setPalette(usual);
  Settle();
}

TEST_F(QtGridView, TheWheelWithControlZooms) {
  GridCommands commands(grid_);
  GridZoom zoom(grid_);
  zoom.Bind(commands);
  Wheel(120, Qt::ControlModifier);
  EXPECT_EQ(zoom.Zoom(), 110);
  Wheel(-120, Qt::ControlModifier);
  Wheel(-120, Qt::ControlModifier);
  EXPECT_EQ(zoom.Zoom(), 90);
  Wheel(-120, Qt::NoModifier);
  EXPECT_EQ(zoom.Zoom(), 90);
  EXPECT_GT(grid_.GetVertScrollOffset(), 0);
}

}  // namespace
}  // namespace lorv::test
