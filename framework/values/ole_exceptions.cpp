// The failure objects of automation calls, whose texts are those of failure codes.

#include "framework/objects/exceptions.h"
#include "framework/values/com_error.h"

CString COleException::ErrorText() const {
  return _com_error(m_sc).ErrorMessage();
}

CString COleDispatchException::ErrorText() const {
  return m_strDescription;
}

HRESULT COleException::Process(const CException* caught) {
  if (const auto* ole = dynamic_cast<const COleException*>(caught)) return ole->m_sc;
  if (dynamic_cast<const CMemoryException*>(caught) != nullptr) return E_OUTOFMEMORY;
  if (dynamic_cast<const CNotSupportedException*>(caught) != nullptr) return E_NOTIMPL;
  return E_UNEXPECTED;
}

void AfxThrowOleException(HRESULT code) {
  throw new COleException(code);
}

void AfxThrowOleDispatchException(WORD code, LPCTSTR description, UINT help_id) {
  throw new COleDispatchException(description, help_id, code);
}
