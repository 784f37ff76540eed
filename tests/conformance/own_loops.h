#pragma once

#include <functional>
#include <utility>

#include "platform/models/carried_fault.h"

namespace lorv_test {

// Separates a script's own waiting from loops that came of it. While we wait for what we did ourselves, the
// next step is not due; but for a menu or a dialog that came of it and waits for the user in its own loop.
class OwnLoops {
 public:
  void Wait(const std::function<void()>& work) {
    struct Within {
      explicit Within(int& depth) : depth_(depth), outer_(std::exchange(depth, Next())) {}
      Within(const Within&) = delete;
      Within& operator=(const Within&) = delete;
      ~Within() { depth_ = outer_; }
      static int Next() { return lorv::CarriedFault::Depth() + 1; }
      int& depth_;
      int outer_;
    };
    const Within within(depth_);
    work();
  }
  // A loop runs now that is none of ours.
  bool InAnother() const { return lorv::CarriedFault::Depth() > depth_; }

 private:
  int depth_ = -1;  // that many calls deep we wait ourselves
};

}  // namespace lorv_test
