#pragma once

#include <QAccessibleWidget>
#include <map>
#include <memory>

#include "framework/ports/accessible_port.h"

namespace lorv {

// A window that draws itself, as Qt's accessibility knows it: what Qt says of any widget, with the parts of
// the window's own tree as its first children and the widgets within it behind them.
class QtAccessibleWindow : public QAccessibleWidget, public QAccessibleTableInterface {
 public:
  QtAccessibleWindow(QWidget* widget, HWND window);
  ~QtAccessibleWindow() override;
  // That of the widget; null where it is not of ours.
  static QtAccessibleWindow* Of(QWidget* widget);

  // The interface of an object of the tree, or of another window; null for null.
  QAccessibleInterface* Part(const std::shared_ptr<AccessibleObject>& object);
  QAccessibleInterface* Numbered(std::int64_t number);
  void GiveUpParts(bool all);

  QAccessible::Role role() const override;
  QString text(QAccessible::Text kind) const override;
  int childCount() const override;
  QAccessibleInterface* child(int index) const override;
  int indexOfChild(const QAccessibleInterface* child) const override;
  QAccessibleInterface* childAt(int x, int y) const override;
  QAccessibleInterface* focusChild() const override;
  QAccessible::State state() const override;
  QStringList actionNames() const override;
  void doAction(const QString& name) override;
  void* interface_cast(QAccessible::InterfaceType type) override;

  QAccessibleInterface* caption() const override { return nullptr; }
  QAccessibleInterface* summary() const override { return nullptr; }
  QAccessibleInterface* cellAt(int row, int column) const override;
  int selectedCellCount() const override { return static_cast<int>(selectedCells().size()); }
  QList<QAccessibleInterface*> selectedCells() const override;
  QString columnDescription(int column) const override { return HeaderText(-1, column); }
  QString rowDescription(int row) const override { return HeaderText(row, -1); }
  int columnCount() const override;
  int rowCount() const override;
  // Whole lines are selected as the sum of their cells.
  int selectedColumnCount() const override { return static_cast<int>(selectedColumns().size()); }
  int selectedRowCount() const override { return static_cast<int>(selectedRows().size()); }
  QList<int> selectedColumns() const override { return SelectedLines(false); }
  QList<int> selectedRows() const override { return SelectedLines(true); }
  bool isColumnSelected(int column) const override { return selectedColumns().contains(column); }
  bool isRowSelected(int row) const override { return selectedRows().contains(row); }
  bool selectRow(int /*row*/) override { return false; }
  bool selectColumn(int /*column*/) override { return false; }
  bool unselectRow(int /*row*/) override { return false; }
  bool unselectColumn(int /*column*/) override { return false; }
  void modelChange(QAccessibleTableModelChangeEvent* /*event*/) override {}

 private:
  // The window's own tree, or null.
  std::shared_ptr<AccessibleObject> Tree() const;
  QAccessibleInterface* PartOf(const std::shared_ptr<AccessibleObject>& object) const {
    return const_cast<QtAccessibleWindow*>(this)->Part(object);
  }
  QString HeaderText(int row, int column) const;
  QList<int> SelectedLines(bool rows) const;

  HWND window_;
  std::map<std::int64_t, QAccessible::Id> parts_;
  bool sweep_wanted_ = false;
};

}  // namespace lorv
