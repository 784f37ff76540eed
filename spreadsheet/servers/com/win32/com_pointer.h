#pragma once

#include <utility>

#include "framework/native/native_types.h"

namespace lorv::com {

// Owns one count of a COM interface and gives it back at its end; null is allowed. One thread, as the
// interface.
//
//   ComPointer<ITypeInfo> info;  object->GetTypeInfo(0, language, info.Receive());
template <class Interface>
class ComPointer {
 public:
  ComPointer() = default;
  ComPointer(const ComPointer& other) : held_(other.held_) {
    if (held_ != nullptr) held_->AddRef();
  }
  ComPointer(ComPointer&& other) noexcept : held_(std::exchange(other.held_, nullptr)) {}
  ComPointer& operator=(ComPointer other) noexcept {
    std::swap(held_, other.held_);
    return *this;
  }
  ~ComPointer() {
    if (held_ != nullptr) held_->Release();
  }

  Interface* Get() const { return held_; }
  Interface* operator->() const { return held_; }
  explicit operator bool() const { return held_ != nullptr; }
  // Where a call puts an interface whose count becomes this pointer's; what was held is released.
  Interface** Receive() {
    *this = ComPointer();
    return &held_;
  }

 private:
  Interface* held_ = nullptr;
};

}  // namespace lorv::com
