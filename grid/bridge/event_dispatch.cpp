#include "grid/bridge/event_dispatch.h"

#include "framework/windows/window.h"

// An event on its way from a grid to the event sink of its parent.

HRESULT CGridDispatchDriver::CInvokeDisp::Invoke(DISPID event, REFIID /*always_null*/, LCID /*locale*/,
                                                 WORD /*flags*/, DISPPARAMS* params, VARIANT* /*result*/,
                                                 EXCEPINFO* failure, UINT* wrong_argument) {
  AFX_EVENT record;
  record.m_dispid = event;
  record.m_pDispParams = params;
  record.m_pExcepInfo = failure;
  record.m_puArgError = wrong_argument;
  parent_->OnCmdMsg(control_id_, CN_EVENT, &record, nullptr);
  return 0;
}
