#include "framework/values/variant.h"

#include "framework/values/variant_convert.h"

// The conversions that only the system knows, of objects and arrays. All others are those of
// variant_convert.cpp, on Windows too, so that both systems print alike.

namespace lorv {

HRESULT ChangeSystemType(VARIANT& target, const VARIANT& source, VARTYPE type) {
  // The neutral language keeps the user's decimal sign out of it.
  return ::VariantChangeTypeEx(&target, const_cast<VARIANT*>(&source), LOCALE_INVARIANT, 0, type);
}

}  // namespace lorv
