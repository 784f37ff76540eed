#include "framework/values/variant_text.h"

#include "framework/values/ole_date.h"

// The text of any value for tables and failure reports: like a conversion, but nothing, null and failure
// codes are the empty text, and the kinds that cells mostly hold take no detour.

CString VariantToText(const VARIANT& value) {
  switch (value.vt) {
    case VT_EMPTY:
    case VT_NULL:
    case VT_ERROR:
      return {};
    case VT_DATE:
      return lorv::OleDateToText(value.date);
    case VT_R8:
      return lorv::RealValueToText(value.dblVal);
    case VT_BSTR:
      // The text itself, without the copy that a conversion makes.
      return CString(lorv::TextView(value.bstrVal, SysStringLen(value.bstrVal)));
    default:
      return CString(_bstr_t(_variant_t(value)).View());
  }
}
