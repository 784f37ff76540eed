#include "tools/lorv-desk/events/event_text.h"

#include <algorithm>
#include <array>

#include "framework/values/variant_text.h"
#include "grid/events/event_table.h"

// One event as one line, for programmers who learn the events of a table by watching them. The names are
// those that the suite's dialogs give to their handlers.

namespace lorv::tool {
namespace {

CString NumberText(long number) {
  CString text;
  text.Format(_T("%d"), static_cast<int>(number));
  return text;
}

// What a pointer of the event leads to; the record says of which type it is.
CString AnswerText(const VARIANTARG& argument) {
  if (argument.byref == nullptr) return {};
  switch (argument.vt & ~VT_BYREF) {
    case VT_I2:
      return NumberText(*argument.piVal);
    case VT_I4:
      return NumberText(static_cast<long>(*argument.plVal));
    case VT_BSTR:
      return CString(TextOfBstr(*argument.pbstrVal));
    case VT_VARIANT:
      return VariantToText(*argument.pvarVal);
    default:
      return _T("...");
  }
}

CString ArgumentText(const VARIANTARG& argument) {
  if ((argument.vt & VT_BYREF) != 0) return _T("[") + AnswerText(argument) + _T("]");
  // A style that the handler may fill: it is no value.
  if (argument.vt == VT_DISPATCH) return _T("object");
  if (argument.vt == VT_BOOL) return argument.boolVal != VARIANT_FALSE ? _T("true") : _T("false");
  return VariantToText(argument);
}

}  // namespace

CString EventText(const AFX_EVENT& event) {
  const EventKind* const kind = FindEvent(event.m_dispid);
  CString text = kind == nullptr ? NumberText(event.m_dispid) : CString::FromUtf8(std::string(kind->name));
  text += _T("(");
  const UINT count = event.m_pDispParams == nullptr ? 0 : event.m_pDispParams->cArgs;
  // The last one stands first.
  for (UINT i = count; i > 0; --i) {
    if (i < count) text += _T(", ");
    text += ArgumentText(event.m_pDispParams->rgvarg[i - 1]);
  }
  return text + _T(")");
}

bool IsNoise(DISPID event) {
  // The mouse moves; rows and columns are scrolled or sized; cells and rows are asked for their styles and
  // tips; the table is painted.
  constexpr auto kNoise = std::to_array<DISPID>({-606, 13, 28, 29, 30, 36, 38, 49, 51, 55});
  return std::find(kNoise.begin(), kNoise.end(), event) != kNoise.end();
}

}  // namespace lorv::tool
