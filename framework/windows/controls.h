#pragma once

#include "framework/windows/window.h"

// The system's controls, with the framework's operations and names: each operation is a message of EM_, CB_,
// LB_ or BM_ to the control, and its answer.
//
// Units: positions in texts count 16-bit units, indices count items from 0; -1 is "none" or "all".
// Edges: those of CWnd, and of the messages: a bad index is answered with -1 (CB_ERR, LB_ERR).
// One thread: that of the user interface.
//
//   CEdit edit;  edit.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 90, 20), &parent, 1002);
//   edit.SetWindowText(_T("KL12"));  edit.SetSel(0, 2);  edit.ReplaceSel(_T("WKL"));  the text is "WKL12"

class COMM_LORV_API CStatic : public CWnd {
 public:
  using CWnd::Create;
  BOOL Create(LPCTSTR text, DWORD style, const RECT& rect, CWnd* parent, UINT id = 0xFFFF);

  DECLARE_DYNAMIC(CStatic)

 protected:
  lorv::WindowKind PeerKind() const override { return lorv::WindowKind::Static; }
};

class COMM_LORV_API CButton : public CWnd {
 public:
  using CWnd::Create;
  BOOL Create(LPCTSTR text, DWORD style, const RECT& rect, CWnd* parent, UINT id);
  int GetCheck() const;  // BST_UNCHECKED, BST_CHECKED, BST_INDETERMINATE
  void SetCheck(int check);
  UINT GetState() const;
  void SetState(BOOL pushed);
  void SetButtonStyle(UINT style, BOOL redraw = TRUE);
  UINT GetButtonStyle() const { return GetStyle() & 0xFFFFU; }

  DECLARE_DYNAMIC(CButton)

 protected:
  lorv::WindowKind PeerKind() const override { return lorv::WindowKind::Button; }
};

class COMM_LORV_API CEdit : public CWnd {
 public:
  using CWnd::Create;
  BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);
  void GetSel(int& start, int& end) const;
  DWORD GetSel() const;  // start in the low word, end in the high one
  // (0, -1) selects all, (-1, any) nothing; the caret stands at the end, and is brought into sight.
  void SetSel(int start, int end, BOOL no_scroll = FALSE);
  void SetSel(DWORD pair, BOOL no_scroll = FALSE);
  void ReplaceSel(LPCTSTR text, BOOL can_undo = FALSE);
  BOOL GetModify() const;
  void SetModify(BOOL modified = TRUE);
  void SetLimitText(UINT units);  // of what is typed and pasted; 0: as much as there is room
  void LimitText(int units = 0) { SetLimitText(static_cast<UINT>(units)); }
  UINT GetLimitText() const;
  BOOL SetReadOnly(BOOL on = TRUE);
  int GetLineCount() const;  // with the breaks that the width makes
  int LineIndex(int line = -1) const;
  int LineLength(int position = -1) const;
  int LineFromChar(int position = -1) const;
  CString GetLineText(int line) const;
  int GetFirstVisibleLine() const;
  void LineScroll(int lines, int units = 0);
  void SetMargins(UINT left, UINT right);
  CPoint PosFromChar(UINT position) const;
  int CharFromPos(CPoint point) const;  // position in the low word, line in the high one
  BOOL CanUndo() const;
  BOOL Undo();
  void EmptyUndoBuffer();
  void Cut();
  void Copy();
  void Paste();
  void Clear();

  DECLARE_DYNAMIC(CEdit)

 protected:
  lorv::WindowKind PeerKind() const override { return lorv::WindowKind::Edit; }
};

class COMM_LORV_API CListBox : public CWnd {
 public:
  using CWnd::Create;
  BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);
  int GetCount() const;
  int AddString(LPCTSTR text);
  int InsertString(int index, LPCTSTR text);
  int DeleteString(UINT index);  // the count left
  void ResetContent();
  int FindString(int after, LPCTSTR start) const;
  int FindStringExact(int after, LPCTSTR text) const;
  int SelectString(int after, LPCTSTR start);
  int GetCurSel() const;
  int SetCurSel(int index);
  int GetSel(int index) const;
  int SetSel(int index, BOOL select = TRUE);
  int GetSelCount() const;
  void GetText(int index, CString& text) const;
  int GetTextLen(int index) const;
  DWORD_PTR GetItemData(int index) const;
  int SetItemData(int index, DWORD_PTR data);
  int GetTopIndex() const;
  int SetTopIndex(int index);

  DECLARE_DYNAMIC(CListBox)

 protected:
  lorv::WindowKind PeerKind() const override { return lorv::WindowKind::List; }
};

class COMM_LORV_API CComboBox : public CWnd {
 public:
  using CWnd::Create;
  BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);
  int GetCount() const;
  int AddString(LPCTSTR text);
  int InsertString(int index, LPCTSTR text);
  int DeleteString(UINT index);
  void ResetContent();
  int FindString(int after, LPCTSTR start) const;
  int FindStringExact(int after, LPCTSTR text) const;
  int SelectString(int after, LPCTSTR start);
  int GetCurSel() const;
  int SetCurSel(int index);
  void GetLBText(int index, CString& text) const;
  int GetLBTextLen(int index) const;
  DWORD_PTR GetItemData(int index) const;
  int SetItemData(int index, DWORD_PTR data);
  DWORD GetEditSel() const;
  BOOL SetEditSel(int start, int end);
  BOOL LimitText(int units);
  void ShowDropDown(BOOL show = TRUE);
  BOOL GetDroppedState() const;
  void GetDroppedControlRect(LPRECT rect) const;
  int SetDroppedWidth(UINT width);

  DECLARE_DYNAMIC(CComboBox)

 protected:
  lorv::WindowKind PeerKind() const override { return lorv::WindowKind::Combo; }
};
