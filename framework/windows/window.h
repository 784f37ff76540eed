#pragma once

#include <memory>

#include "framework/drawing/region.h"
#include "framework/ports/desktop_port.h"
#include "framework/ports/window_map.h"
#include "framework/text/cstring.h"
#include "framework/windows/message_map.h"

class CDC;
class CFont;

// A window, with the framework's operations and names.
//
// A message runs WindowProc, which looks into the message tables of the class and its bases, and leaves what
//   is not there to the peer's default behaviour (DefWindowProc).
// Units: pixels; a child's place is in its parent's client area, other windows' on the screen.
// Edges: every operation on an object without a window does nothing and gives null, FALSE, 0 or an empty text
//   or rectangle. A window may be destroyed in any handler, its own too; the object may be deleted in any
//   handler after which its class does nothing more. Pointers that FromHandle made up for windows without an
//   object are for the moment only.
// The object is the caller's. When its window is destroyed the object is only detached (PostNcDestroy, the
//   last call, may delete it); when the object is deleted its window is destroyed.
// One thread: that of the user interface. GetClientRect and painting by CClientDC are for any thread.
//
//   CWnd sheet;  sheet.Create(nullptr, _T(""), WS_CHILD | WS_VISIBLE, CRect(0, 0, 90, 20), &parent, 7);
//   sheet.GetDlgCtrlID()  gives 7
class COMM_LORV_API CWnd : public CCmdTarget, public lorv::MessageTarget {
 public:
  HWND m_hWnd = nullptr;

  CWnd() = default;
  ~CWnd() override;
  HWND GetSafeHwnd() const { return m_hWnd; }

  // Making and taking over. `class_name` is what others may look for; null: that of the kind of window.
  virtual BOOL Create(LPCTSTR class_name, LPCTSTR text, DWORD style, const RECT& rect, CWnd* parent, UINT id);
  BOOL CreateEx(DWORD ex_style, LPCTSTR class_name, LPCTSTR text, DWORD style, const RECT& rect, CWnd* parent,
                UINT id, LPVOID parameter = nullptr);
  virtual BOOL DestroyWindow();
  BOOL Attach(HWND window);
  HWND Detach();
  BOOL SubclassWindow(HWND window);
  BOOL SubclassDlgItem(UINT id, CWnd* parent);
  // Its messages go to its own procedure alone again; the window stays.
  HWND UnsubclassWindow();
  static CWnd* FromHandle(HWND window);
  static CWnd* FromHandlePermanent(HWND window);

  // Messages.
  LRESULT SendMessage(UINT message, WPARAM w = 0, LPARAM l = 0) const;
  BOOL PostMessage(UINT message, WPARAM w = 0, LPARAM l = 0) const;
  virtual BOOL PreTranslateMessage(MSG* message);
  LRESULT HandleMessage(HWND window, UINT message, WPARAM w, LPARAM l) final;
  bool TakeMessage(MSG& message) final { return PreTranslateMessage(&message) != 0; }

  // Parent, owner, children. The results are valid as FromHandle's are.
  CWnd* GetParent() const;  // the owner for a window that is no child
  CWnd* GetOwner() const;   // the one set, else the parent
  void SetOwner(CWnd* owner) { owner_ = owner == nullptr ? nullptr : owner->m_hWnd; }
  CWnd* GetTopLevelParent() const;
  CWnd* GetDlgItem(int id) const;
  CWnd* GetWindow(UINT which) const;  // GW_...
  CWnd* GetTopWindow() const { return GetWindow(GW_CHILD); }
  BOOL IsChild(const CWnd* window) const;
  int GetDlgCtrlID() const;
  int SetDlgCtrlID(int id);  // the former one
  static CWnd* GetFocus();
  static CWnd* GetCapture();
  static CWnd* GetActiveWindow();
  static CWnd* GetDesktopWindow() { return nullptr; }
  static CWnd* WindowFromPoint(POINT screen);

  // Text and looks.
  void GetWindowText(CString& text) const;
  int GetWindowText(LPTSTR text, int room) const;  // units copied; always ended within the room
  int GetWindowTextLength() const;
  void SetWindowText(LPCTSTR text);
  void SetDlgItemText(int id, LPCTSTR text);
  int GetDlgItemText(int id, CString& text) const;
  CString GetWindowClassName() const;
  CFont* GetFont() const;
  void SetFont(CFont* font, BOOL redraw = TRUE);
  DWORD GetStyle() const;
  DWORD GetExStyle() const;
  BOOL ModifyStyle(DWORD remove, DWORD add, UINT flags = 0);
  BOOL ModifyStyleEx(DWORD remove, DWORD add, UINT flags = 0);

  // Place and state.
  void GetWindowRect(LPRECT rect) const;
  void GetClientRect(LPRECT rect) const;
  void MoveWindow(int x, int y, int width, int height, BOOL repaint = TRUE);
  void MoveWindow(LPCRECT rect, BOOL repaint = TRUE);
  BOOL SetWindowPos(const CWnd* after, int x, int y, int width, int height, UINT flags);
  void ClientToScreen(LPPOINT point) const;
  void ClientToScreen(LPRECT rect) const;
  void ScreenToClient(LPPOINT point) const;
  void ScreenToClient(LPRECT rect) const;
  BOOL ShowWindow(int how);  // whether it was visible before
  BOOL IsWindowVisible() const;
  BOOL EnableWindow(BOOL enable = TRUE);  // whether it was disabled before
  BOOL IsWindowEnabled() const;
  void BringWindowToTop();
  BOOL SetForegroundWindow();
  CWnd* SetActiveWindow();
  CWnd* SetFocus();    // the one that had it
  CWnd* SetCapture();  // the one that had it

  // Painting.
  void Invalidate(BOOL erase = TRUE);
  void InvalidateRect(LPCRECT rect, BOOL erase = TRUE);
  // Takes back what was invalidated, of all or of the rectangle.
  void ValidateRect(LPCRECT rect);
  // The rectangle around what is out of date; FALSE and empty if nothing is.
  BOOL GetUpdateRect(LPRECT rect, BOOL erase = FALSE) const;
  // What is out of date, part by part.
  lorv::Region GetUpdateRegion() const;
  void UpdateWindow();
  // Moves what is shown in `area` (null: all, with the children), nothing of it out of `clip`; what comes in
  // is invalidated.
  void ScrollWindow(int across, int down, LPCRECT area = nullptr, LPCRECT clip = nullptr);
  // The same; children move with SW_SCROLLCHILDREN. Of the region answers only null is taken; `update` gets
  // the rectangle around what is out of date now. The kind of region that is.
  int ScrollWindowEx(int across, int down, LPCRECT area, LPCRECT clip, void* always_null, LPRECT update,
                     UINT flags);
  int GetDpi() const;
  BOOL RedrawWindow(LPCRECT rect = nullptr, void* region = nullptr,
                    UINT flags = RDW_INVALIDATE | RDW_UPDATENOW | RDW_ERASE);
  void SetRedraw(BOOL on = TRUE);
  // The caller's to give back by ReleaseDC.
  CDC* GetDC();
  int ReleaseDC(CDC* dc);

  UINT_PTR SetTimer(UINT_PTR id, UINT milliseconds, void* always_null);
  BOOL KillTimer(UINT_PTR id);

  // After a change of what the class shows to screen readers by GetAccessible or GetAccessibleCells: of the
  // window, or of a cell.
  void ReportAccessible(lorv::AccessEvent event) const;
  void ReportAccessibleCell(lorv::AccessEvent event, lorv::CellAddress cell) const;

  // Bars of the window itself.
  BOOL SetScrollInfo(int bar, SCROLLINFO* info, BOOL redraw = TRUE);
  BOOL GetScrollInfo(int bar, SCROLLINFO* info, UINT mask = SIF_ALL);
  int SetScrollPos(int bar, int position, BOOL redraw = TRUE);  // the former one
  int GetScrollPos(int bar) const;
  void SetScrollRange(int bar, int least, int most, BOOL redraw = TRUE);
  void GetScrollRange(int bar, int* least, int* most) const;
  void ShowScrollBar(UINT bar, BOOL show = TRUE);

  DECLARE_DYNCREATE(CWnd)

 protected:
  virtual lorv::WindowKind PeerKind() const { return lorv::WindowKind::Custom; }
  virtual LRESULT WindowProc(UINT message, WPARAM w, LPARAM l);
  virtual BOOL OnWndMsg(UINT message, WPARAM w, LPARAM l, LRESULT* result);
  virtual LRESULT DefWindowProc(UINT message, WPARAM w, LPARAM l);
  // The default behaviour for the message being handled, with the arguments that it came with.
  LRESULT Default();
  virtual BOOL OnCommand(WPARAM w, LPARAM l);
  virtual BOOL OnNotify(WPARAM w, LPARAM l, LRESULT* result);
  virtual void PreSubclassWindow() {}
  virtual void PostNcDestroy() {}

  // What the rows of a message table call, here with the default behaviour.
  int OnCreate(LPCREATESTRUCT request);
  void OnDestroy() { Default(); }
  void OnNcDestroy() { Default(); }
  void OnClose() { Default(); }
  void OnPaint() { Default(); }
  void OnSize(UINT type, int width, int height);
  void OnMove(int x, int y);
  void OnShowWindow(BOOL show, UINT status);
  void OnEnable(BOOL enable);
  void OnActivate(UINT state, CWnd* other, BOOL minimized);
  void OnSetFocus(CWnd* former);
  void OnKillFocus(CWnd* next);
  void OnCaptureChanged(CWnd* next);
  void OnKeyDown(UINT key, UINT repeat, UINT flags);
  void OnKeyUp(UINT key, UINT repeat, UINT flags);
  void OnChar(UINT unit, UINT repeat, UINT flags);
  void OnSysKeyDown(UINT key, UINT repeat, UINT flags);
  void OnMouseMove(UINT flags, CPoint point);
  void OnLButtonDown(UINT flags, CPoint point);
  void OnLButtonUp(UINT flags, CPoint point);
  void OnLButtonDblClk(UINT flags, CPoint point);
  void OnRButtonDown(UINT flags, CPoint point);
  void OnRButtonUp(UINT flags, CPoint point);
  void OnMouseLeave() { Default(); }
  BOOL OnMouseWheel(UINT flags, short delta, CPoint point);
  BOOL OnSetCursor(CWnd* window, UINT hit, UINT message);
  void OnTimer(UINT_PTR id);
  void OnHScroll(UINT code, UINT position, CWnd* bar);
  void OnVScroll(UINT code, UINT position, CWnd* bar);
  void OnContextMenu(CWnd* window, CPoint point);
  UINT OnGetDlgCode() { return static_cast<UINT>(Default()); }
  void OnCancelMode() { Default(); }

  DECLARE_MESSAGE_MAP()

 private:
  friend class CDialog;
  BOOL Make(lorv::WindowRequest& request);
  void Finish(HWND window);
  BOOL Reflect(HWND control, UINT message, WPARAM w, LPARAM l, LRESULT* result);

  HWND owner_ = nullptr;
  mutable std::shared_ptr<CFont> font_;  // what GetFont hands out
};

namespace lorv {

// The window of the handle; for a handle that names nothing one that does nothing, so never null.
COMM_LORV_API std::shared_ptr<WindowPeer> PeerOf(HWND window);

}  // namespace lorv
