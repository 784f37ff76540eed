#include "platform/ports/platform.h"

#include <atomic>

// The ports in force: the system's own, or those of the innermost scope. A scope names only the ports that it
// replaces and takes the others over from outside, so tests may nest them.

namespace lorv {
namespace {

const Platform& NativePorts() {
  static const Platform ports = {&SuiteCodePage(),  &NativeFiles(),   &NativeClock(), &NativeProcess(),
                                 &NativeSettings(), &NativeDialogs(), &NativeSuite(), &NativeShell(),
                                 &NativeMail(),     &NativePrinting()};
  return ports;
}

std::atomic<const Platform*> in_force{nullptr};

template <class Port>
void Keep(Port*& port, Port* before) {
  if (port == nullptr) port = before;
}

}  // namespace

const Platform& PortsInForce() {
  const Platform* const ports = in_force.load(std::memory_order_acquire);
  return ports != nullptr ? *ports : NativePorts();
}

ScopedPlatform::ScopedPlatform(const Platform& ports) : ports_(ports), before_(in_force.load()) {
  const Platform& before = PortsInForce();
  Keep(ports_.code_page, before.code_page);
  Keep(ports_.files, before.files);
  Keep(ports_.clock, before.clock);
  Keep(ports_.process, before.process);
  Keep(ports_.settings, before.settings);
  Keep(ports_.dialogs, before.dialogs);
  Keep(ports_.suite, before.suite);
  Keep(ports_.shell, before.shell);
  Keep(ports_.mail, before.mail);
  Keep(ports_.printing, before.printing);
  in_force.store(&ports_);
}

ScopedPlatform::~ScopedPlatform() {
  in_force.store(before_);
}

}  // namespace lorv
