#pragma once

#include "framework/objects/archive.h"
#include "framework/values/variant.h"

namespace lorv {

// Values of cells in an archive.
//
// Form: the tag in two bytes; then the value's eight bytes for numbers, dates, booleans, money and errors, or
//   the text, with a byte before it that is 0 for a text that is null. Other kinds (objects, arrays,
//   decimals) are stored as an empty value.
// Edges: a tag of another kind in the stream raises CArchiveException (badClass) by pointer.
// State at failure: the value is as it was. One thread at a time.
//
//   WriteValue(archive, _variant_t(_T("C30")))  and ReadValue(archive)  give the text again
COMM_LORV_API void WriteValue(CArchive& archive, const VARIANT& value);
COMM_LORV_API _variant_t ReadValue(CArchive& archive);

}  // namespace lorv
