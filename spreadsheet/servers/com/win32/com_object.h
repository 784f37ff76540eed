#pragma once

#include "spreadsheet/automation/auto_object.h"

namespace lorv::com {

// An object of a running program, counted. Its calls go to the object's own dispatch; failures come as the
// exceptions of auto_object.h.
class ComObject : public AutoObject {
 public:
  // Takes a count of its own.
  explicit ComObject(IDispatch* dispatch) : dispatch_(dispatch) { dispatch_->AddRef(); }
  ~ComObject() override { dispatch_->Release(); }

  AutoValue Invoke(DISPID dispid, Form form, std::span<const AutoValue> args) override;
  void KeepAlive() override { dispatch_->AddRef(); }

  IDispatch* Dispatch() const { return dispatch_; }

 private:
  IDispatch* dispatch_;
};

// Null for null.
AutoRef Wrapped(IDispatch* dispatch);

}  // namespace lorv::com
