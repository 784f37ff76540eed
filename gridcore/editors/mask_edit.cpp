#include "gridcore/editors/mask_edit.h"

#include <algorithm>

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

void CBCGPMaskEdit::Put(int place, TCHAR c) {
  CString text;
  GetWindowText(text);
  while (text.GetLength() <= place)
    text += template_.GetAt(text.GetLength()) == '_' ? blank_ : template_.GetAt(text.GetLength());
  text.SetAt(place, c);
  SetWindowText(text);
}

void CBCGPMaskEdit::Blank(int first, int last) {
  for (int place = first; place < last; ++place)
    if (template_.GetAt(place) == '_') Put(place, blank_);
}

void CBCGPMaskEdit::TypeOver(TCHAR c) {
  int start = 0;
  int end = 0;
  GetSel(start, end);
  const int place = PlaceFrom(start, 1);
  if (place >= template_.GetLength() || !Takes(place, c)) return;
  if (end > start) Blank(start, end);
  Put(place, c);
  const int next = PlaceFrom(place + 1, 1);
  SetSel(next, next);
}

void CBCGPMaskEdit::OnChar(UINT unit, UINT repeat, UINT flags) {
  const bool locked = (GetStyle() & ES_READONLY) != 0;
  if (template_.IsEmpty() || locked || (unit < ' ' && unit != kBackspace)) {
    CEdit::OnChar(unit, repeat, flags);
    return;
  }
  if (unit != kBackspace) {
    TypeOver(static_cast<TCHAR>(unit));
    return;
  }
  int start = 0;
  int end = 0;
  GetSel(start, end);
  if (start == end) start = PlaceFrom(start - 1, -1);
  if (start < 0) return;
  Blank(start, std::max(start + 1, end));
  SetSel(start, start);
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
  Blank(start, std::min(std::max(start + 1, end), template_.GetLength()));
  SetSel(start, start);
}

LRESULT CBCGPMaskEdit::OnPaste(WPARAM /*w*/, LPARAM /*l*/) {
  if (template_.IsEmpty()) return Default();
  if ((GetStyle() & ES_READONLY) != 0) return 0;
  const CString text = lorv::DesktopInForce().ClipboardText();
  for (const TCHAR c : text.View()) TypeOver(c);
  return 0;
}
