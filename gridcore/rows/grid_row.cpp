#include "gridcore/rows/grid_row.h"

#include <algorithm>
#include <typeinfo>
#include <utility>

#include "framework/windows/controls.h"
#include "gridcore/control/grid_control.h"
#include "gridcore/geometry/moved_element.h"

// A row with its cells and the rows nested in it. It notifies its grid before a cell or itself goes, as an
// editor may be open there; handlers of that may change the row, so places are looked up again afterwards.

IMPLEMENT_DYNCREATE(CBCGPGridRow, CObject)

// The room is a promise of the host, which may be any number.
CBCGPGridRow::CBCGPGridRow(int room, DWORD_PTR data, int flags)
    : data_(data), flags_(flags), room_(std::clamp(room, 0, 1024)) {}

CBCGPGridRow::~CBCGPGridRow() {
  if (owner_ != nullptr) owner_->RowGone(*this);
  LeaveParent();
  if (sub_ == nullptr) return;
  // Cut off from here first: rows that go notify their parent.
  for (CBCGPGridRow* row : std::exchange(sub_->rows, {})) {
    row->parent_ = nullptr;
    delete row;
  }
}

CBCGPGridItem* CBCGPGridRow::FindItem(int column) const {
  const auto place = static_cast<std::size_t>(column);
  if (column >= 0 && place < items_.size()) return items_[place].get();
  return first_ != nullptr && first_->column_ == column ? first_.get() : nullptr;
}

CBCGPGridItem* CBCGPGridRow::GetItem(int column) const {
  CBCGPGridItem* const made = FindItem(column);
  if (made != nullptr || !HasItem(column)) return made;
  // Who sorts asks for one cell of each row; who draws, for all of them.
  if (first_ == nullptr)
    MakeFirstItem(column);
  else
    MakeItems();
  return FindItem(column);
}

void CBCGPGridRow::MakeFirstItem(int column) const {
  std::unique_ptr<CBCGPGridItem> item(new CBCGPGridItem);
  item->value_ = values_.Copy(column);
  item->column_ = column;
  item->row_ = const_cast<CBCGPGridRow*>(this);
  first_ = std::move(item);
}

// The cells stand in the memory of their row, as those that AddItems makes one by one.
void CBCGPGridRow::MakeItems() const {
  const int count = values_.Count();
  std::vector<std::unique_ptr<CBCGPGridItem>> made(static_cast<std::size_t>(count));
  lorv::CellBlockUser block;
  for (int column = 0; column < count; ++column) {
    if (FindItem(column) != nullptr) continue;
    if (block == nullptr || block->IsFull()) block.reset(lorv::CellBlock::Create(count - column));
    std::unique_ptr<CBCGPGridItem>& item = made[static_cast<std::size_t>(column)];
    item.reset(block->Make());
    item->value_ = values_.Copy(column);
    item->column_ = column;
  }
  // Nothing fails any more: without memory the row is as it was. Cells without a row end without a report.
  for (const auto& item : made)
    if (item != nullptr) item->row_ = const_cast<CBCGPGridRow*>(this);
  if (first_ != nullptr) made[static_cast<std::size_t>(first_->column_)] = std::move(first_);
  items_ = std::move(made);
  values_.Clear();
}

// Rows and cells of derived classes are made cell by cell, which hosts observe.
bool CBCGPGridRow::MayHoldValues(int count) const {
  return items_.empty() && count <= lorv::PackedValues::kMostValues && typeid(*this) == typeid(CBCGPGridRow);
}

_variant_t CBCGPGridRow::CopyValue(int column) const {
  if (const CBCGPGridItem* const item = FindItem(column)) return item->GetValue();
  return HasItem(column) ? values_.Copy(column) : _variant_t();
}

VARTYPE CBCGPGridRow::GetValueType(int column) const {
  if (const CBCGPGridItem* const item = FindItem(column)) return item->GetValue().vt;
  return HasItem(column) ? values_.TypeOf(column) : static_cast<VARTYPE>(VT_EMPTY);
}

CString CBCGPGridRow::GetCellText(int column) const {
  CString room;
  const lorv::TextView text = ShownText(column, room);
  return room.IsEmpty() ? CString(text) : room;
}

lorv::TextView CBCGPGridRow::ShownText(int column, CString& room) const {
  const CBCGPGridItem* const item = FindItem(column);
  if (item == nullptr && !HasItem(column)) return {};
  if (item == nullptr && values_.TypeOf(column) == VT_BSTR) return values_.TextOf(column);
  room = item != nullptr ? item->FormatItem() : lorv::CellText(values_.Copy(column));
  return room.View();
}

bool CBCGPGridRow::PutValue(int column, const _variant_t& value) {
  if (!HoldsValues() || !HasItem(column) || FindItem(column) != nullptr) return false;
  if (!lorv::PackedValues::Takes(value)) return false;
  if (owner_ != nullptr && owner_->Changes().AreWatched()) return false;
  values_.Set(column, value);
  return true;
}

void CBCGPGridRow::Adopt(CBCGPGridItem* item, int column) {
  item->row_ = this;
  item->column_ = column;
}

int CBCGPGridRow::AddItem(CBCGPGridItem* item) {
  if (item == nullptr) return -1;
  if (HoldsValues()) MakeItems();
  if (items_.empty()) items_.reserve(static_cast<std::size_t>(room_));
  items_.emplace_back(item);
  Adopt(item, GetItemCount() - 1);
  return GetItemCount() - 1;
}

int CBCGPGridRow::AddValue(const _variant_t& value) {
  if (!MayHoldValues(GetItemCount() + 1) || !lorv::PackedValues::Takes(value))
    return AddItem(new CBCGPGridItem(value));
  if (!HoldsValues()) values_.Reserve(room_, 0);
  values_.Add(value);
  return GetItemCount() - 1;
}

// A row that is shorter than the table gets plain cells, so that the others stand in their columns.
void CBCGPGridRow::MoveItem(int from, int to) {
  if (HoldsValues() && first_ == nullptr && std::max(from, to) < GetItemCount()) {
    values_.Move(from, to);
    return;
  }
  if (HoldsValues()) MakeItems();
  while (GetItemCount() <= std::max(from, to)) AddItem(new CBCGPGridItem(_variant_t()));
  lorv::MoveElement(items_, from, to);
  for (int column = std::min(from, to); column <= std::max(from, to); ++column)
    GetItem(column)->column_ = column;
}

// Cells that stand as if no column had been moved go to where theirs are.
void CBCGPGridRow::ArrangeItems(const CBCGPGridColumnsInfo& columns) {
  if (GetItemCount() != columns.GetColumnCount()) return;
  if (HoldsValues()) MakeItems();
  std::vector<std::unique_ptr<CBCGPGridItem>> arranged(items_.size());
  for (int number = 0; number < GetItemCount(); ++number) {
    const int column = columns.FindUnmovedColumn(number);
    arranged[static_cast<std::size_t>(column)] = std::move(items_[static_cast<std::size_t>(number)]);
    Adopt(arranged[static_cast<std::size_t>(column)].get(), column);
  }
  items_ = std::move(arranged);
}

BOOL CBCGPGridRow::ReplaceItem(int column, CBCGPGridItem* item, BOOL redraw, BOOL keep_old) {
  if (!HasItem(column) || item == nullptr) return FALSE;
  // Its editor closes before the cell goes: what is typed there belongs to no cell any more.
  if (owner_ != nullptr && !owner_->CloseEditorIn(*this)) return FALSE;
  // Handlers of the editor's end may have taken the cells away.
  if (!HasItem(column)) return FALSE;
  if (HoldsValues()) MakeItems();
  std::unique_ptr<CBCGPGridItem>& place = items_[static_cast<std::size_t>(column)];
  if (owner_ != nullptr) owner_->ItemGone(*place);
  std::unique_ptr<CBCGPGridItem> old(item);
  old.swap(place);
  Adopt(item, column);
  old->row_ = nullptr;
  if (keep_old != FALSE) static_cast<void>(old.release());
  if (redraw != FALSE) item->Redraw();
  return TRUE;
}

void CBCGPGridRow::RemoveAllItems() {
  if (owner_ != nullptr && !owner_->CloseEditorIn(*this)) return;
  if (owner_ != nullptr)
    for (int column = 0; column < GetItemCount(); ++column)
      if (const CBCGPGridItem* const item = FindItem(column)) owner_->ItemGone(*item);
  items_.clear();
  first_.reset();
  values_.Clear();
}

void CBCGPGridRow::AddItems(int row, int columns) {
  const bool plain = owner_ == nullptr || !owner_->GetColumnsInfo().HasItemClasses();
  if (plain && GetItemCount() == 0 && columns > 0 && MayHoldValues(columns)) {
    values_.Resize(columns);
    return;
  }
  const int before = std::exchange(making_to_, columns);
  for (int column = GetItemCount(); column < columns; ++column) AddItem(CreateItem(row, column));
  making_to_ = before;
  block_.reset();
}

CBCGPGridItem* CBCGPGridRow::CreateItem(int row, int column) {
  std::unique_ptr<CBCGPGridItem> item(NewItem(column));
  item->row_ = this;
  return item->OnCreate(row, column) != FALSE ? item.release() : nullptr;
}

CBCGPGridItem* CBCGPGridRow::NewItem(int column) {
  const CRuntimeClass* wanted = owner_ == nullptr ? nullptr : owner_->GetItemRTC(column);
  if (wanted == nullptr || wanted == RUNTIME_CLASS(CBCGPGridItem)) return NewPlainItem(column);
  std::unique_ptr<CObject> made(wanted->CreateObject());
  auto* const item = dynamic_cast<CBCGPGridItem*>(made.get());
  // A class that is no item, or cannot be made, gives the plain one rather than no cell.
  if (item == nullptr) return NewPlainItem(column);
  static_cast<void>(made.release());
  return item;
}

CBCGPGridItem* CBCGPGridRow::NewPlainItem(int column) {
  // Asked for alone, it belongs to who asks.
  if (column >= making_to_) return new CBCGPGridItem;
  if (block_ == nullptr || block_->IsFull()) block_.reset(lorv::CellBlock::Create(CountPlainColumns(column)));
  return block_->Make();
}

int CBCGPGridRow::CountPlainColumns(int first) const {
  const int end = std::min(making_to_, first + lorv::CellBlock::kMostCells);
  int count = 0;
  for (int column = first; column < end; ++column) {
    const CRuntimeClass* const wanted = owner_ == nullptr ? nullptr : owner_->GetItemRTC(column);
    if (wanted == nullptr || wanted == RUNTIME_CLASS(CBCGPGridItem)) ++count;
  }
  return count;
}

int CBCGPGridRow::GetRowId() const {
  return owner_ == nullptr ? -1 : owner_->IndexOfRow(*this);
}

CRect CBCGPGridRow::GetRect() const {
  return owner_ == nullptr ? CRect() : owner_->GetRowRect(GetRowId());
}

void CBCGPGridRow::SetLinesNumber(int lines, BOOL relayout) {
  lines_ = std::max(1, lines);
  if (owner_ != nullptr) owner_->RowLinesChanged(*this, relayout);
}

CWnd* CBCGPGridRow::GetInPlaceWnd() const {
  return owner_ == nullptr ? nullptr : owner_->EditorOf(*this);
}

CComboBox* CBCGPGridRow::GetComboWnd() const {
  return owner_ == nullptr ? nullptr : owner_->ComboOf(*this);
}

void CBCGPGridRow::OnItemChanged(CBCGPGridItem* item, int row, int column) {
  if (owner_ != nullptr) owner_->OnItemChanged(item, row, column);
}
