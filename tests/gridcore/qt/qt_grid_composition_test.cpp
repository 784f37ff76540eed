#include <QInputMethodEvent>

#include "tests/gridcore/qt/qt_grid_desk.h"

namespace lorv_test {
namespace {

// Events as an input method sends them, to the widget that has the keys.
class QtGridComposition : public QtGridDesk {
 protected:
  void Compose(const QString& text) {
    QInputMethodEvent event(text, {});
    QCoreApplication::sendEvent(Focused(), &event);
    Settle();
  }
  void Commit(const QString& text) {
    QInputMethodEvent event;
    event.setCommitString(text);
    QCoreApplication::sendEvent(Focused(), &event);
    Settle();
  }
  QVariant Asked(QWidget* widget, Qt::InputMethodQuery what) {
    QInputMethodQueryEvent query(what);
    QCoreApplication::sendEvent(widget, &query);
    return query.value(what);
  }
};

TEST_F(QtGridComposition, TheFirstKeyIsComposedInTheEditor) {
  grid.SetCurSel({1, 1});
  Compose(QStringLiteral("q"));
  ASSERT_NE(Editor(), nullptr);
  EXPECT_EQ(Focused(), WidgetOf(Editor()->m_hWnd));
  Compose(QStringLiteral("qiang"));
  EXPECT_EQ(TextOf(Editor()->m_hWnd), CString());
  Key(Focused(), Qt::Key_Return, QStringLiteral("\r"));
  ASSERT_NE(Editor(), nullptr) << "it was meant for the candidates";
  Commit(QStringLiteral("墙"));
  EXPECT_EQ(TextOf(Editor()->m_hWnd), CString(_T("墙")));
  Key(Focused(), Qt::Key_Return, QStringLiteral("\r"));
  EXPECT_EQ(Value(1, 1), CString(_T("墙")));
  EXPECT_EQ(grid.GetCurSelItemID(), CBCGPGridItemID(2, 1));
}

TEST_F(QtGridComposition, ACommitAloneIsKept) {
  grid.SetCurSel({1, 1});
  Commit(QStringLiteral("墙"));
  ASSERT_NE(Editor(), nullptr);
  EXPECT_EQ(TextOf(Editor()->m_hWnd), CString(_T("墙")));
}

TEST_F(QtGridComposition, WhatIsBeingComposedIsNotLostWithTheEditor) {
  grid.SetCurSel({1, 1});
  Compose(QStringLiteral("li"));
  grid.SetCurSel({3, 2});
  Settle();
  EXPECT_EQ(Value(1, 1), CString(_T("li")));
}

TEST_F(QtGridComposition, InputMethodsRestOverACellThatTakesNoText) {
  At(1, 1)->SetReadOnly();
  grid.SetCurSel({1, 1});
  QWidget* const widget = WidgetOf(grid.m_hWnd);
  EXPECT_FALSE(Asked(widget, Qt::ImEnabled).toBool());
  Compose(QStringLiteral("q"));
  Commit(QStringLiteral("墙"));
  EXPECT_EQ(Editor(), nullptr);
  EXPECT_EQ(Value(1, 1), CString(_T("板")));
  grid.SetCurSel({2, 1});
  EXPECT_TRUE(Asked(widget, Qt::ImEnabled).toBool());
}

TEST_F(QtGridComposition, TheCandidatesStandAtTheCellAndThenAtTheCaret) {
  grid.SetCurSel({2, 1});
  const CRect cell = grid.GetItemRect({2, 1});
  const QRect before = Asked(WidgetOf(grid.m_hWnd), Qt::ImCursorRectangle).toRect();
  EXPECT_EQ(before.left(), cell.left);
  EXPECT_EQ(before.top(), cell.top);
  Compose(QStringLiteral("q"));
  Commit(QStringLiteral("墙体"));
  QWidget* const editor = WidgetOf(Editor()->m_hWnd);
  const QRect caret = Asked(editor, Qt::ImCursorRectangle).toRect();
  EXPECT_TRUE(editor->rect().adjusted(-2, -2, 2, 2).contains(caret.center()));
  EXPECT_GT(caret.center().x(), 10) << "behind what was typed";
}

}  // namespace
}  // namespace lorv_test
