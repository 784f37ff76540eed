#pragma once

#include <chrono>
#include <cstdint>

#include "tools/lorv/command/verb.h"

namespace lorv::tool {

// A bar on the terminal for work that takes a while; nothing at all where there is no terminal or no size is
// known. It appears after half a second and is gone at the end, so that quick work leaves no trace.
class ProgressBar {
 public:
  ProgressBar(Console& console, std::uint64_t size);
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;
  ~ProgressBar();

  // Cheap enough for every row.
  void Show(std::uint64_t done);
  void Advance(std::uint64_t count) { Show(done_ + count); }

 private:
  using Clock = std::chrono::steady_clock;

  Console& console_;
  std::uint64_t size_;
  Clock::time_point next_;
  std::uint64_t done_ = 0;
  bool drawn_ = false;
};

}  // namespace lorv::tool
