#pragma once

#include "framework/objects/exceptions.h"

namespace lorv::test {

// True if the action raises the framework's failure for a bad argument, which is freed here.
template <class Action>
bool RaisesInvalidArg(Action action) {
  try {
    action();
  } catch (CInvalidArgException* e) {
    e->Delete();
    return true;
  }
  return false;
}

}  // namespace lorv::test
