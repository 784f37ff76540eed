#include "platform/models/carried_fault.h"

#include <exception>
#include <utility>

// Exceptions of handlers carried past a system that must not see them: kept at the window procedure, thrown
// again from the call of ours that had the system send the message. Calls nest, so each keeps what the one
// around it had.

namespace lorv {
namespace {

thread_local int waiting = 0;
thread_local std::exception_ptr kept;

}  // namespace

std::exception_ptr CarriedFault::Begin() noexcept {
  ++waiting;
  return std::exchange(kept, nullptr);
}

void CarriedFault::End(std::exception_ptr outer) noexcept {
  --waiting;
  kept = std::move(outer);
}

void CarriedFault::Keep() noexcept {
  // The first one counts; where nobody waits, as in a host's own loop, it ends here.
  if (waiting > 0 && kept == nullptr) kept = std::current_exception();
}

void CarriedFault::Rethrow() {
  if (kept != nullptr) std::rethrow_exception(std::exchange(kept, nullptr));
}

}  // namespace lorv
