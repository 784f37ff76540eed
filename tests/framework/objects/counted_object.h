#pragma once

#include "framework/native/native_types.h"

namespace lorv::test {

// The system's base has no virtual destructor: its objects end by their count.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// An object that only counts who holds it; it lives on the stack and starts with one holder.
class CountedObject : public IUnknown {
 public:
  virtual ~CountedObject() = default;
  ULONG Count() const { return count_; }

  HRESULT __stdcall QueryInterface(const GUID& /*id*/, void** /*object*/) override { return E_NOINTERFACE; }
  ULONG __stdcall AddRef() override { return ++count_; }
  ULONG __stdcall Release() override { return --count_; }

 private:
  ULONG count_ = 1;
};

#pragma GCC diagnostic pop

}  // namespace lorv::test
