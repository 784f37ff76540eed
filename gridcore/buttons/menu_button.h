#pragma once

#include "framework/windows/controls.h"
#include "gridcore/life_token.h"

class CDC;

// A push button of the grid's library.
class COMM_LORV_API CBCGPButton : public CButton {
  DECLARE_DYNAMIC(CBCGPButton)
};

// A button that shows a popup menu below itself when it is pressed, by the mouse, by Space, Return, Down or
// F4, or by BM_CLICK.
//
// Edges: without a menu, or with one that is gone, pressing it shows nothing. A menu that is left without a
//   choice makes the last result 0.
// Result: after a choice the parent gets BN_CLICKED; the chosen command stands in m_nMenuResult by then, and
//   OnShowMenu has come to its end. The menu is the caller's.
// A handler may destroy the button, or delete it, while its menu is up and when it hears of the choice.
// One thread: that of the user interface.
//
//   button.m_hMenu = menu.m_hMenu;  button.OnShowMenu();  the user chooses 40:  button.m_nMenuResult is 40
class COMM_LORV_API CBCGPMenuButton : public CBCGPButton {
  DECLARE_DYNCREATE(CBCGPMenuButton)
 public:
  HMENU m_hMenu = nullptr;
  UINT m_nMenuResult = 0;
  bool m_bStayPressed = false;  // it looks pressed while its menu is up

  // Shows the menu and waits for the choice.
  virtual void OnShowMenu();

 protected:
  // Expires with the button.
  std::weak_ptr<int> Watch() const { return life_.Watch(); }
  void OnPaint();
  void OnLButtonDown(UINT flags, CPoint point);
  void OnLButtonDblClk(UINT flags, CPoint point) { OnLButtonDown(flags, point); }
  void OnKeyDown(UINT key, UINT repeat, UINT flags);
  void OnSetFocus(CWnd* former);
  void OnKillFocus(CWnd* next);
  void OnEnable(BOOL enable);
  LRESULT OnClick(WPARAM w, LPARAM l);

  DECLARE_MESSAGE_MAP()

 private:
  void Press();

  lorv::LifeToken life_;
  bool pressed_ = false;
};
