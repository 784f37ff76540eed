#include <atomic>

#include "framework/objects/exceptions.h"
#include "framework/ports/desktop_port.h"

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
