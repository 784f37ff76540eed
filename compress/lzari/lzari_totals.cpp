#include "compress/lzari/lzari_totals.h"

#include <cstdio>

// Progress and sums of an operation: given to the caller's handler, or printed as the console programs of the
// suite print them. The texts and widths are part of what callers see.

namespace lorv::lzari {
namespace {

constexpr std::uint32_t kPrintStep = 1024;

}  // namespace

void Totals::PrintPacked() {
  print_count += kPrintStep;
  if (handler) return handler(text_size);
  std::printf("%12ld\r", static_cast<long>(text_size));
}

void Totals::PrintUnpacked(std::uint32_t count) {
  print_count += kPrintStep;
  if (handler) return handler(count);
  std::printf("%12lu\r", static_cast<unsigned long>(count));
}

void Totals::PrintPackedSum() const {
  if (handler) return;
  std::printf("In : %lu bytes\n", static_cast<unsigned long>(text_size));
  std::printf("Out: %lu bytes\n", static_cast<unsigned long>(code_size));
  // text_size is not 0 here: an empty text ends before its sums.
  std::printf("Out/In: %.3f\n", static_cast<double>(code_size) / text_size);
}

void Totals::PrintUnpackedSum(std::uint32_t count) const {
  if (handler) return;
  std::printf("%12lu\n", static_cast<unsigned long>(count));
}

}  // namespace lorv::lzari
