#include "framework/objects/command_target.h"

// Message tables: how a message finds the handler that a class has written. Tables are walked from the class
// to its bases and each from top to bottom, so the first entry that fits wins and a derived class overrides
// its base.

IMPLEMENT_DYNAMIC(CCmdTarget, CObject)

namespace lorv {
namespace {

// Below it a number that is not yet registered (0) would fit WM_NULL.
constexpr UINT kFirstRegistered = 0xC000;

bool Fits(const AFX_MSGMAP_ENTRY& entry, UINT message, UINT code, UINT id) {
  if (entry.registered != nullptr) return message >= kFirstRegistered && *entry.registered == message;
  if (entry.nMessage != message) return false;
  // An entry without ids is one for plain messages, or for a code from any control.
  if (entry.nID == 0 && entry.nLastID == 0) return entry.nCode == code || entry.nCode == 0;
  return entry.nCode == code && id >= entry.nID && id <= entry.nLastID;
}

}  // namespace

const AFX_MSGMAP_ENTRY* FindEntry(const AFX_MSGMAP* map, UINT message, UINT code, UINT id) {
  for (; map != nullptr; map = map->base == nullptr ? nullptr : map->base())
    for (const AFX_MSGMAP_ENTRY* entry = map->entries; entry->handler != nullptr; ++entry)
      if (Fits(*entry, message, code, id)) return entry;
  return nullptr;
}

}  // namespace lorv

const AFX_MSGMAP* CCmdTarget::GetMessageMap() const {
  return GetThisMessageMap();
}

const AFX_MSGMAP* CCmdTarget::GetThisMessageMap() {
  static const AFX_MSGMAP_ENTRY entries[] = {{0, 0, 0, 0, nullptr, nullptr}};
  static const AFX_MSGMAP map = {nullptr, entries};
  return &map;
}

const AFX_EVENTSINKMAP* CCmdTarget::GetEventSinkMap() const {
  return GetThisEventSinkMap();
}

const AFX_EVENTSINKMAP* CCmdTarget::GetThisEventSinkMap() {
  static const AFX_EVENTSINKMAP_ENTRY entries[] = {{0, 0, 0, nullptr}};
  static const AFX_EVENTSINKMAP map = {nullptr, entries};
  return &map;
}

BOOL CCmdTarget::OnEvent(UINT id, AFX_EVENT* event, AFX_CMDHANDLERINFO* info) {
  if (event == nullptr || event->m_eventKind != AFX_EVENT::event) return FALSE;
  const AFX_EVENTSINKMAP* map = GetEventSinkMap();
  for (; map != nullptr; map = map->base == nullptr ? nullptr : map->base())
    for (const AFX_EVENTSINKMAP_ENTRY* entry = map->entries; entry->handler != nullptr; ++entry) {
      if (entry->dispid != event->m_dispid || id < entry->nCtrlIDFirst || id > entry->nCtrlIDLast) continue;
      if (info == nullptr) return entry->handler(*this, *event);
      info->pTarget = this;
      return TRUE;
    }
  return FALSE;
}

BOOL CCmdTarget::OnCmdMsg(UINT id, int code, void* extra, AFX_CMDHANDLERINFO* info) {
  if (code == CN_EVENT) return OnEvent(id, static_cast<AFX_EVENT*>(extra), info);
  // Enabling and ticking commands by this way is not offered; FALSE says that nobody did it.
  if (code == CN_UPDATE_COMMAND_UI) return FALSE;
  const UINT packed = static_cast<UINT>(code);
  const UINT message = packed >> 16U == 0 ? WM_COMMAND : packed >> 16U;
  lorv::HandlerCall call;
  call.id = id;
  call.header = message == WM_NOTIFY ? static_cast<NMHDR*>(extra) : nullptr;
  // The code of a notification with a header is a full number, mostly below 0.
  const UINT wanted = call.header != nullptr ? call.header->code : packed & 0xFFFFU;
  const AFX_MSGMAP_ENTRY* const entry = lorv::FindEntry(GetMessageMap(), message, wanted, id);
  if (entry == nullptr) return FALSE;
  // With `info` the caller only asks who would handle it.
  if (info != nullptr) {
    info->pTarget = this;
    return TRUE;
  }
  entry->handler(*this, call);
  return TRUE;
}
