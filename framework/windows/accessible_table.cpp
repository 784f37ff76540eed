#include "framework/windows/accessible_table.h"

#include <algorithm>
#include <limits>

#include "framework/drawing/geometry.h"
#include "framework/ports/desktop_port.h"
#include "framework/ports/window_map.h"

// Objects know their window and their address only, and ask the window class each time: so one of them can
// outlive the table, and a table of a million cells costs nothing.

namespace lorv {
namespace {

AccessibleCells* CellsOf(HWND window) {
  MessageTarget* const target = MappedWindow(window);
  return target == nullptr ? nullptr : target->GetAccessibleCells();
}

bool Has(const AccessibleCells* cells, CellAddress at) {
  if (cells == nullptr) return false;
  const SIZE count = cells->CellCount();
  // -1 is the row or column of the headers, which readers ask for like cells.
  return at.row >= -1 && at.row < count.cy && at.column >= -1 && at.column < count.cx;
}

// In 64 bits, as rows and columns together leave 32. From 1 on: 0 is the window itself.
std::int64_t NumberIn(const AccessibleCells& cells, CellAddress at) {
  const std::int64_t across = std::int64_t{cells.CellCount().cx} + 1;
  return (std::int64_t{at.row} + 1) * across + at.column + 1 + 1;
}

CellAddress AddressIn(const AccessibleCells& cells, std::int64_t number) {
  const std::int64_t across = std::int64_t{cells.CellCount().cx} + 1;
  return {static_cast<int>((number - 1) / across) - 1, static_cast<int>((number - 1) % across) - 1};
}

class CellObject : public AccessibleObject {
 public:
  CellObject(HWND window, CellAddress at) : window_(window), at_(at) {}

  bool Exists() const override { return Cells() != nullptr; }
  std::int64_t Number() const override { return NumberOfCell(window_, at_); }
  HWND Window() const override { return window_; }
  AccessRole Role() const override {
    // The corner where both headers meet counts as one of a column.
    if (at_.row < 0) return AccessRole::ColumnHeader;
    return at_.column < 0 ? AccessRole::RowHeader : AccessRole::Cell;
  }

  CString Name() const override {
    const AccessibleCells* const cells = Cells();
    if (cells == nullptr) return {};
    // The row first and then the column, as one reads a table.
    const CString row = at_.row < 0 ? CString() : cells->RowHeader(at_.row);
    const CString column = at_.column < 0 ? CString() : cells->ColumnHeader(at_.column);
    return row.IsEmpty() || column.IsEmpty() ? row + column : row + _T(" ") + column;
  }
  CString Value() const override {
    const AccessibleCells* const cells = Cells();
    return cells == nullptr || !Holds() ? CString() : cells->CellText(at_);
  }
  // A read-only cell is left alone whatever the class would do.
  bool SetValue(const CString& value) override {
    AccessibleCells* const cells = Cells();
    constexpr unsigned kRefuses = kAccessReadOnly | kAccessDisabled;
    return cells != nullptr && Holds() && (State() & kRefuses) == 0 && cells->SetCellText(at_, value);
  }
  unsigned State() const override {
    const AccessibleCells* const cells = Cells();
    if (cells == nullptr) return kAccessHidden;
    unsigned state = cells->CellState(at_);
    // What is scrolled out has no place; a reader must not send its user there by the mouse.
    if (CRect(cells->CellPlace(at_)).IsRectEmpty() != 0) state |= kAccessOffscreen;
    // The cell has the keys only while its window has.
    if (DesktopInForce().Focus() != window_) state &= ~kAccessFocused;
    return state;
  }
  RECT Place() const override {
    const AccessibleCells* const cells = Cells();
    const auto peer = DesktopInForce().Find(window_);
    const CRect place = cells == nullptr ? CRect() : CRect(cells->CellPlace(at_));
    return peer == nullptr || place.IsRectEmpty() != 0 ? CRect() : place + peer->ClientOrigin();
  }
  std::shared_ptr<AccessibleObject> Parent() const override { return AccessibleTableOf(window_); }
  int IndexInParent() const override {
    const std::int64_t index = Number() - 1;
    // Readers count in 32 bits; for cells beyond them there is no answer.
    return index > std::numeric_limits<int>::max() ? -1 : static_cast<int>(index);
  }
  int Row() const override { return at_.row; }
  int Column() const override { return at_.column; }
  SIZE Span() const override {
    const AccessibleCells* const cells = Cells();
    return cells == nullptr || !Holds() ? SIZE{1, 1} : cells->CellSpan(at_);
  }
  bool Select(bool on) override {
    AccessibleCells* const cells = Cells();
    return cells != nullptr && Holds() && cells->SelectCell(at_, on);
  }
  std::vector<AccessAction> Actions() const override {
    const AccessibleCells* const cells = Cells();
    return cells == nullptr ? std::vector<AccessAction>() : cells->CellActions(at_);
  }
  bool Do(AccessAction action) override {
    AccessibleCells* const cells = Cells();
    if (cells == nullptr) return false;
    // Asked again: what was offered a moment ago may be over, a read-only cell for instance.
    const std::vector<AccessAction> known = cells->CellActions(at_);
    return std::find(known.begin(), known.end(), action) != known.end() && cells->DoAtCell(at_, action);
  }

 private:
  AccessibleCells* Cells() const {
    AccessibleCells* const cells = CellsOf(window_);
    return Has(cells, at_) ? cells : nullptr;
  }
  bool Holds() const { return at_.row >= 0 && at_.column >= 0; }

  HWND window_;
  CellAddress at_;
};

class TableObject : public AccessibleObject {
 public:
  explicit TableObject(HWND window) : window_(window) {}

  bool Exists() const override { return CellsOf(window_) != nullptr; }
  HWND Window() const override { return window_; }
  AccessRole Role() const override { return AccessRole::Table; }
  CString Name() const override {
    const AccessibleCells* const cells = CellsOf(window_);
    return cells == nullptr ? CString() : cells->TableName();
  }
  unsigned State() const override {
    const auto peer = DesktopInForce().Find(window_);
    if (peer == nullptr) return kAccessHidden;
    unsigned state = kAccessFocusable;
    if (DesktopInForce().Focus() == window_) state |= kAccessFocused;
    if ((peer->Style() & WS_DISABLED) != 0) state |= kAccessDisabled;
    if ((peer->Style() & WS_VISIBLE) == 0) state |= kAccessHidden;
    return state;
  }
  RECT Place() const override {
    const auto peer = DesktopInForce().Find(window_);
    return peer == nullptr ? CRect() : CRect(peer->ClientRect()) + peer->ClientOrigin();
  }
  int ChildCount() const override {
    const AccessibleCells* const cells = CellsOf(window_);
    if (cells == nullptr) return 0;
    const SIZE count = cells->CellCount();
    const std::int64_t all = (std::int64_t{count.cx} + 1) * (std::int64_t{count.cy} + 1);
    return static_cast<int>(std::min<std::int64_t>(all, std::numeric_limits<int>::max()));
  }
  std::shared_ptr<AccessibleObject> Child(int index) const override {
    return index < 0 ? nullptr : Numbered(std::int64_t{index} + 1);
  }
  std::shared_ptr<AccessibleObject> Numbered(std::int64_t number) const override {
    const AccessibleCells* const cells = CellsOf(window_);
    if (cells == nullptr || number < 1) return nullptr;
    const std::int64_t across = std::int64_t{cells->CellCount().cx} + 1;
    // Before it becomes an address, whose rows have 32 bits.
    if ((number - 1) / across > cells->CellCount().cy) return nullptr;
    const CellAddress at = AddressIn(*cells, number);
    return std::make_shared<CellObject>(window_, at);
  }
  std::shared_ptr<AccessibleObject> At(POINT screen) const override {
    const AccessibleCells* const cells = CellsOf(window_);
    const auto peer = DesktopInForce().Find(window_);
    if (cells == nullptr || peer == nullptr) return nullptr;
    const POINT origin = peer->ClientOrigin();
    return Made(cells->CellAt({screen.x - origin.x, screen.y - origin.y}));
  }
  std::shared_ptr<AccessibleObject> FocusedChild() const override {
    const AccessibleCells* const cells = CellsOf(window_);
    return cells == nullptr || DesktopInForce().Focus() != window_ ? nullptr : Made(cells->CurrentCell());
  }
  SIZE TableSize() const override {
    const AccessibleCells* const cells = CellsOf(window_);
    return cells == nullptr ? SIZE{0, 0} : cells->CellCount();
  }
  std::shared_ptr<AccessibleObject> CellAt(int row, int column) const override {
    const AccessibleCells* const cells = CellsOf(window_);
    CellAddress at{row, column};
    if (!Has(cells, at)) return nullptr;
    if (row >= 0 && column >= 0) at = cells->MainCell(at);
    return Has(cells, at) ? std::make_shared<CellObject>(window_, at) : nullptr;
  }
  std::vector<std::shared_ptr<AccessibleObject>> Selected() const override {
    const AccessibleCells* const cells = CellsOf(window_);
    std::vector<std::shared_ptr<AccessibleObject>> selected;
    if (cells == nullptr) return selected;
    for (const CellAddress at : cells->SelectedCells(kMaxReportedSelection))
      // The class may answer with more than it was asked for, or with rows that are gone.
      if (selected.size() < kMaxReportedSelection && Has(cells, at))
        selected.push_back(std::make_shared<CellObject>(window_, at));
    return selected;
  }

 private:
  std::shared_ptr<AccessibleObject> Made(CellAddress at) const {
    return at == CellAddress() ? nullptr : CellAt(at.row, at.column);
  }

  HWND window_;
};

}  // namespace

std::shared_ptr<AccessibleObject> AccessibleTableOf(HWND window) {
  return CellsOf(window) == nullptr ? nullptr : std::make_shared<TableObject>(window);
}

std::int64_t NumberOfCell(HWND window, CellAddress cell) {
  const AccessibleCells* const cells = CellsOf(window);
  return Has(cells, cell) ? NumberIn(*cells, cell) : 0;
}

}  // namespace lorv
