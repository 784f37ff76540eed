#include "gridcore/rows/grid_row.h"

#include <algorithm>
#include <utility>

#include "framework/windows/controls.h"
#include "gridcore/control/grid_control.h"
#include "gridcore/geometry/moved_element.h"

// A row with its cells and the rows nested in it. It notifies its grid before a cell or itself goes, as an
// editor may be open there; handlers of that may change the row, so places are looked up again afterwards.

IMPLEMENT_DYNCREATE(CBCGPGridRow, CObject)

CBCGPGridRow::CBCGPGridRow(int room, DWORD_PTR data, int flags) : data_(data), flags_(flags) {
  // A promise of the host, which may be any number.
  items_.reserve(static_cast<std::size_t>(std::clamp(room, 0, 1024)));
}

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

CBCGPGridItem* CBCGPGridRow::GetItem(int column) const {
  return column >= 0 && column < GetItemCount() ? items_[static_cast<std::size_t>(column)].get() : nullptr;
}

void CBCGPGridRow::Adopt(CBCGPGridItem* item, int column) {
  item->row_ = this;
  item->column_ = column;
}

int CBCGPGridRow::AddItem(CBCGPGridItem* item) {
  if (item == nullptr) return -1;
  items_.emplace_back(item);
  Adopt(item, GetItemCount() - 1);
  return GetItemCount() - 1;
}

// A row that is shorter than the table gets plain cells, so that the others stand in their columns.
void CBCGPGridRow::MoveItem(int from, int to) {
  while (GetItemCount() <= std::max(from, to)) AddItem(new CBCGPGridItem(_variant_t()));
  lorv::MoveElement(items_, from, to);
  for (int column = std::min(from, to); column <= std::max(from, to); ++column)
    GetItem(column)->column_ = column;
}

// Cells that stand as if no column had been moved go to where theirs are.
void CBCGPGridRow::ArrangeItems(const CBCGPGridColumnsInfo& columns) {
  if (GetItemCount() != columns.GetColumnCount()) return;
  std::vector<std::unique_ptr<CBCGPGridItem>> arranged(items_.size());
  for (int number = 0; number < GetItemCount(); ++number) {
    const int column = columns.FindUnmovedColumn(number);
    arranged[static_cast<std::size_t>(column)] = std::move(items_[static_cast<std::size_t>(number)]);
    Adopt(arranged[static_cast<std::size_t>(column)].get(), column);
  }
  items_ = std::move(arranged);
}

BOOL CBCGPGridRow::ReplaceItem(int column, CBCGPGridItem* item, BOOL redraw, BOOL keep_old) {
  if (GetItem(column) == nullptr || item == nullptr) return FALSE;
  // Its editor closes before the cell goes: what is typed there belongs to no cell any more.
  if (owner_ != nullptr && !owner_->CloseEditorIn(*this)) return FALSE;
  // Handlers of the editor's end may have taken the cells away.
  if (GetItem(column) == nullptr) return FALSE;
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
    for (const auto& item : items_) owner_->ItemGone(*item);
  items_.clear();
}

void CBCGPGridRow::AddItems(int row, int columns) {
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
