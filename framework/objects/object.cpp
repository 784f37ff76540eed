#include "framework/objects/object.h"

#include <string_view>

// Run-time classes: names, base classes, making by name. The list of storable classes is a chain through
// static objects and needs no memory, as it grows before main and across the files of a program in any order.

namespace {

// The storable classes, newest first. Filled before main begins and only read afterwards.
// Within a function, so that it is there for the first class whichever file is initialised first.
const CRuntimeClass*& FirstStorable() {
  static const CRuntimeClass* first = nullptr;
  return first;
}

}  // namespace

CObject* CRuntimeClass::CreateObject() const {
  // Classes without a default constructor have run-time classes, too, but cannot be made by name.
  return m_pfnCreateObject == nullptr ? nullptr : m_pfnCreateObject();
}

BOOL CRuntimeClass::IsDerivedFrom(const CRuntimeClass* base) const {
  for (const CRuntimeClass* at = this; at != nullptr; at = at->m_pBaseClass) {
    if (at == base) return TRUE;
  }
  return FALSE;
}

const CRuntimeClass* CRuntimeClass::FromName(const char* name) {
  if (name == nullptr) return nullptr;
  const std::string_view wanted = name;
  for (const CRuntimeClass* at = FirstStorable(); at != nullptr; at = at->m_pNextClass) {
    if (wanted == at->m_lpszClassName) return at;
  }
  return nullptr;
}

CObject::~CObject() = default;

const CRuntimeClass* CObject::GetThisClass() {
  static const CRuntimeClass self = {
      "CObject", static_cast<int>(sizeof(CObject)), CRuntimeClass::kNoSchema, nullptr, nullptr, nullptr};
  return &self;
}

const CRuntimeClass* CObject::GetRuntimeClass() const {
  return GetThisClass();
}

BOOL CObject::IsKindOf(const CRuntimeClass* base) const {
  return GetRuntimeClass()->IsDerivedFrom(base);
}

BOOL CObject::IsSerializable() const {
  return GetRuntimeClass()->m_wSchema != CRuntimeClass::kNoSchema;
}

void CObject::Serialize(CArchive& /*archive*/) {}

lorv::ClassRegistration::ClassRegistration(const CRuntimeClass* storable) {
  // The object behind the pointer is the class's own static, which is not constant.
  const_cast<CRuntimeClass*>(storable)->m_pNextClass = FirstStorable();
  FirstStorable() = storable;
}
