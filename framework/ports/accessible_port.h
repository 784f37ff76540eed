#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "framework/native/export.h"
#include "framework/native/window_types.h"
#include "framework/text/cstring.h"

// What screen readers and test robots see of a window: a tree of objects, made as they are asked for. A
// window class that draws itself describes its cells by AccessibleCells, or anything else by a tree of its
// own (CWnd::GetAccessibleCells, CWnd::GetAccessible); controls and other windows have the tree of
// framework/windows/accessible_window.h.
//
// Units: places are pixels of the screen, those of AccessibleCells pixels of the client area. Rows, columns
//   and children count from 0.
// Edges: an object may outlive what it stands for: it then answers Exists false, empty values and no
//   children, and does nothing. Objects are made on demand and not kept for long: of a million cells only
//   those asked for exist.
// One thread: that of the user interface.
namespace lorv {

enum class AccessRole : int {
  Window,
  Dialog,
  Pane,
  Group,
  Table,
  Cell,
  ColumnHeader,
  RowHeader,
  Text,
  Label,
  Button,
  CheckBox,
  RadioButton,
  List,
  ListItem,
  DropDown,
  Image
};

// Bits of AccessibleObject::State and AccessibleCells::CellState.
constexpr unsigned kAccessFocusable = 0x001;
constexpr unsigned kAccessFocused = 0x002;
constexpr unsigned kAccessSelectable = 0x004;
constexpr unsigned kAccessSelected = 0x008;
constexpr unsigned kAccessReadOnly = 0x010;
constexpr unsigned kAccessDisabled = 0x020;
constexpr unsigned kAccessHidden = 0x040;     // not shown
constexpr unsigned kAccessOffscreen = 0x080;  // scrolled away
constexpr unsigned kAccessCheckable = 0x100;
constexpr unsigned kAccessChecked = 0x200;
constexpr unsigned kAccessMixed = 0x400;  // neither checked nor not
constexpr unsigned kAccessExpandable = 0x800;
constexpr unsigned kAccessExpanded = 0x1000;
constexpr unsigned kAccessProtected = 0x2000;  // a password: its value is not given
constexpr unsigned kAccessDefault = 0x4000;    // the button of Return

// What a user does with a thing.
enum class AccessAction : int { Press, Toggle, ShowList, Edit, Focus };

// The kinds of change that are reported, after each.
enum class AccessEvent : int { Focus, Name, Value, Selection, State, Structure };

class COMM_LORV_API AccessibleObject {
 public:
  AccessibleObject() = default;
  AccessibleObject(const AccessibleObject&) = delete;
  AccessibleObject& operator=(const AccessibleObject&) = delete;
  virtual ~AccessibleObject() = default;

  virtual bool Exists() const = 0;
  // Identifies an object within its window: the same number as long as the thing is there; 0 is the window.
  virtual std::int64_t Number() const { return 0; }
  // The window that it belongs to.
  virtual HWND Window() const = 0;
  virtual AccessRole Role() const = 0;
  virtual CString Name() const { return {}; }
  virtual CString Value() const { return {}; }
  // As if the user had entered it; false where no user could.
  virtual bool SetValue(const CString& /*value*/) { return false; }
  virtual unsigned State() const = 0;
  virtual RECT Place() const = 0;

  // Null: the window's own object.
  virtual std::shared_ptr<AccessibleObject> Parent() const { return nullptr; }
  virtual int ChildCount() const { return 0; }
  virtual std::shared_ptr<AccessibleObject> Child(int /*index*/) const { return nullptr; }
  virtual int IndexInParent() const { return -1; }
  // Of the window's own object: the one of that number; null if there is none.
  virtual std::shared_ptr<AccessibleObject> Numbered(std::int64_t /*number*/) const { return nullptr; }
  // The innermost child there, or null.
  virtual std::shared_ptr<AccessibleObject> At(POINT /*screen*/) const { return nullptr; }
  // The child that has the focus, or null.
  virtual std::shared_ptr<AccessibleObject> FocusedChild() const { return nullptr; }

  // Of a table.
  virtual SIZE TableSize() const { return {0, 0}; }  // columns, rows
  // Row -1 is the header of the column, column -1 that of the row.
  virtual std::shared_ptr<AccessibleObject> CellAt(int /*row*/, int /*column*/) const { return nullptr; }
  // Of a table, a list: the selected ones, the first kMaxReportedSelection of them.
  virtual std::vector<std::shared_ptr<AccessibleObject>> Selected() const { return {}; }
  // Of a cell or a header: where it stands.
  virtual int Row() const { return -1; }
  virtual int Column() const { return -1; }
  virtual SIZE Span() const { return {1, 1}; }  // the columns and rows that it covers from there on
  // Of a cell, an item: it alone is selected, or it is so no more; false where that is not possible.
  virtual bool Select(bool /*on*/) { return false; }

  // The first one is what a double click or the space bar would do.
  virtual std::vector<AccessAction> Actions() const { return {}; }
  virtual bool Do(AccessAction /*action*/) { return false; }
};

constexpr std::size_t kMaxReportedSelection = 4096;

struct CellAddress {
  int row = -1;
  int column = -1;
  bool operator==(const CellAddress&) const = default;
};

// The cells of a window that draws a table. Only addresses within CellCount are asked for; row -1 is the
// header line above, column -1 the header column at the left, where the function says so.
class COMM_LORV_API AccessibleCells {
 public:
  AccessibleCells() = default;
  AccessibleCells(const AccessibleCells&) = delete;
  AccessibleCells& operator=(const AccessibleCells&) = delete;
  virtual ~AccessibleCells() = default;

  virtual SIZE CellCount() const = 0;  // columns, rows
  virtual CString TableName() const { return {}; }
  virtual CString ColumnHeader(int column) const = 0;
  virtual CString RowHeader(int /*row*/) const { return {}; }
  virtual CString CellText(CellAddress cell) const = 0;
  // kAccess...; what is wanted of focus is whether it is the current one of the table.
  virtual unsigned CellState(CellAddress cell) const = 0;
  // In the client area, headers too; empty where it is not to be seen.
  virtual RECT CellPlace(CellAddress cell) const = 0;
  // The cell or header there; -1, -1 where there is none.
  virtual CellAddress CellAt(POINT client) const = 0;
  virtual CellAddress CurrentCell() const { return {}; }
  // Of cells that are merged: the one that stands for all, and how many columns and rows they are.
  virtual CellAddress MainCell(CellAddress cell) const { return cell; }
  virtual SIZE CellSpan(CellAddress /*cell*/) const { return {1, 1}; }
  // The cell that a window within the table edits, which is called as the cell is.
  virtual CellAddress CellOf(HWND /*window*/) const { return {}; }
  virtual std::vector<CellAddress> SelectedCells(std::size_t /*most*/) const { return {}; }
  virtual bool SetCellText(CellAddress /*cell*/, const CString& /*text*/) { return false; }
  virtual bool SelectCell(CellAddress /*cell*/, bool /*on*/) { return false; }
  virtual std::vector<AccessAction> CellActions(CellAddress /*cell*/) const { return {}; }
  virtual bool DoAtCell(CellAddress /*cell*/, AccessAction /*action*/) { return false; }
};

}  // namespace lorv
