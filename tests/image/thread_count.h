#pragma once

#include <cstddef>

namespace lorv::test {

// The threads of this program, as the system counts them.
std::size_t CountThreads();

}  // namespace lorv::test
