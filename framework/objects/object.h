#pragma once

#include "framework/native/export.h"
#include "framework/native/native_types.h"

class CArchive;
class CObject;

// What a class knows about itself at run time: its name, its base, and how to make one.
//
// One exists for each class that uses a macro below, is made on first use and lives as long as the program.
//
//   RUNTIME_CLASS(CFileException)->IsDerivedFrom(RUNTIME_CLASS(CException))  gives TRUE
struct COMM_LORV_API CRuntimeClass {
  const char* m_lpszClassName;        // as written in the source
  int m_nObjectSize;                  // bytes
  UINT m_wSchema;                     // version of the stored form; kNoSchema: cannot be stored
  CObject* (*m_pfnCreateObject)();    // null: objects cannot be made by class
  const CRuntimeClass* m_pBaseClass;  // null for CObject
  const CRuntimeClass* m_pNextClass;  // the next in the list that FromName searches

  static constexpr UINT kNoSchema = 0xFFFF;

  // A new object on the heap, the caller's to delete; null if the class does not offer it.
  CObject* CreateObject() const;
  // True for the class itself too.
  BOOL IsDerivedFrom(const CRuntimeClass* base) const;
  // The storable class of that name (those of IMPLEMENT_SERIAL), or null.
  static const CRuntimeClass* FromName(const char* name);
};

// The base of classes that know their run-time class, and can be stored if they say so.
//
// Serialize of a class that can be stored writes to or reads from the archive; here it does nothing.
// A derived class may be copied if its members can.
class COMM_LORV_API CObject {
 public:
  virtual ~CObject();

  virtual const CRuntimeClass* GetRuntimeClass() const;
  static const CRuntimeClass* GetThisClass();

  BOOL IsKindOf(const CRuntimeClass* base) const;
  BOOL IsSerializable() const;
  virtual void Serialize(CArchive& archive);

 protected:
  CObject() = default;
  CObject(const CObject&) = default;
  CObject& operator=(const CObject&) = default;
};

namespace lorv {

// Puts a storable class on the list of CRuntimeClass::FromName before main begins.
struct COMM_LORV_API ClassRegistration {
  explicit ClassRegistration(const CRuntimeClass* storable);
};

}  // namespace lorv

#define RUNTIME_CLASS(class_name) (class_name::GetThisClass())

// The macros of the framework. DYNAMIC: run-time class. DYNCREATE: and objects can be made by class.
// SERIAL: and objects can be stored through pointers; the class then needs a default constructor.
#define DECLARE_DYNAMIC(class_name)           \
 public:                                      \
  static const CRuntimeClass* GetThisClass(); \
  const CRuntimeClass* GetRuntimeClass() const override;

#define DECLARE_DYNCREATE(class_name) \
  DECLARE_DYNAMIC(class_name)         \
  static CObject* CreateObject();

#define DECLARE_SERIAL(class_name) \
  DECLARE_DYNCREATE(class_name)    \
  friend CArchive& operator>>(CArchive& archive, class_name*& object);

#define LORV_IMPLEMENT_RUNTIME_CLASS(class_name, base_name, schema, create)                           \
  const CRuntimeClass* class_name::GetThisClass() {                                                   \
    static CRuntimeClass self = {                                                                     \
        #class_name, static_cast<int>(sizeof(class_name)), schema, create, base_name::GetThisClass(), \
        nullptr};                                                                                     \
    return &self;                                                                                     \
  }                                                                                                   \
  const CRuntimeClass* class_name::GetRuntimeClass() const {                                          \
    return class_name::GetThisClass();                                                                \
  }

#define IMPLEMENT_DYNAMIC(class_name, base_name) \
  LORV_IMPLEMENT_RUNTIME_CLASS(class_name, base_name, CRuntimeClass::kNoSchema, nullptr)

#define IMPLEMENT_DYNCREATE(class_name, base_name) \
  CObject* class_name::CreateObject() {            \
    return new class_name;                         \
  }                                                \
  LORV_IMPLEMENT_RUNTIME_CLASS(class_name, base_name, CRuntimeClass::kNoSchema, class_name::CreateObject)

// The file that uses this one includes "framework/objects/archive.h".
#define IMPLEMENT_SERIAL(class_name, base_name, schema)                                            \
  CObject* class_name::CreateObject() {                                                            \
    return new class_name;                                                                         \
  }                                                                                                \
  LORV_IMPLEMENT_RUNTIME_CLASS(class_name, base_name, schema, class_name::CreateObject)            \
  static const lorv::ClassRegistration lorv_registration_##class_name(class_name::GetThisClass()); \
  [[maybe_unused]] CArchive& operator>>(CArchive& archive, class_name*& object) {                  \
    object = static_cast<class_name*>(archive.ReadObject(class_name::GetThisClass()));             \
    return archive;                                                                                \
  }
