#pragma once

#include <QAccessible>
#include <QPointer>
#include <QWidget>
#include <memory>

#include "framework/ports/accessible_port.h"

namespace lorv {

class QtAccessibleWindow;

QAccessible::Role QtRoleOf(AccessRole role);
QAccessible::State QtStateOf(unsigned bits);
QStringList ActionNamesOf(const AccessibleObject& object);
void DoNamedAction(AccessibleObject& object, const QString& name);

// One object of a window's tree.
class QtAccessiblePart : public QAccessibleInterface,
                         public QAccessibleTableCellInterface,
                         public QAccessibleActionInterface {
 public:
  QtAccessiblePart(QWidget* widget, std::shared_ptr<AccessibleObject> object)
      : widget_(widget), object_(std::move(object)) {}

  AccessibleObject& Object() const { return *object_; }

  bool isValid() const override { return !widget_.isNull() && object_->Exists(); }
  QObject* object() const override { return nullptr; }
  QWindow* window() const override;
  QAccessibleInterface* childAt(int x, int y) const override;
  QAccessibleInterface* parent() const override;
  QAccessibleInterface* child(int index) const override;
  int childCount() const override { return object_->ChildCount(); }
  int indexOfChild(const QAccessibleInterface* child) const override;
  QString text(QAccessible::Text kind) const override;
  void setText(QAccessible::Text kind, const QString& text) override;
  QRect rect() const override;
  QAccessible::Role role() const override { return QtRoleOf(object_->Role()); }
  QAccessible::State state() const override;
  void* interface_cast(QAccessible::InterfaceType type) override;

  bool isSelected() const override { return (object_->State() & kAccessSelected) != 0; }
  QList<QAccessibleInterface*> columnHeaderCells() const override { return Header(-1, object_->Column()); }
  QList<QAccessibleInterface*> rowHeaderCells() const override { return Header(object_->Row(), -1); }
  int columnIndex() const override { return object_->Column(); }
  int rowIndex() const override { return object_->Row(); }
  int columnExtent() const override { return static_cast<int>(object_->Span().cx); }
  int rowExtent() const override { return static_cast<int>(object_->Span().cy); }
  QAccessibleInterface* table() const override { return parent(); }

  QStringList actionNames() const override;
  void doAction(const QString& name) override;
  QStringList keyBindingsForAction(const QString& /*name*/) const override { return {}; }

 private:
  QtAccessibleWindow* Home() const;
  QList<QAccessibleInterface*> Header(int row, int column) const;

  QPointer<QWidget> widget_;
  std::shared_ptr<AccessibleObject> object_;
};

}  // namespace lorv
