#include "platform/models/carried_fault.h"

#include <exception>
#include <utility>

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
  if (waiting > 0 && kept == nullptr) kept = std::current_exception();
}

void CarriedFault::Rethrow() {
  if (kept != nullptr) std::rethrow_exception(std::exchange(kept, nullptr));
}

}  // namespace lorv
