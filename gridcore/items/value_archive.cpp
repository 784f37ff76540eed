#include "gridcore/items/value_archive.h"

#include <cstring>

// Values of cells in an archive. Numbers go by their bits, so that they come back exactly; what points to
// something (arrays, objects) is written as empty rather than as an address.

namespace lorv {

void WriteValue(CArchive& archive, const VARIANT& value) {
  if (value.vt == VT_BSTR) {
    // A text that is missing and an empty one come back as what they were.
    archive << static_cast<WORD>(value.vt) << (value.bstrVal != nullptr);
    if (value.bstrVal != nullptr)
      archive << CString(value.bstrVal, static_cast<int>(SysStringLen(value.bstrVal)));
    return;
  }
  const bool plain = IsPlainType(value.vt) && value.vt != VT_EMPTY;
  archive << (plain ? static_cast<WORD>(value.vt) : static_cast<WORD>(VT_EMPTY));
  if (!plain) return;
  std::uint64_t bits = 0;
  std::memcpy(&bits, &value.llVal, sizeof bits);
  archive << bits;
}

_variant_t ReadValue(CArchive& archive) {
  WORD tag = VT_EMPTY;
  archive >> tag;
  if (tag == VT_BSTR) {
    bool there = false;
    archive >> there;
    CString text;
    if (there) archive >> text;
    return there ? _variant_t(text) : _variant_t(static_cast<LPCTSTR>(nullptr));
  }
  // A damaged archive must not make up a pointer.
  if (!IsPlainType(tag)) AfxThrowArchiveException(CArchiveException::badClass);
  _variant_t value;
  if (tag == VT_EMPTY) return value;
  std::uint64_t bits = 0;
  archive >> bits;
  std::memcpy(&value.llVal, &bits, sizeof bits);
  value.vt = tag;
  return value;
}

}  // namespace lorv
