#pragma once

#include <memory>
#include <vector>

#include "framework/objects/object.h"
#include "framework/ports/menu_model.h"

class CWnd;

// A popup menu, with the framework's operations and names. It holds entries only; the desktop shows them.
//
// Edges: positions count from 0 (with MF_BYPOSITION), commands are looked for in submenus too. What is not
//   there is answered with FALSE, 0xFFFFFFFF for states and ids, -1 for counts and null. A menu can be a
//   submenu of others; one that would contain itself is refused.
// The object owns its menu; entries of submenus stay theirs, so they may be destroyed in any order.
// One thread: that of the user interface.
//
//   CMenu menu;  menu.CreatePopupMenu();  menu.AppendMenu(MF_STRING, 57665, _T("C30"));
//   menu.TrackPopupMenu(TPM_RETURNCMD | TPM_RIGHTBUTTON, x, y, &grid)  gives 57665 if that was chosen
class COMM_LORV_API CMenu : public CObject {
 public:
  HMENU m_hMenu = nullptr;

  CMenu() = default;
  CMenu(const CMenu&) = delete;
  CMenu& operator=(const CMenu&) = delete;
  ~CMenu() override { DestroyMenu(); }

  BOOL CreatePopupMenu();
  // The menu that the program knows by that number (lorv::AddMenuResource, or a resource), as a fresh copy
  // that takes its submenus along when it goes. FALSE, and the object has no menu: the number is unknown.
  BOOL LoadMenu(UINT number);
  BOOL DestroyMenu();
  BOOL Attach(HMENU menu);
  HMENU Detach();
  HMENU GetSafeHmenu() const { return m_hMenu; }
  static CMenu* FromHandle(HMENU menu);  // for the moment

  // With MF_POPUP `id` is the submenu's m_hMenu.
  BOOL AppendMenu(UINT flags, UINT_PTR id = 0, LPCTSTR text = nullptr);
  BOOL InsertMenu(UINT position, UINT flags, UINT_PTR id = 0, LPCTSTR text = nullptr);
  BOOL DeleteMenu(UINT position, UINT flags);
  int GetMenuItemCount() const;
  UINT GetMenuItemID(int position) const;  // 0xFFFFFFFF for a submenu
  UINT GetMenuState(UINT position, UINT flags) const;
  int GetMenuString(UINT position, CString& text, UINT flags) const;
  CMenu* GetSubMenu(int position) const;
  // The former state: MF_CHECKED or 0; 0xFFFFFFFF for what is not there.
  UINT CheckMenuItem(UINT position, UINT check);
  UINT EnableMenuItem(UINT position, UINT enable);

  // Shown with its left top corner at a point of the screen. With TPM_RETURNCMD the command chosen, 0 for
  // none; else WM_COMMAND is posted to the owner.
  BOOL TrackPopupMenu(UINT flags, int x, int y, CWnd* owner, LPCRECT always_null = nullptr);

 private:
  lorv::MenuEntry* Entry(UINT position, UINT flags) const;
};
