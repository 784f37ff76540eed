#include "platform/models/carried_fault.h"

#include <cstddef>
#include <exception>
#include <new>
#include <utility>

// Exceptions of handlers carried past a system that must not see them: kept at the window procedure, thrown
// again from the call of ours that had the system send the message. Calls nest, so each keeps what the one
// around it had.

namespace lorv {
namespace {

thread_local int waiting = 0;

// Never ended, with or without its thread: the C++ library for Windows may give the memory of a thread's
// variables back before it runs their destructors. Whoever waits has taken what was kept before its thread
// can end.
std::exception_ptr& Kept() noexcept {
  alignas(std::exception_ptr) thread_local std::byte place[sizeof(std::exception_ptr)];
  thread_local bool made = false;
  if (!std::exchange(made, true)) new (place) std::exception_ptr;
  return *std::launder(reinterpret_cast<std::exception_ptr*>(place));
}

}  // namespace

int CarriedFault::Depth() noexcept {
  return waiting;
}

std::exception_ptr CarriedFault::Begin() noexcept {
  ++waiting;
  return std::exchange(Kept(), nullptr);
}

void CarriedFault::End(std::exception_ptr outer) noexcept {
  --waiting;
  Kept() = std::move(outer);
}

void CarriedFault::Keep() noexcept {
  // The first one counts; where no CallOut waits, as in a host's own loop, it ends here.
  if (waiting > 0 && Kept() == nullptr) Kept() = std::current_exception();
}

void CarriedFault::Rethrow() {
  if (Kept() != nullptr) std::rethrow_exception(std::exchange(Kept(), nullptr));
}

}  // namespace lorv
