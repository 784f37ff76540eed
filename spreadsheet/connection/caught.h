#pragma once

#include <utility>

#include "framework/objects/exceptions.h"

namespace lorv {

// Runs a body and swallows whatever leaves it; a framework exception is deleted.
// Result: whether the body ran to its end.
template <class Body>
bool RunsThrough(Body&& body) {
  try {
    std::forward<Body>(body)();
    return true;
  } catch (CException* failure) {
    failure->Delete();
  } catch (...) {  // NOLINT(bugprone-empty-catch): the caller goes on by the result
  }
  return false;
}

}  // namespace lorv
