#pragma once

#include <memory>
#include <span>
#include <utility>

#include "framework/native/export.h"
#include "framework/values/variant.h"

// Automation as the exchange uses it, on every system: objects that are asked by number.
namespace lorv {

class AutoObject;
// Counted; the object is released with the last reference.
using AutoRef = std::shared_ptr<AutoObject>;

// An argument or an answer: a tagged value, or an object (the value is then empty).
struct AutoValue {
  AutoValue() = default;
  AutoValue(_variant_t value) : data(std::move(value)) {}   // NOLINT(google-explicit-constructor)
  AutoValue(AutoRef target) : object(std::move(target)) {}  // NOLINT(google-explicit-constructor)

  // An optional argument that is not given.
  static AutoValue Missing() { return AutoValue(_variant_t(long{DISP_E_PARAMNOTFOUND}, VT_ERROR)); }
  bool IsMissing() const { return data.vt == VT_ERROR && data.scode == DISP_E_PARAMNOTFOUND; }

  _variant_t data;
  AutoRef object;
};

enum class Form { kGet, kPut, kCall };

// An object of a spreadsheet program.
//
// Failures are raised as COleException, or as COleDispatchException where the program describes them; both
//   by pointer, so that who does not pass them on deletes them.
// One thread: the one that made it.
class COMM_LORV_API AutoObject {
 public:
  AutoObject() = default;
  AutoObject(const AutoObject&) = delete;
  AutoObject& operator=(const AutoObject&) = delete;
  virtual ~AutoObject() = default;

  // Arguments stand in their order; of a put the new value is the last one.
  virtual AutoValue Invoke(DISPID dispid, Form form, std::span<const AutoValue> args) = 0;
  // One reference is never given back: the program lives on when its last user here is gone.
  virtual void KeepAlive() = 0;
};

}  // namespace lorv
