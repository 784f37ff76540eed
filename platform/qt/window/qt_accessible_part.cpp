#include "platform/qt/window/qt_accessible_part.h"

#include "framework/drawing/geometry.h"
#include "platform/models/carried_fault.h"
#include "platform/qt/desktop/qt_text.h"
#include "platform/qt/window/qt_accessible_window.h"

// A part of a window, such as a cell, as Qt's accessibility asks for it. It knows its widget and our
// object, which may both be gone: every answer looks first. Other parts are found by the window, which
// keeps one interface for each.

namespace lorv {
namespace {

QString NameOf(AccessAction action) {
  switch (action) {
    case AccessAction::Press:
      return QAccessibleActionInterface::pressAction();
    case AccessAction::Toggle:
      return QAccessibleActionInterface::toggleAction();
    case AccessAction::ShowList:
      return QAccessibleActionInterface::showMenuAction();
    case AccessAction::Edit:
      // The one action for which Qt has no name of its own.
      return QStringLiteral("Edit");
    default:
      return QAccessibleActionInterface::setFocusAction();
  }
}

}  // namespace

QAccessible::Role QtRoleOf(AccessRole role) {
  // In the order of AccessRole.
  constexpr QAccessible::Role kRoles[] = {
      QAccessible::Window,       QAccessible::Dialog,     QAccessible::Pane,         QAccessible::Grouping,
      QAccessible::Table,        QAccessible::Cell,       QAccessible::ColumnHeader, QAccessible::RowHeader,
      QAccessible::EditableText, QAccessible::StaticText, QAccessible::Button,       QAccessible::CheckBox,
      QAccessible::RadioButton,  QAccessible::List,       QAccessible::ListItem,     QAccessible::ComboBox,
      QAccessible::Graphic};
  return kRoles[static_cast<int>(role)];
}

QAccessible::State QtStateOf(unsigned bits) {
  const auto has = [bits](unsigned bit) { return (bits & bit) != 0; };
  QAccessible::State state;
  state.focusable = has(kAccessFocusable);
  state.focused = has(kAccessFocused);
  state.selectable = has(kAccessSelectable);
  state.selected = has(kAccessSelected);
  state.readOnly = has(kAccessReadOnly);
  state.editable = !has(kAccessReadOnly | kAccessDisabled);
  state.disabled = has(kAccessDisabled);
  // Scrolled out counts as not seen, so that readers do not send their users there by the mouse.
  state.invisible = has(kAccessHidden | kAccessOffscreen);
  state.offscreen = has(kAccessOffscreen);
  state.checkable = has(kAccessCheckable);
  state.checked = has(kAccessChecked);
  state.checkStateMixed = has(kAccessMixed);
  state.expandable = has(kAccessExpandable);
  state.expanded = has(kAccessExpanded);
  state.collapsed = has(kAccessExpandable) && !has(kAccessExpanded);
  state.passwordEdit = has(kAccessProtected);
  state.defaultButton = has(kAccessDefault);
  return state;
}

QStringList ActionNamesOf(const AccessibleObject& object) {
  QStringList names;
  for (const AccessAction action : object.Actions()) names += NameOf(action);
  return names;
}

// What a handler of the class throws does not pass through Qt.
void DoNamedAction(AccessibleObject& object, const QString& name) {
  for (const AccessAction action : object.Actions()) {
    if (NameOf(action) != name) continue;
    CarriedFault::Guarded([&] { return object.Do(action); });
    return;
  }
}

QtAccessibleWindow* QtAccessiblePart::Home() const {
  return QtAccessibleWindow::Of(widget_);
}

QWindow* QtAccessiblePart::window() const {
  return widget_.isNull() ? nullptr : widget_->window()->windowHandle();
}

QAccessibleInterface* QtAccessiblePart::childAt(int x, int y) const {
  QtAccessibleWindow* const home = Home();
  return home == nullptr ? nullptr : home->Part(object_->At({x, y}));
}

QAccessibleInterface* QtAccessiblePart::parent() const {
  QtAccessibleWindow* const home = Home();
  return home == nullptr ? nullptr : home->Part(object_->Parent());
}

QAccessibleInterface* QtAccessiblePart::child(int index) const {
  QtAccessibleWindow* const home = Home();
  return home == nullptr ? nullptr : home->Part(object_->Child(index));
}

int QtAccessiblePart::indexOfChild(const QAccessibleInterface* child) const {
  const auto* const part = dynamic_cast<const QtAccessiblePart*>(child);
  // Parts of other windows have numbers of their own.
  if (part == nullptr || part->widget_ != widget_) return -1;
  const auto parent = part->object_->Parent();
  const bool ours = parent != nullptr && parent->Number() == object_->Number();
  return ours ? part->object_->IndexInParent() : -1;
}

QString QtAccessiblePart::text(QAccessible::Text kind) const {
  if (!isValid()) return {};
  const CString name = object_->Name();
  const CString value = object_->Value();
  // What its headers say readers ask of the headers; here a cell's name is its text, the one thing read
  // aloud.
  if (object_->Role() == AccessRole::Cell)
    return ToQt((kind == QAccessible::Description ? name : value).View());
  if (kind == QAccessible::Name) return ToQt(name.View());
  return kind == QAccessible::Value ? ToQt(value.View()) : QString();
}

// What a handler of the class throws does not pass through Qt.
void QtAccessiblePart::setText(QAccessible::Text kind, const QString& text) {
  // A change of the table ends its parts, this one too.
  const auto held = object_;
  if (kind == QAccessible::Value && isValid())
    CarriedFault::Guarded([&] { return held->SetValue(FromQt(text)); });
}

QRect QtAccessiblePart::rect() const {
  return isValid() ? ToQt(object_->Place()) : QRect();
}

QAccessible::State QtAccessiblePart::state() const {
  if (isValid()) return QtStateOf(object_->State());
  QAccessible::State gone;
  gone.invalid = 1;
  return gone;
}

void* QtAccessiblePart::interface_cast(QAccessible::InterfaceType type) {
  const bool cell = object_->Row() >= 0 || object_->Column() >= 0;
  // Items of lists are parts, too, and stand in no table.
  if (type == QAccessible::TableCellInterface && cell)
    return static_cast<QAccessibleTableCellInterface*>(this);
  if (type == QAccessible::ActionInterface) return static_cast<QAccessibleActionInterface*>(this);
  return nullptr;
}

QList<QAccessibleInterface*> QtAccessiblePart::Header(int row, int column) const {
  QtAccessibleWindow* const home = Home();
  const auto table = object_->Parent();
  const bool cell = object_->Row() >= 0 && object_->Column() >= 0;
  if (home == nullptr || table == nullptr || !cell) return {};
  return {home->Part(table->CellAt(row, column))};
}

QStringList QtAccessiblePart::actionNames() const {
  return ActionNamesOf(*object_);
}

void QtAccessiblePart::doAction(const QString& name) {
  const auto held = object_;
  DoNamedAction(*held, name);
}

}  // namespace lorv
