#include "platform/qt/window/qt_accessible_window.h"

#include <QTimer>
#include <algorithm>
#include <limits>
#include <vector>

#include "framework/ports/desktop_port.h"
#include "framework/windows/accessible_window.h"
#include "platform/qt/desktop/qt_desktop.h"
#include "platform/qt/desktop/qt_text.h"
#include "platform/qt/window/qt_accessible.h"
#include "platform/qt/window/qt_accessible_part.h"

// A window as Qt's accessibility asks for it: what our object tree says of it where there is one, else what
// Qt knows of the widget. Interfaces of parts are made when they are asked for and given up when there are
// many, so that a reader that walks through a table does not fill the memory.

namespace lorv {

QtAccessibleWindow::QtAccessibleWindow(QWidget* widget, HWND window)
    : QAccessibleWidget(widget, QAccessible::Pane), window_(window) {}

QtAccessibleWindow::~QtAccessibleWindow() {
  GiveUpParts(true);
}

QtAccessibleWindow* QtAccessibleWindow::Of(QWidget* widget) {
  return widget == nullptr ? nullptr
                           : dynamic_cast<QtAccessibleWindow*>(QAccessible::queryAccessibleInterface(widget));
}

std::shared_ptr<AccessibleObject> QtAccessibleWindow::Tree() const {
  const auto peer = DesktopInForce().Find(window_);
  // Qt answers for the other controls; of a button it would press the widget and send no message.
  const bool button = peer != nullptr && peer->Kind() == WindowKind::Button;
  return button || HasOwnAccessible(window_) ? AccessibleOf(window_) : nullptr;
}

void QtAccessibleWindow::GiveUpParts(bool all) {
  sweep_wanted_ = false;
  // Too many are given up together: which of them a reader still holds is not known.
  all = all || parts_.size() > kMaxKeptParts;
  for (auto at = parts_.begin(); at != parts_.end();) {
    const auto* const part = QAccessible::accessibleInterface(at->second);
    if (!all && part != nullptr && part->isValid()) {
      ++at;
      continue;
    }
    QAccessible::deleteAccessibleInterface(at->second);
    at = parts_.erase(at);
  }
}

// A reader holds the objects it was given before: none is deleted in the middle of its questions.
QAccessibleInterface* QtAccessibleWindow::Part(const std::shared_ptr<AccessibleObject>& object) {
  if (object == nullptr) return nullptr;
  // Another window's object belongs to that window's interface, and number 0 is the window itself.
  if (object->Window() != window_ || object->Number() == 0) {
    QWidget* const other = object->Window() == window_ ? widget() : QtWidgetOf(object->Window());
    return other == nullptr ? nullptr : QAccessible::queryAccessibleInterface(other);
  }
  QAccessible::Id& id = parts_[object->Number()];
  QAccessibleInterface* part = id == 0 ? nullptr : QAccessible::accessibleInterface(id);
  if (part == nullptr) {
    part = new QtAccessiblePart(widget(), object);
    id = QAccessible::registerAccessibleInterface(part);
  }
  if (parts_.size() > kMaxKeptParts && !std::exchange(sweep_wanted_, true))
    QTimer::singleShot(0, widget(), [widget = widget()] {
      if (QtAccessibleWindow* const self = Of(widget)) self->GiveUpParts(false);
    });
  return part;
}

QAccessibleInterface* QtAccessibleWindow::Numbered(std::int64_t number) {
  const auto tree = Tree();
  return number == 0 || tree == nullptr ? this : Part(tree->Numbered(number));
}

QAccessible::Role QtAccessibleWindow::role() const {
  if (const auto tree = Tree()) return QtRoleOf(tree->Role());
  return widget()->isWindow() ? QAccessible::Window : QAccessible::Pane;
}

QString QtAccessibleWindow::text(QAccessible::Text kind) const {
  const auto tree = Tree();
  if (tree != nullptr && kind == QAccessible::Name) return ToQt(tree->Name().View());
  if (tree != nullptr && kind == QAccessible::Value) return ToQt(tree->Value().View());
  return QAccessibleWidget::text(kind);
}

int QtAccessibleWindow::childCount() const {
  const auto tree = Tree();
  const int parts = tree == nullptr ? 0 : tree->ChildCount();
  const int widgets = QAccessibleWidget::childCount();
  // Large tables alone reach the most that can be counted.
  return parts > std::numeric_limits<int>::max() - widgets ? parts : parts + widgets;
}

QAccessibleInterface* QtAccessibleWindow::child(int index) const {
  const auto tree = Tree();
  const int parts = tree == nullptr ? 0 : tree->ChildCount();
  // Parts first and widgets behind them, as they are counted.
  return index < parts ? PartOf(tree->Child(index)) : QAccessibleWidget::child(index - parts);
}

int QtAccessibleWindow::indexOfChild(const QAccessibleInterface* child) const {
  const auto tree = Tree();
  const int parts = tree == nullptr ? 0 : tree->ChildCount();
  const auto* const part = dynamic_cast<const QtAccessiblePart*>(child);
  if (part != nullptr) return part->parent() == this ? part->Object().IndexInParent() : -1;
  const int among_widgets = QAccessibleWidget::indexOfChild(child);
  return among_widgets < 0 ? -1 : parts + among_widgets;
}

QAccessibleInterface* QtAccessibleWindow::childAt(int x, int y) const {
  // Widgets lie on top of what the window draws.
  if (QAccessibleInterface* const inner = QAccessibleWidget::childAt(x, y)) return inner;
  const auto tree = Tree();
  return tree == nullptr ? nullptr : PartOf(tree->At({x, y}));
}

QAccessibleInterface* QtAccessibleWindow::focusChild() const {
  const auto tree = Tree();
  const auto focused = tree == nullptr ? nullptr : tree->FocusedChild();
  return focused == nullptr ? QAccessibleWidget::focusChild() : PartOf(focused);
}

QAccessible::State QtAccessibleWindow::state() const {
  const auto tree = Tree();
  return tree == nullptr ? QAccessibleWidget::state() : QtStateOf(tree->State());
}

QStringList QtAccessibleWindow::actionNames() const {
  const auto tree = Tree();
  return tree == nullptr ? QAccessibleWidget::actionNames() : ActionNamesOf(*tree);
}

void QtAccessibleWindow::doAction(const QString& name) {
  if (const auto tree = Tree()) {
    DoNamedAction(*tree, name);
  } else {
    QAccessibleWidget::doAction(name);
  }
}

void* QtAccessibleWindow::interface_cast(QAccessible::InterfaceType type) {
  const auto tree = type == QAccessible::TableInterface ? Tree() : nullptr;
  if (tree != nullptr && tree->Role() == AccessRole::Table)
    return static_cast<QAccessibleTableInterface*>(this);
  return QAccessibleWidget::interface_cast(type);
}

QAccessibleInterface* QtAccessibleWindow::cellAt(int row, int column) const {
  const auto tree = Tree();
  return tree == nullptr || row < 0 || column < 0 ? nullptr : PartOf(tree->CellAt(row, column));
}

QList<QAccessibleInterface*> QtAccessibleWindow::selectedCells() const {
  QList<QAccessibleInterface*> cells;
  if (const auto tree = Tree())
    for (const auto& selected : tree->Selected()) cells += PartOf(selected);
  return cells;
}

int QtAccessibleWindow::columnCount() const {
  const auto tree = Tree();
  return tree == nullptr ? 0 : static_cast<int>(tree->TableSize().cx);
}

int QtAccessibleWindow::rowCount() const {
  const auto tree = Tree();
  return tree == nullptr ? 0 : static_cast<int>(tree->TableSize().cy);
}

QString QtAccessibleWindow::HeaderText(int row, int column) const {
  const auto tree = Tree();
  const auto header = tree == nullptr ? nullptr : tree->CellAt(row, column);
  return header == nullptr ? QString() : ToQt(header->Name().View());
}

QList<int> QtAccessibleWindow::SelectedLines(bool rows) const {
  const auto tree = Tree();
  if (tree == nullptr) return {};
  const SIZE size = tree->TableSize();
  std::map<int, int> counts;
  for (const auto& selected : tree->Selected()) ++counts[rows ? selected->Row() : selected->Column()];
  QList<int> lines;
  // A row is selected when all of its cells are.
  for (const auto& [line, count] : counts)
    if (count == (rows ? size.cx : size.cy)) lines += line;
  return lines;
}

namespace {

constexpr const char* kWindowOf = "lorv_window";

// Whether a screen reader is active: without one no objects are made.
class Readers : public QAccessible::ActivationObserver {
 public:
  static bool There() { return Now().there_ || Now().sink_ != nullptr; }
  static void Report(QAccessibleEvent& event) {
    Now().sink_ != nullptr ? Now().sink_(&event) : QAccessible::updateAccessibility(&event);
  }
  static Readers& Now() {
    static Readers& now = *new Readers;
    return now;
  }
  void accessibilityActiveChanged(bool active) override { there_ = active; }
  void SendTo(void (*sink)(QAccessibleEvent* event)) { sink_ = sink; }

 private:
  Readers() { QAccessible::installActivationObserver(this); }
  bool there_ = QAccessible::isActive();
  void (*sink_)(QAccessibleEvent* event) = nullptr;
};

QAccessibleInterface* MakeInterface(const QString& /*name*/, QObject* object) {
  auto* const widget = qobject_cast<QWidget*>(object);
  const QVariant window = widget == nullptr ? QVariant() : widget->property(kWindowOf);
  if (!window.isValid()) return nullptr;
  return new QtAccessibleWindow(widget, reinterpret_cast<HWND>(static_cast<UINT_PTR>(window.toULongLong())));
}

// An event that names a widget by its interface is taken for one of a child: it has to name the widget.
template <class Event, class Detail>
void Report(QAccessibleInterface& reported, const Detail& detail) {
  if (reported.object() != nullptr) {
    Event event(reported.object(), detail);
    Readers::Report(event);
  } else {
    Event event(&reported, detail);
    Readers::Report(event);
  }
}

// Qt wants the states that have changed; their values are for the reader to ask.
QAccessible::State AllThatChange() {
  return QtStateOf(kAccessSelected | kAccessChecked | kAccessMixed | kAccessExpanded | kAccessReadOnly);
}

}  // namespace

void AnswerAccessibility() {
  static const bool once = [] {
    QAccessible::installFactory(&MakeInterface);
    Readers::Now();
    return true;
  }();
  static_cast<void>(once);
}

void SendAccessibleEventsTo(void (*sink)(QAccessibleEvent* event)) {
  Readers::Now().SendTo(sink);
}

void MarkAccessible(QWidget& widget, HWND window) {
  widget.setProperty(kWindowOf, QVariant::fromValue<qulonglong>(reinterpret_cast<UINT_PTR>(window)));
}

void ReportQtAccessible(QWidget& widget, AccessEvent event, std::int64_t number) {
  if (!Readers::There()) return;
  QtAccessibleWindow* const window = QtAccessibleWindow::Of(&widget);
  if (window != nullptr && event == AccessEvent::Structure) window->GiveUpParts(true);
  QAccessibleInterface* const reported =
      window == nullptr ? QAccessible::queryAccessibleInterface(&widget) : window->Numbered(number);
  if (reported == nullptr) return;
  switch (event) {
    case AccessEvent::Value:
      return Report<QAccessibleValueChangeEvent>(*reported, reported->text(QAccessible::Value));
    case AccessEvent::State:
      return Report<QAccessibleStateChangeEvent>(*reported, AllThatChange());
    case AccessEvent::Structure:
      if (reported->tableInterface() == nullptr)
        return Report<QAccessibleEvent>(*reported, QAccessible::ObjectReorder);
      return Report<QAccessibleTableModelChangeEvent>(*reported,
                                                      QAccessibleTableModelChangeEvent::ModelReset);
    case AccessEvent::Focus:
      return Report<QAccessibleEvent>(*reported, QAccessible::Focus);
    case AccessEvent::Name:
      return Report<QAccessibleEvent>(*reported, QAccessible::NameChanged);
    case AccessEvent::Selection:
      return Report<QAccessibleEvent>(*reported,
                                      number == 0 ? QAccessible::SelectionWithin : QAccessible::Selection);
  }
}

}  // namespace lorv
