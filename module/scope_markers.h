#pragma once

#include "framework/native/export.h"
#include "framework/text/cstring.h"

// Marks that a project is open, for as long as an object lives. Not a count: of two nested objects the inner
// one's end takes the mark away. For the user-interface thread.
//
//   { TOpenProject open;  TOpenProject::IsOpenProject()  gives true }
class COMM_LORV_API TOpenProject {
 public:
  TOpenProject() { m_bOpenPrj = true; }
  virtual ~TOpenProject() { m_bOpenPrj = false; }
  TOpenProject(const TOpenProject&) = delete;
  TOpenProject& operator=(const TOpenProject&) = delete;

  static bool IsOpenProject() { return m_bOpenPrj; }

  static bool m_bOpenPrj;
};

// Counts the scopes that want the mouse left alone; nested objects count. For the user-interface thread.
//
// The two texts collect what the suite notes of its events, each value behind a ";". They only grow.
//
//   TBlockMouse::SetEventInfo(3);  TBlockMouse::GetEventInfo()  gives ";3" at first
class COMM_LORV_API TBlockMouse {
 public:
  TBlockMouse() { ++m_iBlockMouse; }
  virtual ~TBlockMouse() { --m_iBlockMouse; }
  TBlockMouse(const TBlockMouse&) = delete;
  TBlockMouse& operator=(const TBlockMouse&) = delete;

  static int IsBlockMouse() { return m_iBlockMouse; }
  static void SetEventInfo(int value);
  static void SetAllEventInfo(int value);
  static CString GetEventInfo() { return m_iEventInfo; }
  static CString GetAllEventInfo() { return m_iEventAllInfo; }

  static int m_iBlockMouse;
  static CString m_iEventInfo;
  static CString m_iEventAllInfo;
};
