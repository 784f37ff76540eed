#pragma once

#include <span>

#include "framework/windows/controls.h"

namespace lorv {

// A dialog as data, the same for every peer. Places and sizes in dialog units: a quarter of the font's
// average width across, an eighth of its height down.
struct DialogItem {
  WindowKind kind;
  UINT id;
  short x;
  short y;
  short width;
  short height;
  DWORD style;  // beside WS_CHILD and WS_VISIBLE, which all items have
  LPCTSTR text;
};

struct DialogTemplate {
  UINT id;
  LPCTSTR caption;
  short width;
  short height;
  LPCTSTR font;
  int points;
  std::span<const DialogItem> items;  // in the order in which Tab visits them
  DWORD style = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME;
};

}  // namespace lorv

// A dialog, with the framework's operations and names.
//
// Keys: Tab and Shift+Tab go to the next and previous control that takes the focus, arrows go through a
//   group, Return presses the default button (or the button that has the focus, which looks the default
//   then), Esc is Cancel, Alt with a marked letter goes to its control. Edits with ES_WANTRETURN keep
//   Return.
// Result: DoModal gives what EndDialog was given, IDOK and IDCANCEL by OnOK and OnCancel; -1 if no window
//   could be made. OnInitDialog answers TRUE to have the focus set to the first control.
// A modal dialog made without an owner is owned by the window that is active when it starts.
// On a screen of other dots per inch the dialog, what stands in it and their fonts keep their size to the
// eye. The template is read while the window is made. The object may be deleted in no handler of a modal
// dialog.
//
//   CDialog dialog(kTemplate, &parent);  if (dialog.DoModal() == IDOK) ...
class COMM_LORV_API CDialog : public CWnd {
 public:
  explicit CDialog(const lorv::DialogTemplate& form, CWnd* parent = nullptr)
      : form_(&form), parent_(parent) {}
  CDialog() = default;
  ~CDialog() override;

  virtual INT_PTR DoModal();
  using CWnd::Create;
  BOOL Create(const lorv::DialogTemplate& form, CWnd* parent = nullptr);  // modeless
  void EndDialog(int result);

  UINT GetDefID() const { return default_id_; }
  void SetDefID(UINT id);
  void NextDlgCtrl() { Step(true); }
  void PrevDlgCtrl() { Step(false); }
  void GotoDlgCtrl(CWnd* control);
  // From dialog units to pixels.
  void MapDialogRect(LPRECT rect) const;

  BOOL PreTranslateMessage(MSG* message) override;

  DECLARE_DYNAMIC(CDialog)

 protected:
  lorv::WindowKind PeerKind() const override { return lorv::WindowKind::Dialog; }
  virtual BOOL OnInitDialog() { return TRUE; }
  virtual void OnOK() { EndDialog(IDOK); }
  virtual void OnCancel() { EndDialog(IDCANCEL); }
  void OnClose();

  DECLARE_MESSAGE_MAP()

 private:
  BOOL Build(const lorv::DialogTemplate& form, CWnd* parent);
  void BuildItems(const lorv::DialogTemplate& form);
  void Measure(const lorv::DialogTemplate& form, int dots);
  CRect MiddleOf(const lorv::DialogTemplate& form, const CWnd* parent) const;
  void Start();
  void Run(HWND window);
  void Step(bool forward);
  BOOL TakeKey(const MSG& message);
  BOOL TakeReturn(HWND focus);
  BOOL TakeEscape();
  BOOL TakeArrow(HWND focus, int key);
  BOOL TakeMark(TCHAR letter);
  void Press(UINT id);
  void ShowDefault(HWND coming = nullptr);
  LRESULT HandleGetDefault(WPARAM w, LPARAM l);
  LRESULT HandleSetDefault(WPARAM w, LPARAM l);
  LRESULT HandleDpiChanged(WPARAM w, LPARAM l);

  const lorv::DialogTemplate* form_ = nullptr;
  CWnd* parent_ = nullptr;
  LOGFONT face_ = {};
  SIZE base_ = {7, 16};
  int dots_ = lorv::kUsualDpi;  // an inch, of the screen that it was measured for
  UINT default_id_ = IDOK;
  int result_ = -1;
  bool modal_ = false;
  bool ended_ = false;
};
