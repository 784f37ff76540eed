#pragma once

#include <cstdint>

namespace lorv::test {

// What this program holds by operator new: each block carries its size in front of it. Any thread.
class CountedMemory {
 public:
  // From now on; of one object at a time.
  CountedMemory();
  // The most bytes held at once since then, beyond those held at its beginning.
  std::int64_t Most() const;

 private:
  std::int64_t before_;
};

}  // namespace lorv::test
