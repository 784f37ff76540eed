#include "framework/values/variant.h"

#include "framework/values/variant_convert.h"

namespace lorv {

HRESULT ChangeSystemType(VARIANT& target, const VARIANT& source, VARTYPE type) {
  // The neutral language keeps the user's decimal sign out of it.
  return ::VariantChangeTypeEx(&target, const_cast<VARIANT*>(&source), LOCALE_INVARIANT, 0, type);
}

}  // namespace lorv
