#include <algorithm>

#include "image/decode/jpeg/jpeg_vectors.h"

// The inverse cosine transform in whole numbers of 13 bits behind the point, by columns and then by rows.
// Vectors do it for nearly all blocks; here it stands for numbers of any size.
namespace lorv::jpeg {
namespace {

using Number = std::int64_t;

// One line of eight, `step` apart, each result shifted right with rounding.
void TransformLine(Number* line, int step, int shift) {
  const auto in = [&](int i) -> Number& { return line[i * step]; };
  // Sines and cosines times 2 to the 13th, shared so that a line takes twelve products instead of 64.
  const Number even = (in(2) + in(6)) * 4433;
  const Number even_low = even - in(6) * 15137;
  const Number even_high = even + in(2) * 6270;
  const Number sum = (in(0) + in(4)) * (1 << kPointBits);
  const Number difference = (in(0) - in(4)) * (1 << kPointBits);
  const Number evens[] = {sum + even_high, difference + even_low, difference - even_low, sum - even_high};

  const Number all = (in(7) + in(3) + in(5) + in(1)) * 9633;
  const Number z1 = (in(7) + in(1)) * -7373;
  const Number z2 = (in(5) + in(3)) * -20995;
  const Number z3 = (in(7) + in(3)) * -16069 + all;
  const Number z4 = (in(5) + in(1)) * -3196 + all;
  const Number odds[] = {in(1) * 12299 + z1 + z4, in(3) * 25172 + z2 + z3, in(5) * 16819 + z2 + z4,
                         in(7) * 2446 + z1 + z3};
  const Number half = Number{1} << (shift - 1);
  for (int i = 0; i < 4; ++i) {
    in(i) = (evens[i] + odds[i] + half) >> shift;
    in(7 - i) = (evens[i] - odds[i] + half) >> shift;
  }
}

unsigned char Sample(Number number) {
  // Coefficients are rounded by the writer, so samples come out a little beyond their range.
  return static_cast<unsigned char>(std::clamp<Number>(number + 128, 0, 255));
}

}  // namespace

void TransformPlainly(const Block& block, const Quantities& quantities, unsigned char* out,
                      std::size_t stride) {
  std::array<Number, kBlockArea> numbers;
  for (std::size_t i = 0; i < kBlockArea; ++i) numbers[i] = Number{block[i]} * quantities[i];
  for (int x = 0; x < kBlockSize; ++x) TransformLine(numbers.data() + x, kBlockSize, kColumnShift);
  for (int y = 0; y < kBlockSize; ++y) {
    Number* const row = numbers.data() + y * kBlockSize;
    TransformLine(row, 1, kRowShift);
    for (int x = 0; x < kBlockSize; ++x) out[x] = Sample(row[x]);
    out += stride;
  }
}

void TransformBlock(const Block& block, const Quantities& quantities, unsigned char* out,
                    std::size_t stride) {
  if (!TransformByVectors(block, quantities, out, stride)) TransformPlainly(block, quantities, out, stride);
}

void TransformLevel(int level, const Quantities& quantities, unsigned char* out, std::size_t stride) {
  // The scale of the whole transform is an eighth.
  const unsigned char sample = Sample((Number{level} * quantities[0] + 4) >> 3);
  for (int y = 0; y < kBlockSize; ++y, out += stride) std::fill_n(out, kBlockSize, sample);
}

}  // namespace lorv::jpeg
