#include "image/decode/jpeg/jpeg_vectors.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

// Vectors of eight numbers of 16 bits, which every processor of 64 bits has. Products of 16 bits are summed
// in 32, so that nothing is lost as long as the numbers themselves fit; that is looked at before anything is
// written.

namespace lorv::jpeg {

#if defined(__SSE2__)

namespace {

using Numbers = __m128i;

// A column whose magnitudes do not add up to more stays within 16 bits when it is transformed: four
// times 1.39, the largest of its factors.
constexpr short kMostOfAColumn = 5900;

Numbers All(short value) {
  return _mm_set1_epi16(value);
}

// Two factors by turns, for pairs of numbers.
Numbers Pair(int first, int second) {
  return _mm_set1_epi32(
      static_cast<int>(static_cast<unsigned>(second) << 16 | (static_cast<unsigned>(first) & 0xFFFF)));
}

bool Scale(const Block& block, const Quantities& quantities, Numbers* rows) {
  Numbers sums = _mm_setzero_si128();
  Numbers wide = _mm_setzero_si128();
  for (int y = 0; y < kBlockSize; ++y) {
    const auto* const at = reinterpret_cast<const Numbers*>(block.data() + y * kBlockSize);
    const Numbers numbers = _mm_loadu_si128(at);
    const Numbers factors =
        _mm_loadu_si128(reinterpret_cast<const Numbers*>(quantities.data() + y * kBlockSize));
    const Numbers low = _mm_mullo_epi16(numbers, factors);
    const Numbers high = _mm_mulhi_epi16(numbers, factors);
    // The upper half of a product that fits is nothing but its sign. Factors beyond 32767 would count as
    // negative.
    wide = _mm_or_si128(wide, _mm_xor_si128(high, _mm_srai_epi16(low, 15)));
    wide = _mm_or_si128(wide, _mm_srai_epi16(factors, 15));
    sums = _mm_adds_epi16(sums, _mm_max_epi16(low, _mm_subs_epi16(_mm_setzero_si128(), low)));
    rows[y] = low;
  }
  wide = _mm_or_si128(wide, _mm_cmpgt_epi16(sums, All(kMostOfAColumn)));
  return _mm_movemask_epi8(_mm_cmpeq_epi16(wide, _mm_setzero_si128())) == 0xFFFF;
}

struct Sums {
  Numbers low, high;  // four of 32 bits each
};

Sums operator+(Sums a, Sums b) {
  return {_mm_add_epi32(a.low, b.low), _mm_add_epi32(a.high, b.high)};
}
Sums operator-(Sums a, Sums b) {
  return {_mm_sub_epi32(a.low, b.low), _mm_sub_epi32(a.high, b.high)};
}

// Two rows, number beside number.
struct Pairs {
  Pairs(Numbers first, Numbers second)
      : low(_mm_unpacklo_epi16(first, second)), high(_mm_unpackhi_epi16(first, second)) {}
  Sums Times(int first, int second) const {
    const Numbers factors = Pair(first, second);
    return {_mm_madd_epi16(low, factors), _mm_madd_epi16(high, factors)};
  }
  Numbers low, high;
};

template <int shift>
Numbers Rounded(Sums sums) {
  const Numbers half = _mm_set1_epi32(1 << (shift - 1));
  return _mm_packs_epi32(_mm_srai_epi32(_mm_add_epi32(sums.low, half), shift),
                         _mm_srai_epi32(_mm_add_epi32(sums.high, half), shift));
}

// Each column of eight. The factors are those of the plain transform, multiplied out: sums of products only,
// none of which leaves 32 bits for any numbers of 16.
template <int shift>
void TransformColumns(Numbers* rows) {
  const Pairs ends(rows[0], rows[4]);
  const Pairs evens(rows[2], rows[6]);
  const Pairs lower(rows[1], rows[3]);
  const Pairs upper(rows[5], rows[7]);
  const Sums sum = ends.Times(8192, 8192);
  const Sums difference = ends.Times(8192, -8192);
  const Sums high = evens.Times(10703, 4433);
  const Sums low = evens.Times(4433, -10704);
  const auto put = [rows](int at, Sums even, Sums odd) {
    rows[at] = Rounded<shift>(even + odd);
    rows[7 - at] = Rounded<shift>(even - odd);
  };
  put(0, sum + high, lower.Times(11363, 9633) + upper.Times(6437, 2260));
  put(1, difference + low, lower.Times(9633, -2259) + upper.Times(-11362, -6436));
  put(2, difference - low, lower.Times(6437, -11362) + upper.Times(2261, 9633));
  put(3, sum - high, lower.Times(2260, -6436) + upper.Times(9633, -11363));
}

// Columns become rows.
void Transpose(Numbers* rows) {
  Numbers pairs[8];
  Numbers fours[8];
  for (int i = 0; i < 4; ++i) {
    pairs[i] = _mm_unpacklo_epi16(rows[i], rows[i + 4]);
    pairs[i + 4] = _mm_unpackhi_epi16(rows[i], rows[i + 4]);
  }
  for (int i = 0; i < 8; i += 4) {
    for (int j = 0; j < 2; ++j) {
      fours[i + j] = _mm_unpacklo_epi16(pairs[i + j], pairs[i + j + 2]);
      fours[i + j + 2] = _mm_unpackhi_epi16(pairs[i + j], pairs[i + j + 2]);
    }
  }
  for (int i = 0; i < 8; i += 2) {
    rows[i] = _mm_unpacklo_epi16(fours[i], fours[i + 1]);
    rows[i + 1] = _mm_unpackhi_epi16(fours[i], fours[i + 1]);
  }
}

// Limited to the range of samples.
void Store(const Numbers* rows, unsigned char* out, std::size_t stride) {
  for (int y = 0; y < kBlockSize; y += 2) {
    const Numbers two =
        _mm_packus_epi16(_mm_add_epi16(rows[y], All(128)), _mm_add_epi16(rows[y + 1], All(128)));
    _mm_storel_epi64(reinterpret_cast<Numbers*>(out), two);
    _mm_storel_epi64(reinterpret_cast<Numbers*>(out + stride), _mm_unpackhi_epi64(two, two));
    out += 2 * stride;
  }
}

Numbers Samples(const unsigned char* at) {
  return _mm_unpacklo_epi8(_mm_loadl_epi64(reinterpret_cast<const Numbers*>(at)), _mm_setzero_si128());
}

// A number times a factor of 16 bits behind the point, rounded.
Numbers Part(Numbers number, short factor) {
  return _mm_srai_epi16(_mm_add_epi16(_mm_mulhi_epi16(_mm_add_epi16(number, number), All(factor)), All(1)),
                        1);
}

void PutEight(Numbers brightness, Numbers blue, Numbers red, std::uint32_t* to) {
  // Factors beyond one half as what is missing to whole ones: 1.402 is 1 and 0.402, 1.772 is 2 less 0.228,
  // and 0.714 is 1 less 0.286.
  const Numbers reds = _mm_add_epi16(_mm_add_epi16(brightness, red), Part(red, 26345));
  const Numbers blues =
      _mm_add_epi16(_mm_add_epi16(brightness, _mm_add_epi16(blue, blue)), Part(blue, -14942));
  const Numbers shares = Rounded<16>(Pairs(blue, red).Times(-22554, 18734));
  const Numbers greens = _mm_add_epi16(_mm_sub_epi16(brightness, red), shares);
  const Numbers red_blue = _mm_packus_epi16(blues, reds);
  const Numbers green_alpha = _mm_packus_epi16(greens, All(255));
  const Numbers low = _mm_unpacklo_epi8(red_blue, green_alpha);   // blue and green by turns
  const Numbers high = _mm_unpackhi_epi8(red_blue, green_alpha);  // red and alpha
  _mm_storeu_si128(reinterpret_cast<Numbers*>(to), _mm_unpacklo_epi16(low, high));
  _mm_storeu_si128(reinterpret_cast<Numbers*>(to + 4), _mm_unpackhi_epi16(low, high));
}

}  // namespace

bool TransformByVectors(const Block& block, const Quantities& quantities, unsigned char* out,
                        std::size_t stride) {
  Numbers rows[kBlockSize];
  if (!Scale(block, quantities, rows)) return false;
  TransformColumns<kColumnShift>(rows);
  Transpose(rows);
  TransformColumns<kRowShift>(rows);
  Transpose(rows);
  Store(rows, out, stride);
  return true;
}

int PutBrightnessByVectors(const unsigned char* brightness, const unsigned char* blueness,
                           const unsigned char* redness, std::uint32_t* to, int count) {
  int x = 0;
  for (; x + 8 <= count; x += 8) {
    PutEight(Samples(brightness + x), _mm_sub_epi16(Samples(blueness + x), All(128)),
             _mm_sub_epi16(Samples(redness + x), All(128)), to + x);
  }
  return x;
}

#else

bool TransformByVectors(const Block&, const Quantities&, unsigned char*, std::size_t) {
  return false;
}

int PutBrightnessByVectors(const unsigned char*, const unsigned char*, const unsigned char*, std::uint32_t*,
                           int) {
  return 0;
}

#endif

}  // namespace lorv::jpeg
