#include "spreadsheet/servers/engine/engine_failure.h"

#include "framework/objects/exceptions.h"

// The one way in which an operation of the engine fails: as a program's failure with a description, which the
// exchange shows to its user, and with the code that programs give for nearly everything.

namespace lorv::engine {

void Fail(const CString& text) {
  // There are no help texts to point at.
  constexpr UINT kNoHelp = 0xFFFFFFFF;
  auto* const failure = new COleDispatchException(text, kNoHelp, 0);
  failure->m_scError = kFailureCode;
  throw failure;
}

}  // namespace lorv::engine
