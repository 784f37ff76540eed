#include "framework/windows/controls.h"

#include <algorithm>
#include <vector>

// The classes of the system's controls. Each operation is a message or two, as the numbers and their
// arguments are the protocol between a control and its peer; so a derived class that handles a message also
// changes what the operation does, on every desktop.

IMPLEMENT_DYNAMIC(CStatic, CWnd)
IMPLEMENT_DYNAMIC(CButton, CWnd)
IMPLEMENT_DYNAMIC(CEdit, CWnd)
IMPLEMENT_DYNAMIC(CListBox, CWnd)
IMPLEMENT_DYNAMIC(CComboBox, CWnd)

namespace {

// Through a signed type: -1 means "none" or "all" to many messages and must fill all 64 bits.
WPARAM W(int value) {
  return static_cast<WPARAM>(static_cast<LONG_PTR>(value));
}

LPARAM L(const void* pointer) {
  return reinterpret_cast<LPARAM>(pointer);
}

int Int(LRESULT answer) {
  return static_cast<int>(answer);
}

// The message that asks for an item's units bears no size of the buffer: a control may write more than the
// length it gave before, and gets this much room at least.
constexpr int kRoomOfItem = 1 << 16;

// The text of an item, by the messages that ask for its length and for its units.
CString ItemText(const CWnd& control, UINT length_message, UINT text_message, int index) {
  const int length = Int(control.SendMessage(length_message, W(index)));
  if (length < 0) return {};
  const int room = std::max(length, kRoomOfItem);
  std::vector<TCHAR> units(static_cast<std::size_t>(room) + 1);
  const int got = Int(control.SendMessage(text_message, W(index), L(units.data())));
  // No item holds a zero: units reported beyond the text were never written.
  const auto end = std::find(units.begin(), units.begin() + std::clamp(got, 0, room), TCHAR{0});
  return CString(units.data(), static_cast<int>(end - units.begin()));
}

}  // namespace

BOOL CStatic::Create(LPCTSTR text, DWORD style, const RECT& rect, CWnd* parent, UINT id) {
  return CWnd::Create(nullptr, text, style, rect, parent, id);
}

BOOL CButton::Create(LPCTSTR text, DWORD style, const RECT& rect, CWnd* parent, UINT id) {
  return CWnd::Create(nullptr, text, style, rect, parent, id);
}

BOOL CEdit::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) {
  return CWnd::Create(nullptr, nullptr, style, rect, parent, id);
}

BOOL CListBox::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) {
  return CWnd::Create(nullptr, nullptr, style, rect, parent, id);
}

BOOL CComboBox::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) {
  return CWnd::Create(nullptr, nullptr, style, rect, parent, id);
}

int CButton::GetCheck() const {
  return Int(SendMessage(BM_GETCHECK));
}

void CButton::SetCheck(int check) {
  SendMessage(BM_SETCHECK, W(check));
}

UINT CButton::GetState() const {
  return static_cast<UINT>(SendMessage(BM_GETSTATE));
}

void CButton::SetState(BOOL pushed) {
  SendMessage(BM_SETSTATE, W(pushed));
}

void CButton::SetButtonStyle(UINT style, BOOL redraw) {
  SendMessage(BM_SETSTYLE, style, redraw);
}

void CEdit::GetSel(int& start, int& end) const {
  DWORD from = 0;
  DWORD to = 0;
  // By pointers, as the packed answer has 16 bits for each end.
  SendMessage(EM_GETSEL, reinterpret_cast<WPARAM>(&from), L(&to));
  start = static_cast<int>(from);
  end = static_cast<int>(to);
}

DWORD CEdit::GetSel() const {
  return static_cast<DWORD>(SendMessage(EM_GETSEL));
}

void CEdit::SetSel(int start, int end, BOOL no_scroll) {
  SendMessage(EM_SETSEL, W(start), end);
  // The message itself does not scroll; the class does, as callers know it.
  if (no_scroll == 0) SendMessage(EM_SCROLLCARET);
}

void CEdit::SetSel(DWORD pair, BOOL no_scroll) {
  SetSel(LOWORD(pair), HIWORD(pair), no_scroll);
}

void CEdit::ReplaceSel(LPCTSTR text, BOOL can_undo) {
  SendMessage(EM_REPLACESEL, W(can_undo), L(text));
}

BOOL CEdit::GetModify() const {
  return SendMessage(EM_GETMODIFY) != 0;
}

void CEdit::SetModify(BOOL modified) {
  SendMessage(EM_SETMODIFY, W(modified));
}

void CEdit::SetLimitText(UINT units) {
  SendMessage(EM_SETLIMITTEXT, units);
}

UINT CEdit::GetLimitText() const {
  return static_cast<UINT>(SendMessage(EM_GETLIMITTEXT));
}

BOOL CEdit::SetReadOnly(BOOL on) {
  return SendMessage(EM_SETREADONLY, W(on)) != 0;
}

CString CEdit::GetLineText(int line) const {
  const int start = LineIndex(line);
  if (start < 0) return {};
  const int length = LineLength(start);
  // The first unit of the buffer carries its room.
  std::vector<TCHAR> units(static_cast<std::size_t>(length) + 2);
  // One unit holds it, so of a longer line the protocol gives the beginning.
  units[0] = static_cast<TCHAR>(std::min(length + 1, 0xFFFF));
  const int got = Int(SendMessage(EM_GETLINE, W(line), L(units.data())));
  return CString(units.data(), std::min(got, length));
}

void CEdit::LineScroll(int lines, int units) {
  SendMessage(EM_LINESCROLL, W(units), lines);
}

void CEdit::SetMargins(UINT left, UINT right) {
  constexpr WPARAM kBoth = 3;
  SendMessage(EM_SETMARGINS, kBoth, MAKELONG(left, right));
}

CPoint CEdit::PosFromChar(UINT position) const {
  const LRESULT answer = SendMessage(EM_POSFROMCHAR, position);
  // Signed: what is scrolled out at the left or top has a place below 0.
  return CPoint(static_cast<short>(LOWORD(answer)), static_cast<short>(HIWORD(answer)));
}

int CEdit::CharFromPos(CPoint point) const {
  return Int(SendMessage(EM_CHARFROMPOS, 0, MAKELPARAM(point.x, point.y)));
}

BOOL CEdit::CanUndo() const {
  return SendMessage(EM_CANUNDO) != 0;
}

BOOL CEdit::Undo() {
  return SendMessage(EM_UNDO) != 0;
}

int CEdit::GetLineCount() const {
  return Int(SendMessage(EM_GETLINECOUNT));
}

int CEdit::LineIndex(int line) const {
  return Int(SendMessage(EM_LINEINDEX, W(line)));
}

int CEdit::LineLength(int position) const {
  return Int(SendMessage(EM_LINELENGTH, W(position)));
}

int CEdit::LineFromChar(int position) const {
  return Int(SendMessage(EM_LINEFROMCHAR, W(position)));
}

int CEdit::GetFirstVisibleLine() const {
  return Int(SendMessage(EM_GETFIRSTVISIBLELINE));
}

void CEdit::EmptyUndoBuffer() {
  SendMessage(EM_EMPTYUNDOBUFFER);
}

void CEdit::Cut() {
  SendMessage(WM_CUT);
}

void CEdit::Copy() {
  SendMessage(WM_COPY);
}

void CEdit::Paste() {
  SendMessage(WM_PASTE);
}

void CEdit::Clear() {
  SendMessage(WM_CLEAR);
}

int CListBox::GetCount() const {
  return Int(SendMessage(LB_GETCOUNT));
}

int CListBox::AddString(LPCTSTR text) {
  return Int(SendMessage(LB_ADDSTRING, 0, L(text)));
}

int CListBox::InsertString(int index, LPCTSTR text) {
  return Int(SendMessage(LB_INSERTSTRING, W(index), L(text)));
}

int CListBox::DeleteString(UINT index) {
  return Int(SendMessage(LB_DELETESTRING, index));
}

void CListBox::ResetContent() {
  SendMessage(LB_RESETCONTENT);
}

int CListBox::FindString(int after, LPCTSTR start) const {
  return Int(SendMessage(LB_FINDSTRING, W(after), L(start)));
}

int CListBox::FindStringExact(int after, LPCTSTR text) const {
  return Int(SendMessage(LB_FINDSTRINGEXACT, W(after), L(text)));
}

int CListBox::SelectString(int after, LPCTSTR start) {
  return Int(SendMessage(LB_SELECTSTRING, W(after), L(start)));
}

int CListBox::GetCurSel() const {
  return Int(SendMessage(LB_GETCURSEL));
}

int CListBox::SetCurSel(int index) {
  return Int(SendMessage(LB_SETCURSEL, W(index)));
}

void CListBox::GetText(int index, CString& text) const {
  text = ItemText(*this, LB_GETTEXTLEN, LB_GETTEXT, index);
}

int CListBox::GetTextLen(int index) const {
  return Int(SendMessage(LB_GETTEXTLEN, W(index)));
}

DWORD_PTR CListBox::GetItemData(int index) const {
  return static_cast<DWORD_PTR>(SendMessage(LB_GETITEMDATA, W(index)));
}

int CListBox::SetItemData(int index, DWORD_PTR data) {
  return Int(SendMessage(LB_SETITEMDATA, W(index), static_cast<LPARAM>(data)));
}

int CComboBox::GetCount() const {
  return Int(SendMessage(CB_GETCOUNT));
}

int CComboBox::AddString(LPCTSTR text) {
  return Int(SendMessage(CB_ADDSTRING, 0, L(text)));
}

int CComboBox::InsertString(int index, LPCTSTR text) {
  return Int(SendMessage(CB_INSERTSTRING, W(index), L(text)));
}

int CComboBox::DeleteString(UINT index) {
  return Int(SendMessage(CB_DELETESTRING, index));
}

void CComboBox::ResetContent() {
  SendMessage(CB_RESETCONTENT);
}

int CComboBox::FindString(int after, LPCTSTR start) const {
  return Int(SendMessage(CB_FINDSTRING, W(after), L(start)));
}

int CComboBox::FindStringExact(int after, LPCTSTR text) const {
  return Int(SendMessage(CB_FINDSTRINGEXACT, W(after), L(text)));
}

int CComboBox::SelectString(int after, LPCTSTR start) {
  return Int(SendMessage(CB_SELECTSTRING, W(after), L(start)));
}

int CComboBox::GetCurSel() const {
  return Int(SendMessage(CB_GETCURSEL));
}

int CComboBox::SetCurSel(int index) {
  return Int(SendMessage(CB_SETCURSEL, W(index)));
}

void CComboBox::GetLBText(int index, CString& text) const {
  text = ItemText(*this, CB_GETLBTEXTLEN, CB_GETLBTEXT, index);
}

int CComboBox::GetLBTextLen(int index) const {
  return Int(SendMessage(CB_GETLBTEXTLEN, W(index)));
}

DWORD_PTR CComboBox::GetItemData(int index) const {
  return static_cast<DWORD_PTR>(SendMessage(CB_GETITEMDATA, W(index)));
}

int CComboBox::SetItemData(int index, DWORD_PTR data) {
  return Int(SendMessage(CB_SETITEMDATA, W(index), static_cast<LPARAM>(data)));
}

int CListBox::GetSel(int index) const {
  return Int(SendMessage(LB_GETSEL, W(index)));
}

int CListBox::SetSel(int index, BOOL select) {
  return Int(SendMessage(LB_SETSEL, W(select), index));
}

int CListBox::GetSelCount() const {
  return Int(SendMessage(LB_GETSELCOUNT));
}

int CListBox::GetTopIndex() const {
  return Int(SendMessage(LB_GETTOPINDEX));
}

int CListBox::SetTopIndex(int index) {
  return Int(SendMessage(LB_SETTOPINDEX, W(index)));
}

DWORD CComboBox::GetEditSel() const {
  return static_cast<DWORD>(SendMessage(CB_GETEDITSEL));
}

BOOL CComboBox::SetEditSel(int start, int end) {
  return SendMessage(CB_SETEDITSEL, 0, MAKELPARAM(start, end)) != 0;
}

BOOL CComboBox::LimitText(int units) {
  return SendMessage(CB_LIMITTEXT, W(units)) != 0;
}

void CComboBox::ShowDropDown(BOOL show) {
  SendMessage(CB_SHOWDROPDOWN, W(show));
}

BOOL CComboBox::GetDroppedState() const {
  return SendMessage(CB_GETDROPPEDSTATE) != 0;
}

void CComboBox::GetDroppedControlRect(LPRECT rect) const {
  SendMessage(CB_GETDROPPEDCONTROLRECT, 0, L(rect));
}

int CComboBox::SetDroppedWidth(UINT width) {
  return Int(SendMessage(CB_SETDROPPEDWIDTH, width));
}
