#pragma once

#include <cstddef>
#include <cstdint>

#include "framework/native/native_types.h"

namespace lorv {

// The request record of the suite's stack report, as that module lays it out.
struct StackRequest {
  std::uint32_t size;  // of this record
  std::uint32_t unused_1;
  std::uint64_t context;  // none: the module walks the caller's own stack
  std::uint32_t kind;
  std::uint32_t flags;
  std::uint64_t unused_2[2];  // NOLINT(modernize-avoid-c-arrays): the module's layout
  const char* signature;      // texts in the narrow code page
  const char* source_file;
  std::int32_t source_line;
  std::uint32_t unused_3;
  std::uint64_t unused_4;
};
static_assert(sizeof(void*) == 8, "the record is that of 64-bit modules");
static_assert(sizeof(StackRequest) == 72);
static_assert(offsetof(StackRequest, context) == 8);
static_assert(offsetof(StackRequest, kind) == 16);
static_assert(offsetof(StackRequest, flags) == 20);
static_assert(offsetof(StackRequest, signature) == 40);
static_assert(offsetof(StackRequest, source_file) == 48);
static_assert(offsetof(StackRequest, source_line) == 56);

// Asks the suite's stack report for a report, if the process has loaded it; it is never loaded for this.
void AskStackReport(LPCTSTR signature, LPCTSTR file, int line);

}  // namespace lorv
