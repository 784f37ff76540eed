#include "spreadsheet/servers/engine/engine_failure.h"

#include "framework/objects/exceptions.h"

namespace lorv::engine {

void Fail(const CString& text) {
  constexpr UINT kNoHelp = 0xFFFFFFFF;
  auto* const failure = new COleDispatchException(text, kNoHelp, 0);
  failure->m_scError = kFailureCode;
  throw failure;
}

}  // namespace lorv::engine
