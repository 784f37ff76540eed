#pragma once

#include <cstddef>
#include <new>

#include "framework/drawing/geometry.h"
#include "framework/native/window_types.h"
#include "framework/objects/object.h"
#include "framework/values/variant.h"
#include "gridcore/cell_range.h"

class CBCGPGridCtrl;
class CBCGPGridRow;
class CDC;
class CEdit;
class CWnd;

namespace lorv {

class CellBlock;
class GridChanges;

// What a cell looks like and how it may be changed, as one value.
struct ItemLooks {
  COLORREF back = 0;
  COLORREF text = 0;
  int image = -1;
  unsigned short states = 0;

  friend bool operator==(const ItemLooks&, const ItemLooks&) = default;
};

// No colour of its own: a cell is then drawn as the grid's theme says.
constexpr COLORREF kNoColour = 0xFFFFFFFF;

// What a cell offers beside its text; together they are its flags.
enum ItemFlag : unsigned { kItemHasList = 1, kItemHasButton = 2, kItemHasSpin = 4 };

// The width of what a cell draws at its right end, in pixels: a button or a spin control.
constexpr int kItemButtonWidth = 17;

// The text that a plain cell of the value shows; empty for a value that has none.
CString CellText(const _variant_t& value);

}  // namespace lorv

// One cell of a grid: a value, how it may be changed, and what it looks like.
//
// Units: rectangles are pixels of the grid's client area; a cell that is scrolled out of sight has one beside
//   what is visible, one of a hidden row or column an empty one. Options count from 0.
// Edges: a cell that stands in no row, or in a row of no grid, has the row -1 or the null id, no owner and an
//   empty rectangle, and everything that needs a grid does nothing. Asked for an option that is not there it
//   gives null.
// Memory: 56 bytes above the value's own on 64-bit Linux, 64 on Windows, whose values are longer; options and
//   what else is rare stand apart. The plain cells of a row that a grid makes stand in one piece of memory;
//   each is deleted like any object.
// Rows own their cells. One thread: that of the user interface.
//
//   CBCGPGridItem cell(_variant_t(7));  cell.FormatItem()  gives "7"
class COMM_LORV_API CBCGPGridItem : public CObject {
  DECLARE_SERIAL(CBCGPGridItem)
 public:
  explicit CBCGPGridItem(const _variant_t& value, DWORD_PTR data = 0);
  ~CBCGPGridItem() override;
  CBCGPGridItem(const CBCGPGridItem&) = delete;
  CBCGPGridItem& operator=(const CBCGPGridItem&) = delete;

  // A cell that stands in the memory of its row gives its place back there, any other one to the heap.
  static void* operator new(std::size_t bytes);
  static void* operator new(std::size_t bytes, std::align_val_t alignment);
  static void* operator new(std::size_t bytes, const std::nothrow_t& tag) noexcept;
  static void* operator new(std::size_t /*bytes*/, void* place) noexcept { return place; }
  static void operator delete(void* memory) noexcept;
  static void operator delete(void* memory, std::align_val_t alignment) noexcept;
  static void operator delete(void* memory, const std::nothrow_t& tag) noexcept;
  static void operator delete(void* /*memory*/, void* /*place*/) noexcept {}

  // What the suite's cells replace, in the order of the slots that its tables name. `rect` is the cell's,
  // without its grid lines.
  virtual void OnDrawValue(CDC* dc, CRect rect);
  virtual void OnDrawButton(CDC* dc, CRect rect);
  // Takes what stands in the editor over into the value; FALSE where the text is refused.
  virtual BOOL OnUpdateValue();
  // Opens the editor; the point is where it was asked for, (-1, -1) for the keyboard. FALSE: nothing opened.
  virtual BOOL OnEdit(CPoint point);
  // Changes by the user: marks the cell and reports to its row, which reports to the grid.
  virtual void SetItemChanged();
  virtual void SetInPlaceEditFont();
  virtual void DoClickButton(CPoint point) { OnClickButton(point); }
  virtual void OnClickButton(CPoint point);
  // TRUE: the click is used up.
  virtual BOOL OnClickValue(UINT message, CPoint point);
  virtual BOOL OnSetCursor() const { return FALSE; }
  virtual void AdjustButtonRect(CRect& rect);
  virtual CWnd* CreateInPlaceEdit(CRect rect, BOOL& default_format);
  virtual CEdit* NewInPlaceEdit();

  // The value. SetValue takes it as it is, with its kind; it marks nothing as changed. ChangeType gives the
  // cell an empty value of the new one's kind.
  const _variant_t& GetValue() const { return value_; }
  virtual void SetValue(const _variant_t& value, BOOL redraw = TRUE);
  virtual BOOL ChangeType(const _variant_t& value);
  // What setting a cell through its grid does: ChangeType where the kinds differ, then SetValue.
  void SetValueAndType(const _variant_t& value, BOOL redraw);
  // The text that is shown and edited; empty for a value that has none.
  virtual CString FormatItem() const;
  // The value that the cell would take over from an editor with that text.
  _variant_t ValueTyped(const CString& text) const { return ValueOfText(text); }
  DWORD_PTR GetData() const;
  void SetData(DWORD_PTR data);

  // Behaviour. A read-only cell keeps its value; one without editing can still be set by its list.
  void Enable(BOOL on = TRUE, BOOL redraw = TRUE) { SetState(kEnabled, on, redraw); }
  BOOL IsEnabled() const { return Has(kEnabled); }
  void SetReadOnly(BOOL on = TRUE, BOOL redraw = TRUE) { SetState(kReadOnly, on, redraw); }
  BOOL IsReadOnly() const { return Has(kReadOnly); }
  void AllowEdit(BOOL on = TRUE) { SetState(kAllowEdit, on, FALSE); }
  BOOL IsAllowEdit() const { return Has(kAllowEdit); }
  void SetMultiline(BOOL on = TRUE) { SetState(kMultiline, on, TRUE); }
  BOOL IsMultiline() const { return Has(kMultiline); }
  // lorv::ItemFlag. SetFlags takes the cell back to none of them, and to one line.
  unsigned GetFlags() const { return flags_; }
  virtual void SetFlags();

  // The list of the cell; the first option makes it a cell with a list.
  BOOL AddOption(LPCTSTR option, BOOL only_once = FALSE);
  void RemoveAllOptions();
  int GetOptionCount() const;
  LPCTSTR GetOption(int index) const;
  void SetValueTooltip(LPCTSTR text);

  // Looks; lorv::kNoColour is the theme's.
  void SetBackgroundColor(COLORREF colour, BOOL redraw = TRUE);
  COLORREF GetBackgroundColor() const { return back_; }
  void SetTextColor(COLORREF colour, BOOL redraw = TRUE);
  COLORREF GetTextColor() const { return text_; }
  void SetImage(int image, BOOL redraw = TRUE);
  int GetImage() const;  // -1: none
  // All of it at once, with whether the cell is enabled, read-only, of several lines, and can be edited.
  lorv::ItemLooks GetLooks() const {
    return {back_, text_, GetImage(), static_cast<unsigned short>(states_ & ~kChanged)};
  }
  void SetLooks(const lorv::ItemLooks& looks, BOOL redraw = TRUE);

  // Where it stands.
  int GetColumnId() const { return column_; }
  CBCGPGridRow* GetParentRow() const { return row_; }
  CBCGPGridItemID GetGridItemID() const;
  CBCGPGridCtrl* GetOwnerList() const;
  CRect GetRect() const;
  CBCGPGridItem* GetMergedMainItem() const;  // the one that stands for its merged cells; null: not merged
  CBCGPGridRange GetMergedCells() const;     // null: not merged
  void Redraw() const;

  BOOL IsItemChanged() const { return Has(kChanged); }
  void ClearItemChanged() { SetState(kChanged, FALSE, FALSE); }

  // Value, colours, image and behaviour, without list, flags and data: what another cell can take over.
  virtual void WriteToArchive(CArchive& archive) const;
  virtual void ReadFromArchive(CArchive& archive);
  void Serialize(CArchive& archive) override;

  // Tips: the text where it may be cut off, and where in the cell it stands.
  virtual CString GetValueTooltip() const;
  virtual CRect GetTooltipRect() const;
  virtual CString GetNameTooltip() const { return CString(); }
  virtual CRect GetNameTooltipRect() const { return {}; }

  virtual void OnFillBackground(CDC* dc, CRect rect);
  // The rectangle of its button, list arrow or spin control; empty without one.
  CRect GetButtonRect() const;

  // Editing. The editor is the grid's while it is open.
  BOOL HasEditorOpen() const { return GetInPlaceWnd() != nullptr; }
  BOOL IsInPlaceEditing() const { return HasEditorOpen(); }
  CWnd* GetInPlaceWnd() const;
  virtual void OnEndEdit() {}
  virtual void AdjustInPlaceEditRect(CRect& edit, CRect& spin) const;
  virtual BOOL CanUpdateData() const;

  // The space key on the closed cell; TRUE: it meant something.
  virtual BOOL OnSpace() { return FALSE; }

  // Called once the cell has its place in a row; FALSE and the row does without it.
  virtual BOOL OnCreate(int row, int column);

  // The value that the typed text is for this cell: of the value's kind where the text has a meaning in it,
  // else the text itself, so that nothing that was typed is lost.
  virtual _variant_t ValueOfText(const CString& text) const;

 protected:
  CBCGPGridItem();
  void SetFlag(unsigned flag) { flags_ = static_cast<unsigned short>(flags_ | flag); }
  CString EditorText() const;
  void DrawText(CDC* dc, const CString& text, CRect rect) const;
  void PutValue(_variant_t&& value);

 private:
  friend class CBCGPGridRow;
  friend class lorv::CellBlock;
  struct Rare;
  enum State : unsigned char {
    kEnabled = 1,
    kReadOnly = 2,
    kAllowEdit = 4,
    kMultiline = 8,
    kChanged = 16,
    kAllStates = 31,
  };

  bool Has(State state) const { return (states_ & state) != 0; }
  void SetState(State state, BOOL on, BOOL redraw);
  Rare& RareParts();
  lorv::GridChanges* Watchers() const;  // null: nobody observes this cell
  void LooksChange();

  _variant_t value_;
  CBCGPGridRow* row_ = nullptr;
  union {
    DWORD_PTR data_ = 0;
    Rare* rare_;  // has the data, too
  };
  COLORREF back_ = lorv::kNoColour;
  COLORREF text_ = lorv::kNoColour;
  int column_ = -1;
  unsigned short flags_ = 0;
  unsigned char states_ = kEnabled | kAllowEdit;
  unsigned char has_rare_ : 1 = 0;
  unsigned char slot_ : 7 = 0;  // in the memory of its row, from 1; 0: in its own
};
