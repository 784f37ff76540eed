#include <QAccessible>

#include "gridcore/items/check_item.h"
#include "platform/qt/desktop/qt_text.h"
#include "platform/qt/window/qt_accessible.h"
#include "tests/gridcore/qt/qt_grid_desk.h"

namespace lorv_test {
namespace {

class QtGridCells : public QtGridDesk {
 protected:
  QAccessibleInterface* Window() { return QAccessible::queryAccessibleInterface(WidgetOf(grid.m_hWnd)); }
  QAccessibleTableInterface* Table() { return Window()->tableInterface(); }
  QAccessibleInterface* Cell(int row, int column) { return Table()->cellAt(row, column); }
};

TEST_F(QtGridCells, AGridIsATable) {
  ASSERT_NE(Table(), nullptr);
  EXPECT_EQ(Window()->role(), QAccessible::Table);
  EXPECT_EQ(Table()->rowCount(), 5);
  EXPECT_EQ(Table()->columnCount(), 3);
  EXPECT_EQ(Table()->columnDescription(1), QStringLiteral("长度"));
  EXPECT_EQ(Cell(2, 1)->text(QAccessible::Name), QStringLiteral("板")) << "what is read aloud";
  EXPECT_EQ(Cell(2, 1)->text(QAccessible::Description), QStringLiteral("3 长度"));
  EXPECT_EQ(Cell(2, 1)->text(QAccessible::Value), QStringLiteral("板"));
  EXPECT_EQ(Cell(2, 1)->tableCellInterface()->rowIndex(), 2);
  EXPECT_EQ(Cell(2, 1)->tableCellInterface()->columnHeaderCells()[0]->text(QAccessible::Name),
            QStringLiteral("长度"));
  grid.SelectRange({0, 1, 2, 1});
  EXPECT_EQ(Table()->selectedRows(), QList<int>{1});
  EXPECT_EQ(Table()->selectedCellCount(), 3);
}

TEST_F(QtGridCells, MergedCellsHaveTheirExtent) {
  grid.MergeRange({1, 1, 2, 3});
  EXPECT_EQ(Cell(2, 2), Cell(1, 1));
  EXPECT_EQ(Cell(1, 1)->tableCellInterface()->columnExtent(), 2);
  EXPECT_EQ(Cell(1, 1)->tableCellInterface()->rowExtent(), 3);
  EXPECT_EQ(Cell(0, 0)->tableCellInterface()->rowExtent(), 1);
}

TEST_F(QtGridCells, TheEditorIsATextWithTheNameOfItsCell) {
  auto* const actions = Cell(2, 1)->actionInterface();
  ASSERT_FALSE(actions->actionNames().isEmpty());
  actions->doAction(actions->actionNames().constFirst());
  Settle();
  ASSERT_NE(Editor(), nullptr);
  QAccessibleInterface* const editor = QAccessible::queryAccessibleInterface(WidgetOf(Editor()->m_hWnd));
  EXPECT_EQ(editor->role(), QAccessible::EditableText);
  EXPECT_EQ(editor->text(QAccessible::Name), QStringLiteral("3 长度"));
  ASSERT_NE(editor->editableTextInterface(), nullptr);
  editor->editableTextInterface()->replaceText(0, 1, QStringLiteral("墙"));
  Settle();
  Key(Editor()->m_hWnd, Qt::Key_Return, QStringLiteral("\r"));
  EXPECT_EQ(Value(2, 1), CString(_T("墙")));
}

TEST_F(QtGridCells, ValuesAndChecksAreSet) {
  Cell(1, 1)->setText(QAccessible::Value, QStringLiteral("梁"));
  EXPECT_EQ(Value(1, 1), CString(_T("梁")));
  grid.GetRow(0)->ReplaceItem(0, new CBCGPGridCheckItem(false));
  EXPECT_EQ(Cell(0, 0)->state().checked, 0U);
  Cell(0, 0)->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
  EXPECT_EQ(Cell(0, 0)->state().checked, 1U);
}

std::vector<QAccessible::Event> reported;

TEST_F(QtGridCells, ReadersHearOfChanges) {
  Table();
  reported.clear();
  lorv::SendAccessibleEventsTo([](QAccessibleEvent* event) { reported.push_back(event->type()); });
  const auto heard = [](QAccessible::Event event) {
    return std::find(reported.begin(), reported.end(), event) != reported.end();
  };
  grid.SetCurSel({3, 2});
  EXPECT_TRUE(heard(QAccessible::Focus));
  EXPECT_TRUE(heard(QAccessible::SelectionWithin));
  At(3, 2)->SetValue(_variant_t(_T("柱")));
  EXPECT_TRUE(heard(QAccessible::ValueChanged));
  grid.RemoveRow(0);
  EXPECT_TRUE(heard(QAccessible::TableModelChanged));
  lorv::SendAccessibleEventsTo(nullptr);
}

// An action that rebuilds the table ends the interfaces of its cells, also the one that was asked to act.
class Expanding : public QtGridCells {};

TEST_F(Expanding, AnActionMayEndItsOwnInterface) {
  lorv::SendAccessibleEventsTo([](QAccessibleEvent* /*event*/) {});
  grid.GetRow(0)->AddSubItem(grid.CreateRow(3));
  QAccessibleInterface* const header = Window()->child(1 * 4);
  ASSERT_EQ(header->role(), QAccessible::RowHeader);
  header->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_EQ(grid.GetRow(0)->IsExpanded(), FALSE);
  grid.InsertGroupColumn(0, 0);
  QAccessibleInterface* const group = Cell(6, 0);
  ASSERT_NE(group, nullptr);
  group->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_EQ(grid.GetGroupRow(0)->IsExpanded(), FALSE);
  lorv::SendAccessibleEventsTo(nullptr);
}

}  // namespace
}  // namespace lorv_test
