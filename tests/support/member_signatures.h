#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstring>
#include <type_traits>
#include <vector>

// What members of a class are, for tests of interfaces that other programs were compiled against.
namespace lorv_test {

template <class Type, class Member>
constexpr bool Is(Member /*member*/) {
  return std::is_same_v<Type, Member>;
}

// An overloaded member: it is there with exactly that type, or this does not compile. Under the sanitizers no
// pointer to a member can be compared in a constant.
template <class Type>
constexpr bool Has(Type /*member*/) {
  return true;
}

// The place of a virtual operation in the table. Both systems keep it in the pointer to the member.
template <class Member>
std::ptrdiff_t SlotOf(Member member) {
  static_assert(sizeof member == 2 * sizeof(std::ptrdiff_t));
  std::array<std::ptrdiff_t, 2> parts = {};
  std::memcpy(parts.data(), &member, sizeof member);
  return parts[0];
}

inline void ExpectAscending(const std::vector<std::ptrdiff_t>& slots) {
  for (std::size_t i = 1; i < slots.size(); ++i) EXPECT_LT(slots[i - 1], slots[i]) << "place " << i;
  // A virtual operation's is one above a multiple of the size of a pointer; a plain function's is even.
  for (const std::ptrdiff_t slot : slots) EXPECT_EQ(slot % static_cast<std::ptrdiff_t>(sizeof(void*)), 1);
}

}  // namespace lorv_test
