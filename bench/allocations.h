#pragma once

#include <cstdint>

namespace lorv::bench {

// How often this program, the libraries it has loaded included, has asked operator new for memory so far.
std::uint64_t Allocations();

}  // namespace lorv::bench
