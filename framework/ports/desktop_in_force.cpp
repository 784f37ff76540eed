#include <atomic>

#include "framework/objects/exceptions.h"
#include "framework/ports/desktop_port.h"

// Which desktop window classes talk to: that of the innermost scope, else the one chosen for the
// process. Scopes are for tests and for pictures of dialogs; they nest, and each puts back what it found.

namespace lorv {
namespace {

std::atomic<Desktop*> in_force{nullptr};

}  // namespace

Desktop& DesktopInForce() {
  Desktop* const desktop = in_force.load(std::memory_order_acquire);
  return desktop != nullptr ? *desktop : ChosenDesktop();
}

Desktop* DesktopIfAny() {
  try {
    return &DesktopInForce();
    // Callers of this can do without windows: a library that reports a failure must not fail for lack of a
    // screen.
  } catch (CResourceException* none) {
    none->Delete();
    return nullptr;
  }
}

ScopedDesktop::ScopedDesktop(Desktop& desktop) : before_(in_force.exchange(&desktop)) {}

ScopedDesktop::~ScopedDesktop() {
  in_force.store(before_);
}

}  // namespace lorv
