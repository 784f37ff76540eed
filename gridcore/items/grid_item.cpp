#include "gridcore/items/grid_item.h"

#include <algorithm>
#include <memory>

#include "framework/objects/archive.h"
#include "framework/values/variant_text.h"
#include "gridcore/control/grid_control.h"
#include "gridcore/items/cell_block.h"
#include "gridcore/items/item_parts.h"
#include "gridcore/items/value_archive.h"
#include "gridcore/rows/grid_row.h"

// The value of a cell, its behaviour, its list and its place. How it is drawn stands in item_drawing.cpp, how
// it is edited in item_editing.cpp.

IMPLEMENT_SERIAL(CBCGPGridItem, CObject, 1)

CBCGPGridItem::CBCGPGridItem() = default;

CBCGPGridItem::CBCGPGridItem(const _variant_t& value, DWORD_PTR data) : value_(value), data_(data) {}

CBCGPGridItem::~CBCGPGridItem() {
  // The grid may be editing this very cell, or have it as the current one.
  if (CBCGPGridCtrl* owner = GetOwnerList()) owner->ItemGone(*this);
  if (has_rare_) delete rare_;
  if (slot_ == 0) return;
  // What the value holds may end other cells when it goes, so it goes before the note.
  static_cast<void>(VariantClear(&value_));
  lorv::CellBlock::NoteEnd(this, slot_);
}

// All of them stand here and not in the header: a program on Windows may have another heap than the library.
void* CBCGPGridItem::operator new(std::size_t bytes) {
  return ::operator new(bytes);
}

void* CBCGPGridItem::operator new(std::size_t bytes, std::align_val_t alignment) {
  return ::operator new(bytes, alignment);
}

void* CBCGPGridItem::operator new(std::size_t bytes, const std::nothrow_t& tag) noexcept {
  return ::operator new(bytes, tag);
}

void CBCGPGridItem::operator delete(void* memory, std::align_val_t alignment) noexcept {
  ::operator delete(memory, alignment);
}

void CBCGPGridItem::operator delete(void* memory, const std::nothrow_t& /*tag*/) noexcept {
  operator delete(memory);
}

void CBCGPGridItem::operator delete(void* memory) noexcept {
  if (!lorv::CellBlock::TakeBack(memory)) ::operator delete(memory);
}

// Of a million cells hardly any has options, a tip or an image: those that have pay for them.
CBCGPGridItem::Rare& CBCGPGridItem::RareParts() {
  if (has_rare_) return *rare_;
  auto rare = std::make_unique<Rare>();
  rare->data = data_;
  rare_ = rare.release();
  has_rare_ = 1;
  return *rare_;
}

DWORD_PTR CBCGPGridItem::GetData() const {
  return has_rare_ ? rare_->data : data_;
}

void CBCGPGridItem::SetData(DWORD_PTR data) {
  (has_rare_ ? rare_->data : data_) = data;
}

void CBCGPGridItem::SetState(State state, BOOL on, BOOL redraw) {
  const auto states = static_cast<unsigned char>(on != FALSE ? states_ | state : states_ & ~state);
  // That a cell was changed is bookkeeping, which an undo does not bring back.
  if (states != states_ && state != kChanged) LooksChange();
  states_ = states;
  if (redraw != FALSE) Redraw();
}

void CBCGPGridItem::SetValue(const _variant_t& value, BOOL redraw) {
  // A fill sets a million cells: without an observer the value is not copied once more.
  if (Watchers() == nullptr)
    value_ = value;
  else
    PutValue(_variant_t(value));
  if (redraw != FALSE) Redraw();
}

void CBCGPGridItem::SetValueAndType(const _variant_t& value, BOOL redraw) {
  // Cells in the memory of their row are of no derived class: where nobody observes them either, the empty
  // value between cannot be seen, and a million of them are a fifth of the time that a fill takes.
  if (value.vt != value_.vt && (slot_ == 0 || Watchers() != nullptr)) ChangeType(value);
  SetValue(value, redraw);
}

BOOL CBCGPGridItem::ChangeType(const _variant_t& value) {
  if (value.vt == value_.vt) return TRUE;
  _variant_t fresh;
  // Only the type is taken, as the one that typed texts are turned into; the cell is empty then.
  if (lorv::IsPlainType(value.vt)) {
    fresh.vt = value.vt;
  } else if (value.vt == VT_BSTR) {
    fresh = _variant_t(_T(""));
  }
  PutValue(std::move(fresh));
  return TRUE;
}

CString lorv::CellText(const _variant_t& value) {
  // Painting and sorting ask for any value: arrays and objects show nothing.
  try {
    return VariantToText(value);
  } catch (const _com_error&) {
    return {};
  }
}

CString CBCGPGridItem::FormatItem() const {
  return lorv::CellText(value_);
}

void CBCGPGridItem::SetFlags() {
  flags_ = 0;
  SetState(kMultiline, FALSE, FALSE);
}

BOOL CBCGPGridItem::AddOption(LPCTSTR option, BOOL only_once) {
  std::vector<CString>& options = RareParts().options;
  const CString text(option);
  if (only_once != FALSE && std::find(options.begin(), options.end(), text) != options.end()) return FALSE;
  options.push_back(text);
  SetFlag(lorv::kItemHasList);
  return TRUE;
}

void CBCGPGridItem::RemoveAllOptions() {
  // The cell stays one with a list: hosts empty it to fill it anew.
  if (has_rare_) rare_->options.clear();
}

int CBCGPGridItem::GetOptionCount() const {
  return has_rare_ ? static_cast<int>(rare_->options.size()) : 0;
}

LPCTSTR CBCGPGridItem::GetOption(int index) const {
  if (index < 0 || index >= GetOptionCount()) return nullptr;
  return rare_->options[static_cast<std::size_t>(index)];
}

void CBCGPGridItem::SetValueTooltip(LPCTSTR text) {
  RareParts().tip = text;
}

void CBCGPGridItem::SetBackgroundColor(COLORREF colour, BOOL redraw) {
  if (colour != back_) LooksChange();
  back_ = colour;
  if (redraw != FALSE) Redraw();
}

void CBCGPGridItem::SetTextColor(COLORREF colour, BOOL redraw) {
  if (colour != text_) LooksChange();
  text_ = colour;
  if (redraw != FALSE) Redraw();
}

void CBCGPGridItem::SetImage(int image, BOOL redraw) {
  if (image != GetImage()) {
    LooksChange();
    RareParts().image = image;
  }
  if (redraw != FALSE) Redraw();
}

void CBCGPGridItem::SetLooks(const lorv::ItemLooks& looks, BOOL redraw) {
  if (looks == GetLooks()) return;
  LooksChange();
  back_ = looks.back;
  text_ = looks.text;
  // The mark of a change is no part of the looks that are brought back.
  states_ = static_cast<unsigned char>((looks.states & kAllStates & ~kChanged) | (states_ & kChanged));
  if (looks.image != GetImage()) RareParts().image = looks.image;
  if (redraw != FALSE) Redraw();
}

int CBCGPGridItem::GetImage() const {
  return has_rare_ ? rare_->image : -1;
}

CBCGPGridCtrl* CBCGPGridItem::GetOwnerList() const {
  return row_ == nullptr ? nullptr : row_->GetOwnerList();
}

CBCGPGridItemID CBCGPGridItem::GetGridItemID() const {
  const int row = row_ == nullptr ? -1 : row_->GetRowId();
  return row < 0 ? CBCGPGridItemID() : CBCGPGridItemID(row, column_);
}

CRect CBCGPGridItem::GetRect() const {
  const CBCGPGridCtrl* owner = GetOwnerList();
  return owner == nullptr ? CRect() : owner->GetItemRect(GetGridItemID());
}

CBCGPGridRange CBCGPGridItem::GetMergedCells() const {
  const CBCGPGridCtrl* owner = GetOwnerList();
  return owner == nullptr ? CBCGPGridRange() : owner->GetMergedRange(GetGridItemID());
}

CBCGPGridItem* CBCGPGridItem::GetMergedMainItem() const {
  const CBCGPGridRange block = GetMergedCells();
  return block.IsValid() ? GetOwnerList()->GetGridItem({block.m_nTop, block.m_nLeft}) : nullptr;
}

void CBCGPGridItem::Redraw() const {
  if (CBCGPGridCtrl* owner = GetOwnerList()) owner->InvalidateItem(this);
}

void CBCGPGridItem::SetItemChanged() {
  // Before the handlers, which may end this cell.
  SetState(kChanged, TRUE, FALSE);
  if (row_ != nullptr) row_->OnItemChanged(this, row_->GetRowId(), column_);
}

BOOL CBCGPGridItem::OnCreate(int /*row*/, int column) {
  column_ = column;
  return TRUE;
}

CString CBCGPGridItem::GetValueTooltip() const {
  return has_rare_ && !rare_->tip.IsEmpty() ? rare_->tip : FormatItem();
}

CRect CBCGPGridItem::GetTooltipRect() const {
  CRect rect = GetRect();
  // Over the button the tip would hide what is to be pressed.
  const CRect button = GetButtonRect();
  if (button.IsRectEmpty() == FALSE) rect.right = button.left;
  return rect;
}

void CBCGPGridItem::WriteToArchive(CArchive& archive) const {
  lorv::WriteValue(archive, value_);
  archive << back_ << text_ << GetImage() << static_cast<unsigned short>(states_);
}

void CBCGPGridItem::ReadFromArchive(CArchive& archive) {
  // All is read before anything is set: an archive that breaks off leaves the cell as it was.
  _variant_t value = lorv::ReadValue(archive);
  COLORREF back = lorv::kNoColour;
  COLORREF text = lorv::kNoColour;
  int image = -1;
  unsigned short states = 0;
  archive >> back >> text >> image >> states;
  PutValue(std::move(value));
  LooksChange();
  back_ = back;
  text_ = text;
  states_ = static_cast<unsigned char>(states & kAllStates);
  SetImage(image, FALSE);
}

void CBCGPGridItem::Serialize(CArchive& archive) {
  if (archive.IsStoring() != FALSE)
    WriteToArchive(archive);
  else
    ReadFromArchive(archive);
}
