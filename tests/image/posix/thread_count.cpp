#include "tests/image/thread_count.h"

#include <filesystem>

namespace lorv::test {

std::size_t CountThreads() {
  const std::filesystem::directory_iterator tasks("/proc/self/task");
  return static_cast<std::size_t>(std::distance(begin(tasks), end(tasks)));
}

}  // namespace lorv::test
