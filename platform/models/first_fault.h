#pragma once

#include <exception>
#include <utility>

namespace lorv {

// Work that must be done to its end although handlers in the middle of it throw: each part is run, the first
// exception is kept and thrown again when all is done. Later ones are lost.
//
//   FirstFault fault;  fault.Run(first_part);  fault.Run(second_part);  fault.Rethrow();
class FirstFault {
 public:
  template <class Part>
  void Run(Part part) noexcept {
    try {
      part();
    } catch (...) {
      if (kept_ == nullptr) kept_ = std::current_exception();
    }
  }
  void Rethrow() {
    if (kept_ != nullptr) std::rethrow_exception(std::exchange(kept_, nullptr));
  }

 private:
  std::exception_ptr kept_;
};

}  // namespace lorv
