#include <QAccessible>
#include <QWidget>
#include <map>

#include "platform/qt/desktop/qt_desktop.h"
#include "platform/qt/desktop/qt_text.h"
#include "platform/qt/window/qt_accessible.h"
#include "tests/platform/exchange/accessible_suite.h"

namespace lorv_test {
namespace {

using lorv::AccessRole;

AccessRole RoleOf(QAccessible::Role role) {
  static const std::map<QAccessible::Role, AccessRole> known = {
      {QAccessible::Table, AccessRole::Table},
      {QAccessible::Cell, AccessRole::Cell},
      {QAccessible::ColumnHeader, AccessRole::ColumnHeader},
      {QAccessible::RowHeader, AccessRole::RowHeader},
      {QAccessible::EditableText, AccessRole::Text},
      {QAccessible::StaticText, AccessRole::Label},
      {QAccessible::Button, AccessRole::Button},
      {QAccessible::CheckBox, AccessRole::CheckBox},
      {QAccessible::RadioButton, AccessRole::RadioButton},
      {QAccessible::Grouping, AccessRole::Group},
      {QAccessible::List, AccessRole::List},
      {QAccessible::ListItem, AccessRole::ListItem},
      {QAccessible::ComboBox, AccessRole::DropDown},
      {QAccessible::Window, AccessRole::Window}};
  const auto found = known.find(role);
  return found == known.end() ? AccessRole::Image : found->second;
}

unsigned StateOf(const QAccessible::State& state) {
  unsigned bits = 0;
  if (state.focusable != 0) bits |= lorv::kAccessFocusable;
  if (state.focused != 0) bits |= lorv::kAccessFocused;
  if (state.selected != 0) bits |= lorv::kAccessSelected;
  if (state.readOnly != 0) bits |= lorv::kAccessReadOnly;
  if (state.disabled != 0) bits |= lorv::kAccessDisabled;
  if (state.invisible != 0) bits |= lorv::kAccessHidden;
  if (state.offscreen != 0) bits |= lorv::kAccessOffscreen;
  if (state.checked != 0) bits |= lorv::kAccessChecked;
  if (state.expanded != 0) bits |= lorv::kAccessExpanded;
  if (state.passwordEdit != 0) bits |= lorv::kAccessProtected;
  return bits;
}

// By the number that Qt keeps an interface under, as readers do: the interface itself may end at any time.
class QtObject : public HeldObject {
 public:
  explicit QtObject(QAccessibleInterface* held) : id_(QAccessible::uniqueId(held)) {}
  static Ref Made(QAccessibleInterface* held) {
    return held == nullptr ? nullptr : std::make_unique<QtObject>(held);
  }

  SeenObject See() const override {
    QAccessibleInterface* const seen = Seen();
    if (seen == nullptr) return {};
    return {true,
            RoleOf(seen->role()),
            lorv::FromQt(
                seen->text(seen->role() == QAccessible::Cell ? QAccessible::Description : QAccessible::Name)),
            lorv::FromQt(seen->text(QAccessible::Value)),
            StateOf(seen->state()),
            lorv::FromQt(seen->rect()),
            seen->childCount()};
  }
  Ref Child(int index) const override { return Seen() == nullptr ? nullptr : Made(Seen()->child(index)); }
  Ref Parent() const override { return Seen() == nullptr ? nullptr : Made(Seen()->parent()); }
  Ref At(POINT at) const override { return Seen() == nullptr ? nullptr : Made(Seen()->childAt(at.x, at.y)); }
  Ref Focused() const override { return Seen() == nullptr ? nullptr : Made(Seen()->focusChild()); }
  std::vector<Ref> Selected() const override {
    std::vector<Ref> all;
    auto* const table = Seen() == nullptr ? nullptr : Seen()->tableInterface();
    if (table == nullptr) return all;
    for (QAccessibleInterface* const cell : table->selectedCells()) all.push_back(Made(cell));
    return all;
  }
  bool SetValue(const CString& value) override {
    if (Seen() == nullptr) return false;
    Seen()->setText(QAccessible::Value, lorv::ToQt(value.View()));
    return true;
  }
  void DoFirstAction() override {
    auto* const actions = Seen() == nullptr ? nullptr : Seen()->actionInterface();
    if (actions != nullptr && !actions->actionNames().isEmpty())
      actions->doAction(actions->actionNames().constFirst());
  }

 private:
  QAccessibleInterface* Seen() const {
    QAccessibleInterface* const seen = QAccessible::accessibleInterface(id_);
    return seen != nullptr && seen->isValid() ? seen : nullptr;
  }
  QAccessible::Id id_;
};

struct Report {
  QAccessible::Id id;
  std::string event;
};
std::vector<Report> reported;

const char* NameOf(QAccessible::Event event) {
  switch (event) {
    case QAccessible::Focus:
      return "focus";
    case QAccessible::ValueChanged:
      return "value";
    case QAccessible::StateChanged:
      return "state";
    case QAccessible::Selection:
    case QAccessible::SelectionWithin:
      return "selection";
    case QAccessible::TableModelChanged:
      return "structure";
    default:
      return nullptr;
  }
}

void NoteEvent(QAccessibleEvent* event) {
  if (const char* const name = NameOf(event->type())) reported.push_back({event->uniqueId(), name});
}

class QtReader : public AccessReader {
 public:
  QtReader() {
    reported.clear();
    lorv::SendAccessibleEventsTo(&NoteEvent);
  }
  ~QtReader() override { lorv::SendAccessibleEventsTo(nullptr); }
  HeldObject::Ref Of(HWND window) override {
    return QtObject::Made(QAccessible::queryAccessibleInterface(lorv::QtWidgetOf(window)));
  }
  std::vector<std::string> TakeEvents(HWND window) override {
    std::vector<std::string> events;
    QAccessibleInterface* const table = QAccessible::queryAccessibleInterface(lorv::QtWidgetOf(window));
    for (const Report& one : std::exchange(reported, {})) {
      // Parts end with the structure that they are of: they were noted by their numbers before.
      const auto place = numbers_.find(one.id);
      const bool whole = one.id == QAccessible::uniqueId(table);
      if (!whole && place == numbers_.end()) continue;
      events.push_back(one.event + " " + std::to_string(whole ? 0 : place->second));
    }
    for (int i = 0; i < table->childCount() && i < 100; ++i)
      if (QAccessibleInterface* const part = table->child(i)) numbers_[QAccessible::uniqueId(part)] = i + 1;
    return events;
  }

 private:
  std::map<QAccessible::Id, int> numbers_;
};

struct Widgets {
  static std::unique_ptr<lorv::Desktop> Make() { return lorv::MakeQtDesktop(); }
  // Edits are answered for by the widget set, which trusts its readers.
  static constexpr bool kGuardsEdits = false;
  static std::unique_ptr<AccessReader> Reader() { return std::make_unique<QtReader>(); }
};

INSTANTIATE_TYPED_TEST_SUITE_P(Qt, Accessible, Widgets);

class QtTable : public AccessScene {
 protected:
  QtTable() : AccessScene(lorv::MakeQtDesktop()) {}
  QAccessibleInterface* Table() {
    return QAccessible::queryAccessibleInterface(lorv::QtWidgetOf(cells.m_hWnd));
  }
};

TEST_F(QtTable, IsATableToQt) {
  auto* const table = Table()->tableInterface();
  ASSERT_NE(table, nullptr);
  EXPECT_EQ(table->rowCount(), 4);
  EXPECT_EQ(table->columnCount(), 3);
  EXPECT_EQ(table->columnDescription(1), QStringLiteral("长度"));
  EXPECT_EQ(table->rowDescription(2), QStringLiteral("3"));
  QAccessibleInterface* const cell = table->cellAt(1, 1);
  ASSERT_NE(cell, nullptr);
  EXPECT_EQ(cell, table->cellAt(1, 1)) << "each part once";
  auto* const place = cell->tableCellInterface();
  ASSERT_NE(place, nullptr);
  EXPECT_EQ(place->rowIndex(), 1);
  EXPECT_EQ(place->columnIndex(), 1);
  EXPECT_TRUE(place->isSelected());
  EXPECT_EQ(place->table(), Table());
  ASSERT_EQ(place->columnHeaderCells().size(), 1);
  EXPECT_EQ(place->columnHeaderCells()[0]->text(QAccessible::Name), QStringLiteral("长度"));
  EXPECT_EQ(place->rowHeaderCells()[0]->text(QAccessible::Name), QStringLiteral("2"));
  EXPECT_EQ(Table()->indexOfChild(cell), 2 * 4 + 2);
  EXPECT_EQ(table->cellAt(4, 0), nullptr);
}

TEST_F(QtTable, RowsAreSelectedWhenAllTheirCellsAre) {
  auto* const table = Table()->tableInterface();
  EXPECT_TRUE(table->selectedRows().isEmpty());
  cells.chosen = {{2, 0}, {2, 1}, {2, 2}, {0, 1}};
  EXPECT_EQ(table->selectedRows(), QList<int>{2});
  EXPECT_TRUE(table->isRowSelected(2));
  EXPECT_FALSE(table->isColumnSelected(1));
}

TEST_F(QtTable, WindowsWithinStandBehindTheCells) {
  CEdit editor;
  editor.Create(WS_CHILD | WS_VISIBLE, CRect(90, 40, 150, 60), &cells, 50);
  EXPECT_EQ(Table()->childCount(), 21);
  EXPECT_EQ(Table()->child(20)->role(), QAccessible::EditableText);
  EXPECT_EQ(Table()->indexOfChild(Table()->child(20)), 20);
}

TEST_F(QtTable, WhatAHandlerThrowsGoesNoFurther) {
  QAccessibleInterface* const cell = Table()->tableInterface()->cellAt(1, 1);
  cell->setText(QAccessible::Value, QStringLiteral("throw"));
  EXPECT_EQ(cell->text(QAccessible::Value), QStringLiteral("3600"));
}

TEST_F(QtTable, PartsAreGivenUpWhenThereAreTooMany) {
  cells.count = {3, 100000};
  auto* const table = Table()->tableInterface();
  const QAccessible::Id first = QAccessible::uniqueId(table->cellAt(0, 0));
  for (int row = 1; row <= static_cast<int>(lorv::kMaxKeptParts); ++row) table->cellAt(row, 0);
  EXPECT_NE(QAccessible::accessibleInterface(first), nullptr) << "not in the middle of its questions";
  EXPECT_TRUE(DispatchUntil([first] { return QAccessible::accessibleInterface(first) == nullptr; }));
  EXPECT_NE(table->cellAt(0, 0), nullptr) << "made anew";
}

}  // namespace
}  // namespace lorv_test
