#pragma once

#include "framework/drawing/geometry.h"
#include "framework/objects/command_target.h"

// Message tables, with the framework's macros:
//
//   class Sheet : public CWnd { ... void OnPaint(); void OnOk(); DECLARE_MESSAGE_MAP() };
//   BEGIN_MESSAGE_MAP(Sheet, CWnd)
//     ON_WM_PAINT()
//     ON_COMMAND(IDOK, OnOk)
//   END_MESSAGE_MAP()
//
// A handler may have any access; its arguments are checked by the compiler. The first row that fits is run,
// those of the class before those of its base.

#define DECLARE_MESSAGE_MAP()                   \
 protected:                                     \
  static const AFX_MSGMAP* GetThisMessageMap(); \
  const AFX_MSGMAP* GetMessageMap() const override;

// NOLINTBEGIN(bugprone-macro-parentheses)
#define BEGIN_MESSAGE_MAP(class_name, base_name)        \
  const AFX_MSGMAP* class_name::GetMessageMap() const { \
    return class_name::GetThisMessageMap();             \
  }                                                     \
  const AFX_MSGMAP* class_name::GetThisMessageMap() {   \
    using ThisClass [[maybe_unused]] = class_name;      \
    using TheBaseClass = base_name;                     \
    static const AFX_MSGMAP_ENTRY entries[] = {
#define END_MESSAGE_MAP()                                                                    \
  { 0, 0, 0, 0, nullptr, nullptr }                                                           \
  }                                                                                          \
  ;                                                                                          \
  static const AFX_MSGMAP map = {[] { return TheBaseClass::GetThisMessageMap(); }, entries}; \
  return &map;                                                                               \
  }

#define LORV_ROW(message, code, first, last, registered, ...)                          \
  {message,                                                                            \
   static_cast<UINT>(code),                                                            \
   static_cast<UINT>(first),                                                           \
   static_cast<UINT>(last),                                                            \
   registered,                                                                         \
   []([[maybe_unused]] CCmdTarget& target, [[maybe_unused]] lorv::HandlerCall& call) { \
     auto& self = static_cast<ThisClass&>(target);                                     \
     __VA_ARGS__;                                                                      \
   }},
#define LORV_MESSAGE(message, ...) LORV_ROW(message, 0, 0, 0, nullptr, __VA_ARGS__)

// Commands: void F(). Ranges: void F(UINT id).
#define ON_COMMAND(id, member) LORV_ROW(WM_COMMAND, CN_COMMAND, id, id, nullptr, self.member())
#define ON_COMMAND_RANGE(first, last, member) \
  LORV_ROW(WM_COMMAND, CN_COMMAND, first, last, nullptr, self.member(call.id))
// Notifications of controls: void F(). Reflected ones come to the control itself.
#define ON_CONTROL(code, id, member) LORV_ROW(WM_COMMAND, code, id, id, nullptr, self.member())
#define ON_CONTROL_RANGE(code, first, last, member) \
  LORV_ROW(WM_COMMAND, code, first, last, nullptr, self.member(call.id))
#define ON_CONTROL_REFLECT(code, member) \
  LORV_ROW(WM_COMMAND | lorv::kReflected, code, 0, 0xFFFF, nullptr, self.member())
// With a header: void F(NMHDR*, LRESULT*).
#define ON_NOTIFY(code, id, member) \
  LORV_ROW(WM_NOTIFY, code, id, id, nullptr, self.member(call.header, &call.result))
#define ON_NOTIFY_REFLECT(code, member) \
  LORV_ROW(WM_NOTIFY | lorv::kReflected, code, 0, 0xFFFF, nullptr, self.member(call.header, &call.result))
// Any message: LRESULT F(WPARAM, LPARAM). A registered one is named by the variable that holds its number.
#define ON_MESSAGE(message, member) LORV_MESSAGE(message, call.result = self.member(call.w, call.l))
#define ON_REGISTERED_MESSAGE(variable, member) \
  LORV_ROW(0, 0, 0, 0, &(variable), call.result = self.member(call.w, call.l))
// NOLINTEND(bugprone-macro-parentheses)

#define ON_EN_CHANGE(id, member) ON_CONTROL(EN_CHANGE, id, member)
#define ON_EN_UPDATE(id, member) ON_CONTROL(EN_UPDATE, id, member)
#define ON_EN_SETFOCUS(id, member) ON_CONTROL(EN_SETFOCUS, id, member)
#define ON_EN_KILLFOCUS(id, member) ON_CONTROL(EN_KILLFOCUS, id, member)
#define ON_EN_MAXTEXT(id, member) ON_CONTROL(EN_MAXTEXT, id, member)
#define ON_CBN_SELCHANGE(id, member) ON_CONTROL(CBN_SELCHANGE, id, member)
#define ON_CBN_SELENDOK(id, member) ON_CONTROL(CBN_SELENDOK, id, member)
#define ON_CBN_SELENDCANCEL(id, member) ON_CONTROL(CBN_SELENDCANCEL, id, member)
#define ON_CBN_DROPDOWN(id, member) ON_CONTROL(CBN_DROPDOWN, id, member)
#define ON_CBN_CLOSEUP(id, member) ON_CONTROL(CBN_CLOSEUP, id, member)
#define ON_CBN_EDITCHANGE(id, member) ON_CONTROL(CBN_EDITCHANGE, id, member)
#define ON_CBN_KILLFOCUS(id, member) ON_CONTROL(CBN_KILLFOCUS, id, member)
#define ON_LBN_SELCHANGE(id, member) ON_CONTROL(LBN_SELCHANGE, id, member)
#define ON_LBN_DBLCLK(id, member) ON_CONTROL(LBN_DBLCLK, id, member)
#define ON_BN_CLICKED(id, member) ON_CONTROL(BN_CLICKED, id, member)

// Messages of windows, each to the member function of the framework's name.
#define LORV_POINT CPoint(static_cast<short>(LOWORD(call.l)), static_cast<short>(HIWORD(call.l)))
#define LORV_MOUSE(message, member) LORV_MESSAGE(message, self.member(static_cast<UINT>(call.w), LORV_POINT))
#define LORV_KEY(message, member) \
  LORV_MESSAGE(message, self.member(static_cast<UINT>(call.w), LOWORD(call.l), HIWORD(call.l)))
#define LORV_WINDOW(value) CWnd::FromHandle(reinterpret_cast<HWND>(value))

#define ON_WM_CREATE() \
  LORV_MESSAGE(WM_CREATE, call.result = self.OnCreate(reinterpret_cast<LPCREATESTRUCT>(call.l)))
#define ON_WM_DESTROY() LORV_MESSAGE(WM_DESTROY, self.OnDestroy())
#define ON_WM_NCDESTROY() LORV_MESSAGE(WM_NCDESTROY, self.OnNcDestroy())
#define ON_WM_CLOSE() LORV_MESSAGE(WM_CLOSE, self.OnClose())
#define ON_WM_PAINT() LORV_MESSAGE(WM_PAINT, self.OnPaint())
#define ON_WM_SIZE() \
  LORV_MESSAGE(WM_SIZE, self.OnSize(static_cast<UINT>(call.w), LOWORD(call.l), HIWORD(call.l)))
#define ON_WM_MOVE() \
  LORV_MESSAGE(WM_MOVE, self.OnMove(static_cast<short>(LOWORD(call.l)), static_cast<short>(HIWORD(call.l))))
#define ON_WM_SHOWWINDOW() \
  LORV_MESSAGE(WM_SHOWWINDOW, self.OnShowWindow(call.w != 0, static_cast<UINT>(call.l)))
#define ON_WM_ENABLE() LORV_MESSAGE(WM_ENABLE, self.OnEnable(call.w != 0))
#define ON_WM_ACTIVATE() \
  LORV_MESSAGE(WM_ACTIVATE, self.OnActivate(LOWORD(call.w), LORV_WINDOW(call.l), HIWORD(call.w) != 0))
#define ON_WM_SETFOCUS() LORV_MESSAGE(WM_SETFOCUS, self.OnSetFocus(LORV_WINDOW(call.w)))
#define ON_WM_KILLFOCUS() LORV_MESSAGE(WM_KILLFOCUS, self.OnKillFocus(LORV_WINDOW(call.w)))
#define ON_WM_CAPTURECHANGED() LORV_MESSAGE(WM_CAPTURECHANGED, self.OnCaptureChanged(LORV_WINDOW(call.l)))
#define ON_WM_KEYDOWN() LORV_KEY(WM_KEYDOWN, OnKeyDown)
#define ON_WM_KEYUP() LORV_KEY(WM_KEYUP, OnKeyUp)
#define ON_WM_CHAR() LORV_KEY(WM_CHAR, OnChar)
#define ON_WM_SYSKEYDOWN() LORV_KEY(WM_SYSKEYDOWN, OnSysKeyDown)
#define ON_WM_MOUSEMOVE() LORV_MOUSE(WM_MOUSEMOVE, OnMouseMove)
#define ON_WM_LBUTTONDOWN() LORV_MOUSE(WM_LBUTTONDOWN, OnLButtonDown)
#define ON_WM_LBUTTONUP() LORV_MOUSE(WM_LBUTTONUP, OnLButtonUp)
#define ON_WM_LBUTTONDBLCLK() LORV_MOUSE(WM_LBUTTONDBLCLK, OnLButtonDblClk)
#define ON_WM_RBUTTONDOWN() LORV_MOUSE(WM_RBUTTONDOWN, OnRButtonDown)
#define ON_WM_RBUTTONUP() LORV_MOUSE(WM_RBUTTONUP, OnRButtonUp)
#define ON_WM_MOUSELEAVE() LORV_MESSAGE(WM_MOUSELEAVE, self.OnMouseLeave())
#define ON_WM_MOUSEWHEEL()                                     \
  LORV_MESSAGE(WM_MOUSEWHEEL, call.result = self.OnMouseWheel( \
                                  LOWORD(call.w), static_cast<short>(HIWORD(call.w)), LORV_POINT))
#define ON_WM_SETCURSOR()    \
  LORV_MESSAGE(WM_SETCURSOR, \
               call.result = self.OnSetCursor(LORV_WINDOW(call.w), LOWORD(call.l), HIWORD(call.l)))
#define ON_WM_TIMER() LORV_MESSAGE(WM_TIMER, self.OnTimer(call.w))
#define ON_WM_HSCROLL() \
  LORV_MESSAGE(WM_HSCROLL, self.OnHScroll(LOWORD(call.w), HIWORD(call.w), LORV_WINDOW(call.l)))
#define ON_WM_VSCROLL() \
  LORV_MESSAGE(WM_VSCROLL, self.OnVScroll(LOWORD(call.w), HIWORD(call.w), LORV_WINDOW(call.l)))
#define ON_WM_CONTEXTMENU() LORV_MESSAGE(WM_CONTEXTMENU, self.OnContextMenu(LORV_WINDOW(call.w), LORV_POINT))
#define ON_WM_GETDLGCODE() \
  LORV_MESSAGE(WM_GETDLGCODE, call.result = static_cast<LRESULT>(self.OnGetDlgCode()))
#define ON_WM_CANCELMODE() LORV_MESSAGE(WM_CANCELMODE, self.OnCancelMode())
