#pragma once

#include "framework/windows/controls.h"

// An edit whose text has one length and takes only certain characters at each place: typing overwrites.
//
// Units: places count 16-bit units from 0; there are as many as the mask and the template both have.
// Mask letters: D a digit, C a letter, A a letter or digit, each also a blank when small; * any character.
//   The template has "_" where something is typed; its other characters stand as they are.
// Edges: a character that the place does not take is passed over. Without a mask it is a plain edit. What is
//   deleted becomes the default character.
// As CEdit.
//
//   edit.EnableMask(_T("AAAAAA"), _T("______"), _T(' '));  edit.SetValidChars(_T("0123456789ABCDEFabcdef"));
class COMM_LORV_API CBCGPMaskEdit : public CEdit {
  DECLARE_DYNAMIC(CBCGPMaskEdit)
 public:
  void EnableMask(LPCTSTR mask, LPCTSTR input_template, TCHAR default_char = '_');
  // Null or empty: all that the mask takes.
  void SetValidChars(LPCTSTR valid) { valid_ = valid; }
  bool Takes(int place, TCHAR c) const;

 protected:
  void OnChar(UINT unit, UINT repeat, UINT flags);
  void OnKeyDown(UINT key, UINT repeat, UINT flags);
  LRESULT OnPaste(WPARAM w, LPARAM l);
  DECLARE_MESSAGE_MAP()

 private:
  int PlaceFrom(int place, int step) const;
  void Put(CString& text, int place, TCHAR c) const;
  void Blank(CString& text, int first, int last) const;
  void Show(const CString& text, int caret);
  void TypeOver(lorv::TextView typed);
  void Erase(int start, int end);

  CString mask_;
  CString template_;
  CString valid_;
  TCHAR blank_ = '_';
};
