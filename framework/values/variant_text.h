#pragma once

#include "framework/values/variant.h"

// The one rule that turns a cell's value into text, for tables, grids and the spreadsheet exchange.
//
// A date gives "%Y-%m-%d"; an empty value, null and an error the empty text; all others their conversion to a
// text (framework/values/variant_convert.h).
// Result: a value that has no text (an object) raises `_com_error`.
// No shared state: any thread.
//
//   VariantToText(_variant_t(0.1))  gives _T("0.1")
COMM_LORV_API CString VariantToText(const VARIANT& value);
