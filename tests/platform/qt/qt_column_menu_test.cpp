#include <QMenu>
#include <QTimer>

#include "framework/ports/menu_model.h"
#include "tests/platform/qt/qt_fixture.h"

namespace lorv::test {
namespace {

class QtColumnMenuTest : public QtTest {
 protected:
  QtColumnMenuTest() {
    MenuModel below;
    below.entries.push_back({MF_STRING, 30, _T("Below"), nullptr});
    menu_.entries.push_back({MF_STRING, 10, _T("One"), nullptr});
    menu_.entries.push_back({MF_STRING, 11, _T("Two"), nullptr});
    menu_.entries.push_back({MF_STRING | MF_MENUBARBREAK, 12, _T("Three"), nullptr});
    menu_.entries.push_back({MF_GRAYED, 13, _T("Four"), nullptr});
    menu_.entries.push_back({MF_STRING | MF_MENUBREAK, 0, _T("Five"), std::make_shared<MenuModel>(below)});
  }

  // Pops the menu up and takes one step with its columns, from left to right.
  UINT Choose(const std::function<void(const QList<QMenu*>&)>& step) {
    QTimer::singleShot(0, [step] {
      QWidget* const shown = QApplication::activePopupWidget();
      ASSERT_NE(shown, nullptr);
      step(shown->findChildren<QMenu*>(QString(), Qt::FindDirectChildrenOnly));
    });
    return desktop_->Popup(menu_, {40, 40}, 0, top.window);
  }
  static void Key(int code) {
    QKeyEvent down(QEvent::KeyPress, code, Qt::NoModifier);
    QCoreApplication::sendEvent(QApplication::activePopupWidget(), &down);
  }
  static void Click(QMenu& column, int entry) {
    const QPointF at = column.actionGeometry(column.actions()[entry]).center();
    for (const auto type : {QEvent::MouseMove, QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
      const auto held = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
      const auto button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
      QMouseEvent mouse(type, at, column.mapToGlobal(at), button, held, Qt::NoModifier);
      QCoreApplication::sendEvent(&column, &mouse);
    }
  }

  MenuModel menu_;
};

TEST_F(QtColumnMenuTest, StandsInColumns) {
  const UINT chosen = Choose([](const QList<QMenu*>& columns) {
    ASSERT_EQ(columns.size(), 3);
    EXPECT_EQ(columns[0]->actions().size(), 2);
    EXPECT_EQ(columns[1]->actions().size(), 2);
    EXPECT_FALSE(columns[1]->actions()[1]->isEnabled());
    EXPECT_EQ(columns[2]->actions().size(), 1);
    for (int i = 0; i < 2; ++i) EXPECT_GE(columns[i + 1]->x(), columns[i]->x() + columns[i]->width());
    for (const QMenu* column : columns) {
      EXPECT_TRUE(column->isVisible());
      EXPECT_EQ(column->y(), columns[0]->y());
      EXPECT_GE(column->width(), column->sizeHint().width());
      EXPECT_GE(column->height(), column->sizeHint().height());
    }
    QApplication::activePopupWidget()->close();
  });
  EXPECT_EQ(chosen, 0U);
  EXPECT_FALSE(desktop_->MenuUp());
}

TEST_F(QtColumnMenuTest, AClickChoosesInAnyColumn) {
  EXPECT_EQ(Choose([](const QList<QMenu*>& columns) { Click(*columns[0], 1); }), 11U);
  EXPECT_EQ(Choose([](const QList<QMenu*>& columns) { Click(*columns[1], 0); }), 12U);
}

TEST_F(QtColumnMenuTest, AGreyEntryIsNotChosen) {
  EXPECT_EQ(Choose([](const QList<QMenu*>& columns) {
              Click(*columns[1], 1);
              if (QWidget* const shown = QApplication::activePopupWidget()) shown->close();
            }),
            0U);
}

TEST_F(QtColumnMenuTest, KeysLeadFromColumnToColumn) {
  EXPECT_EQ(Choose([](const QList<QMenu*>&) {
              for (const int key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Return}) Key(key);
            }),
            11U);
  EXPECT_EQ(Choose([](const QList<QMenu*>&) {
              for (const int key : {Qt::Key_Down, Qt::Key_Right, Qt::Key_Return}) Key(key);
            }),
            12U);
  EXPECT_EQ(Choose([](const QList<QMenu*>&) {
              for (const int key : {Qt::Key_Down, Qt::Key_Right, Qt::Key_Left, Qt::Key_Return}) Key(key);
            }),
            10U);
  // Beside the second entry stands a grey one.
  EXPECT_EQ(Choose([](const QList<QMenu*>&) {
              for (const int key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Right, Qt::Key_Return}) Key(key);
            }),
            12U);
  EXPECT_EQ(Choose([](const QList<QMenu*>&) { Key(Qt::Key_Escape); }), 0U);
  // Keys that mean nothing here.
  EXPECT_EQ(Choose([](const QList<QMenu*>&) {
              for (const int key : {Qt::Key_Left, Qt::Key_F9, Qt::Key_Q, Qt::Key_Escape}) Key(key);
            }),
            0U);
}

TEST_F(QtColumnMenuTest, ASubmenuGivesItsCommand) {
  EXPECT_EQ(Choose([](const QList<QMenu*>& columns) {
              QMenu* const below = columns[2]->actions()[0]->menu();
              columns[2]->setActiveAction(columns[2]->actions()[0]);
              below->setActiveAction(below->actions()[0]);
              QKeyEvent down(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
              QCoreApplication::sendEvent(below, &down);
            }),
            30U);
}

}  // namespace
}  // namespace lorv::test
