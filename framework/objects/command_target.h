#pragma once

#include "framework/native/export.h"
#include "framework/native/window_types.h"
#include "framework/objects/object.h"

class CCmdTarget;

// Codes of OnCmdMsg beside those of notifications.
constexpr int CN_COMMAND = 0;             // a menu item or accelerator
constexpr int CN_UPDATE_COMMAND_UI = -1;  // what a menu item shows
constexpr int CN_EVENT = -2;              // an event of an automation control: the extra is an AFX_EVENT

struct tagEXCEPINFO;

// An event on its way from a control to the sink of its parent. The record and what it points to are the
// sender's and live during the call; a handler answers through arguments that came by pointer.
struct AFX_EVENT {
  enum Kind : int { event = 0, propRequest, propChanged, propDSCNotify };
  int m_eventKind = event;
  DISPID m_dispid = 0;
  DISPPARAMS* m_pDispParams = nullptr;
  tagEXCEPINFO* m_pExcepInfo = nullptr;
  UINT* m_puArgError = nullptr;
  BOOL m_bPropChanged = FALSE;
  HRESULT m_hResult = 0;
};

// Asked for by a caller of OnCmdMsg who wants to know the handler but not to run it.
struct AFX_CMDHANDLERINFO {
  CCmdTarget* pTarget = nullptr;
};

namespace lorv {

// A message on its way to its handler.
struct HandlerCall {
  WPARAM w = 0;
  LPARAM l = 0;
  UINT id = 0;              // of commands and notifications
  NMHDR* header = nullptr;  // of notifications with a header
  LRESULT result = 0;       // what the handler answers
};

}  // namespace lorv

// One row of a message table. The handler calls the member function with its arguments unpacked.
struct AFX_MSGMAP_ENTRY {
  UINT nMessage;
  UINT nCode;
  UINT nID;
  UINT nLastID;
  const UINT* registered;  // the number of a registered message stands here
  void (*handler)(CCmdTarget& target, lorv::HandlerCall& call);  // null ends the table
};

struct AFX_MSGMAP {
  const AFX_MSGMAP* (*base)();  // null in CCmdTarget's
  const AFX_MSGMAP_ENTRY* entries;
};

// One row of an event sink: an event of a control, and what calls the member function for it with its
// arguments unpacked. FALSE: the arguments are not those of the handler, or it passes the event on.
struct AFX_EVENTSINKMAP_ENTRY {
  UINT nCtrlIDFirst;
  UINT nCtrlIDLast;
  DISPID dispid;
  BOOL (*handler)(CCmdTarget& target, AFX_EVENT& event);  // null ends the table
};

struct AFX_EVENTSINKMAP {
  const AFX_EVENTSINKMAP* (*base)();  // null in CCmdTarget's
  const AFX_EVENTSINKMAP_ENTRY* entries;
};

// The base of what commands can be sent to.
class COMM_LORV_API CCmdTarget : public CObject {
 public:
  // Finds the handler of the command or notification in the tables, from the class up, and runs it. For a
  // notification the code's high word is the message, WM_NOTIFY, and `extra` its NMHDR. True: a handler was
  // found. With `info` it is only named.
  virtual BOOL OnCmdMsg(UINT id, int code, void* extra, AFX_CMDHANDLERINFO* info);
  // What OnCmdMsg does with CN_EVENT: the event goes to the first row of the sinks that fits, from the class
  // up.
  virtual BOOL OnEvent(UINT id, AFX_EVENT* event, AFX_CMDHANDLERINFO* info);

  CCmdTarget(const CCmdTarget&) = delete;
  CCmdTarget& operator=(const CCmdTarget&) = delete;

  DECLARE_DYNAMIC(CCmdTarget)

 protected:
  CCmdTarget() = default;

  virtual const AFX_MSGMAP* GetMessageMap() const;
  static const AFX_MSGMAP* GetThisMessageMap();
  virtual const AFX_EVENTSINKMAP* GetEventSinkMap() const;
  static const AFX_EVENTSINKMAP* GetThisEventSinkMap();
};

namespace lorv {

// The row for a message, or null; `code` and `id` count for WM_COMMAND and WM_NOTIFY.
COMM_LORV_API const AFX_MSGMAP_ENTRY* FindEntry(const AFX_MSGMAP* map, UINT message, UINT code, UINT id);

// Rows of what a parent reflects to its control have this bit above their message.
constexpr UINT kReflected = 0x10000;

}  // namespace lorv
