#pragma once

#include <string_view>
#include <type_traits>
#include <utility>

#include "framework/objects/command_target.h"
#include "framework/values/dispatch_driver.h"

// Event sinks: the events of an automation control, each to a member function of the window that holds it.
//
//   class Sheet : public CDialog { ... void OnHeadClick(short column); DECLARE_EVENTSINK_MAP() };
//   BEGIN_EVENTSINK_MAP(Sheet, CDialog)
//     ON_EVENT(Sheet, IDC_TABLE, 10, OnHeadClick, VTS_I2)
//   END_EVENTSINK_MAP()
//
// A handler has any access. Its arguments are those of the event: short VTS_I2, long or int VTS_I4, float
// VTS_R4, double VTS_R8, BOOL VTS_BOOL, LPDISPATCH VTS_DISPATCH, const VARIANT& VTS_VARIANT, LPCTSTR
// VTS_BSTR; by pointer, and to be written through, short*, LONG*, float*, double*, VARIANT_BOOL*, BSTR* and
// VARIANT*; the compiler checks them against the types that the row names. An event whose arguments are of
// other kinds is not delivered, and its record says DISP_E_TYPEMISMATCH. A handler without a result has
// handled the event; one that gives a BOOL says by FALSE that it has not.

namespace lorv {

// Whether a handler's argument of that type takes what the byte says.
template <class Value>
constexpr bool TakesArgument(char type) {
  switch (type) {
    case VT_I2:
      return std::is_same_v<Value, short>;
    case VT_I4:
      return std::is_same_v<Value, int> || std::is_same_v<Value, long>;
    case VT_R4:
      return std::is_same_v<Value, float>;
    case VT_R8:
      return std::is_same_v<Value, double>;
    case VT_BSTR:
      return std::is_same_v<Value, LPCTSTR>;
    case VT_DISPATCH:
      return std::is_same_v<Value, LPDISPATCH>;
    case VT_BOOL:
      return std::is_same_v<Value, BOOL>;
    case VT_VARIANT:
      return std::is_same_v<Value, VARIANT>;
    case 0x40 | VT_I2:
      return std::is_same_v<Value, short*>;
    case 0x40 | VT_I4:
      return std::is_same_v<Value, LONG*>;
    case 0x40 | VT_R4:
      return std::is_same_v<Value, float*>;
    case 0x40 | VT_R8:
      return std::is_same_v<Value, double*>;
    case 0x40 | VT_BSTR:
      return std::is_same_v<Value, BSTR*>;
    case 0x40 | VT_BOOL:
      return std::is_same_v<Value, VARIANT_BOOL*>;
    case 0x40 | VT_VARIANT:
      return std::is_same_v<Value, VARIANT*>;
    default:
      return false;
  }
}

template <class Result, class Target, class... Values>
constexpr bool HandlerTakes(Result (Target::* /*member*/)(Values...), std::string_view types) {
  std::size_t at = 0;
  return types.size() == sizeof...(Values) &&
         (... && TakesArgument<std::remove_cvref_t<Values>>(types[at++]));
}

// What the record must hold for that type byte; a value by VTS_VARIANT is of any kind.
inline bool IsArgumentOf(char type, const VARIANTARG& value) {
  const auto kind = static_cast<unsigned char>(type);
  if (kind == VT_VARIANT) return true;
  if ((kind & 0x40U) == 0) return value.vt == kind;
  return value.vt == ((kind & ~0x40U) | VT_BYREF) && value.byref != nullptr;
}

template <class Value>
decltype(auto) TakenArgument(VARIANTARG& value) {
  if constexpr (std::is_same_v<Value, VARIANT>) {
    return static_cast<const VARIANT&>(value);
  } else if constexpr (std::is_same_v<Value, short>) {
    return short{value.iVal};
  } else if constexpr (std::is_same_v<Value, int> || std::is_same_v<Value, long>) {
    return static_cast<Value>(value.vt == VT_BOOL ? LONG{value.boolVal != VARIANT_FALSE} : value.lVal);
  } else if constexpr (std::is_same_v<Value, float>) {
    return float{value.fltVal};
  } else if constexpr (std::is_same_v<Value, double>) {
    return double{value.dblVal};
  } else if constexpr (std::is_same_v<Value, LPDISPATCH>) {
    return static_cast<LPDISPATCH>(value.pdispVal);
  } else if constexpr (std::is_same_v<Value, LPCTSTR>) {
    return static_cast<LPCTSTR>(value.bstrVal == nullptr ? _T("") : value.bstrVal);
  } else {
    return static_cast<Value>(value.byref);
  }
}

// Calls the handler with the arguments of the event, which stand the last one first. `self` may be gone
// afterwards.
template <class Self, class Result, class Target, class... Values, std::size_t... At>
BOOL CallHandler(Self& self, Result (Target::*member)(Values...), [[maybe_unused]] std::string_view types,
                 AFX_EVENT& event, std::index_sequence<At...> /*places*/) {
  constexpr std::size_t kCount = sizeof...(Values);
  const DISPPARAMS* const params = event.m_pDispParams;
  const std::size_t given = params == nullptr ? 0 : params->cArgs;
  bool fits = given == kCount;
  [[maybe_unused]] VARIANTARG* const values = params == nullptr ? nullptr : params->rgvarg;
  fits = fits && (... && IsArgumentOf(types[At], values[kCount - 1 - At]));
  if (!fits) {
    event.m_hResult = DISP_E_TYPEMISMATCH;
    return FALSE;
  }
  if constexpr (std::is_void_v<Result>) {
    (self.*member)(TakenArgument<std::remove_cvref_t<Values>>(values[kCount - 1 - At])...);
    return TRUE;
  } else {
    return (self.*member)(TakenArgument<std::remove_cvref_t<Values>>(values[kCount - 1 - At])...);
  }
}

template <class Self, class Result, class Target, class... Values>
BOOL CallHandler(Self& self, Result (Target::*member)(Values...), std::string_view types, AFX_EVENT& event) {
  return CallHandler(self, member, types, event, std::index_sequence_for<Values...>());
}

}  // namespace lorv

#define DECLARE_EVENTSINK_MAP()                         \
 protected:                                             \
  static const AFX_EVENTSINKMAP* GetThisEventSinkMap(); \
  const AFX_EVENTSINKMAP* GetEventSinkMap() const override;

// NOLINTBEGIN(bugprone-macro-parentheses)
#define BEGIN_EVENTSINK_MAP(class_name, base_name)              \
  const AFX_EVENTSINKMAP* class_name::GetEventSinkMap() const { \
    return class_name::GetThisEventSinkMap();                   \
  }                                                             \
  const AFX_EVENTSINKMAP* class_name::GetThisEventSinkMap() {   \
    using TheBaseClass = base_name;                             \
    static const AFX_EVENTSINKMAP_ENTRY entries[] = {
#define END_EVENTSINK_MAP()                                                                          \
  { 0, 0, 0, nullptr }                                                                               \
  }                                                                                                  \
  ;                                                                                                  \
  static const AFX_EVENTSINKMAP map = {[] { return TheBaseClass::GetThisEventSinkMap(); }, entries}; \
  return &map;                                                                                       \
  }

// The event of a control, or of all controls of a range of ids. `types` is a text of VTS_ bytes.
#define ON_EVENT(class_name, id, event_id, member, types) \
  ON_EVENT_RANGE(class_name, id, id, event_id, member, types)
#define ON_EVENT_RANGE(class_name, first, last, event_id, member, types)                                   \
  {static_cast<UINT>(first), static_cast<UINT>(last), event_id, [](CCmdTarget& target, AFX_EVENT& event) { \
     static_assert(lorv::HandlerTakes(&class_name::member, types), "the handler's arguments differ");      \
     return lorv::CallHandler(static_cast<class_name&>(target), &class_name::member, types, event);        \
   }},
// NOLINTEND(bugprone-macro-parentheses)
