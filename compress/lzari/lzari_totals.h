#pragma once

#include <cstdint>
#include <functional>

namespace lorv::lzari {

// What one operation has done so far, and what it prints on standard output about it.
struct Totals {
  std::uint32_t text_size = 0;                 // plain bytes
  std::uint32_t code_size = 0;                 // bytes of the stream
  std::uint32_t print_count = 0;               // next progress mark
  std::function<void(std::uint32_t)> handler;  // called with the plain bytes done; nothing is printed then

  void ShowPacked() {
    if (text_size > print_count) [[unlikely]]
      PrintPacked();
  }
  void ShowUnpacked(std::uint32_t count) {
    if (count > print_count) [[unlikely]]
      PrintUnpacked(count);
  }
  void PrintPackedSum() const;
  void PrintUnpackedSum(std::uint32_t count) const;

 private:
  void PrintPacked();
  void PrintUnpacked(std::uint32_t count);
};

// Thrown by an operation that cannot go on; the codec turns it into the int 1 that callers catch.
struct Failure {
  const char* message;
};

[[noreturn]] inline void Error(const char* message) {
  throw Failure{message};
}

inline constexpr const char* kReadError = "Read Error";
inline constexpr const char* kWriteError = "Write Error";

}  // namespace lorv::lzari
