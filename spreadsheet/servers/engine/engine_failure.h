#pragma once

#include "framework/text/cstring.h"

namespace lorv::engine {

// What an operation of a workbook that fails says, as the programs do.
constexpr HRESULT kFailureCode = static_cast<HRESULT>(0x800A03EC);

// Raises COleDispatchException with the text for the user.
[[noreturn]] void Fail(const CString& text);

}  // namespace lorv::engine
