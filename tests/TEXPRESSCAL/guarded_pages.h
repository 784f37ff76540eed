#pragma once

#include <cstddef>

#include "framework/native/native_types.h"

namespace lorv::test {

// Two pages of memory behind which none may be read.
class GuardedPages {
 public:
  static constexpr std::size_t kPage = 4096;
  static constexpr std::size_t kUnits = 2 * kPage / sizeof(TCHAR);

  GuardedPages();
  ~GuardedPages();
  GuardedPages(const GuardedPages&) = delete;
  GuardedPages& operator=(const GuardedPages&) = delete;

  TCHAR* Units() const { return units_; }

 private:
  static constexpr std::size_t kBytes = kUnits * sizeof(TCHAR);

  TCHAR* units_;
};

}  // namespace lorv::test
