#include "gridcore/editors/mask_edit.h"

#include <algorithm>

// An edit whose text has fixed places. The text always has its full length, blanks standing for what is not
// typed yet, so a key writes over a place and nothing ever moves along.

IMPLEMENT_DYNAMIC(CBCGPMaskEdit, CEdit)

BEGIN_MESSAGE_MAP(CBCGPMaskEdit, CEdit)
ON_WM_CHAR()
ON_WM_KEYDOWN()
ON_MESSAGE(WM_PASTE, OnPaste)
END_MESSAGE_MAP()

namespace {

bool IsDigit(TCHAR c) {
  return c >= '0' && c <= '9';
}

bool IsLetter(TCHAR c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool FitsLetter(TCHAR letter, TCHAR c) {
  switch (letter) {
    case 'D':
      return IsDigit(c);
    case 'd':
      return IsDigit(c) || c == ' ';
    case 'C':
      return IsLetter(c);
    case 'c':
      return IsLetter(c) || c == ' ';
    case 'A':
      return IsDigit(c) || IsLetter(c);
    case 'a':
      return IsDigit(c) || IsLetter(c) || c == ' ';
    case '*':
      return c >= ' ';
    default:
      return false;
  }
}

constexpr UINT kBackspace = 8;

}  // namespace

void CBCGPMaskEdit::EnableMask(LPCTSTR mask, LPCTSTR input_template, TCHAR default_char) {
  mask_ = mask;
  template_ = input_template;
  // A place needs both its letter and its look.
  const int places = std::min(mask_.GetLength(), template_.GetLength());
  mask_.Truncate(places);
  template_.Truncate(places);
  blank_ = default_char;
}

bool CBCGPMaskEdit::Takes(int place, TCHAR c) const {
  if (template_.GetAt(place) != '_' || !FitsLetter(mask_.GetAt(place), c)) return false;
  return valid_.IsEmpty() || valid_.Find(c) >= 0;
}

int CBCGPMaskEdit::PlaceFrom(int place, int step) const {
  while (place >= 0 && place < template_.GetLength() && template_.GetAt(place) != '_') place += step;
  return place;
}

void CBCGPMaskEdit::Put(CString& text, int place, TCHAR c) const {
  // A text set by program may be shorter than the mask.
  while (text.GetLength() <= place)
    text += template_.GetAt(text.GetLength()) == '_' ? blank_ : template_.GetAt(text.GetLength());
  text.SetAt(place, c);
}

void CBCGPMaskEdit::Blank(CString& text, int first, int last) const {
  for (int place = first; place < std::min(last, template_.GetLength()); ++place)
    if (template_.GetAt(place) == '_') Put(text, place, blank_);
}

// Whoever hears of the change may end this edit, so nothing of it is touched behind that.
void CBCGPMaskEdit::Show(const CString& text, int caret) {
  const HWND window = m_hWnd;
  SetWindowText(text);
  lorv::DesktopInForce().Send(window, EM_SETSEL, static_cast<WPARAM>(caret), caret);
}

void CBCGPMaskEdit::TypeOver(lorv::TextView typed) {
  CString text;
  GetWindowText(text);
  int start = 0;
  int end = 0;
  GetSel(start, end);
  bool changed = false;
  for (const TCHAR c : typed) {
    const int place = PlaceFrom(start, 1);
    // What does not fit is passed over, so that pasted separators fall on those of the mask.
    if (place >= template_.GetLength() || !Takes(place, c)) continue;
    Blank(text, start, end);
    Put(text, place, c);
    start = end = PlaceFrom(place + 1, 1);
    changed = true;
  }
  if (changed) Show(text, start);
}

void CBCGPMaskEdit::Erase(int start, int end) {
  CString text;
  GetWindowText(text);
  Blank(text, start, end);
  Show(text, start);
}

void CBCGPMaskEdit::OnChar(UINT unit, UINT repeat, UINT flags) {
  const bool locked = (GetStyle() & ES_READONLY) != 0;
  if (template_.IsEmpty() || locked || (unit < ' ' && unit != kBackspace)) {
    CEdit::OnChar(unit, repeat, flags);
    return;
  }
  if (unit != kBackspace) {
    const auto typed = static_cast<TCHAR>(unit);
    TypeOver({&typed, 1});
    return;
  }
  int start = 0;
  int end = 0;
  GetSel(start, end);
  // Over the fixed characters to the left, which cannot be taken away.
  if (start == end) start = PlaceFrom(start - 1, -1);
  if (start >= 0) Erase(start, std::max(start + 1, end));
}

void CBCGPMaskEdit::OnKeyDown(UINT key, UINT repeat, UINT flags) {
  if (template_.IsEmpty() || key != VK_DELETE) {
    CEdit::OnKeyDown(key, repeat, flags);
    return;
  }
  if ((GetStyle() & ES_READONLY) != 0) return;
  int start = 0;
  int end = 0;
  GetSel(start, end);
  Erase(start, std::max(start + 1, end));
}

LRESULT CBCGPMaskEdit::OnPaste(WPARAM /*w*/, LPARAM /*l*/) {
  if (template_.IsEmpty()) return Default();
  if ((GetStyle() & ES_READONLY) != 0) return 0;
  TypeOver(lorv::DesktopInForce().ClipboardText().View());
  return 0;
}
