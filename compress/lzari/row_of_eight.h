#pragma once

#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

// Eight 16-bit counts at a time, by vector instructions where the processor is known to have them.
namespace lorv::lzari {

#if defined(__SSE2__)

using RowOfEight = __m128i;

inline RowOfEight LoadRow(const std::int16_t* from) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
}

inline void StoreRow(std::int16_t* to, RowOfEight row) {
  _mm_storeu_si128(reinterpret_cast<__m128i*>(to), row);
}

inline RowOfEight FillRow(int value) {
  return _mm_set1_epi16(static_cast<std::int16_t>(value));
}

// All bits of a place where `a` is greater than `b`, none elsewhere.
inline RowOfEight Greater(RowOfEight a, RowOfEight b) {
  return _mm_cmpgt_epi16(a, b);
}

inline RowOfEight Subtract(RowOfEight a, RowOfEight b) {
  return _mm_sub_epi16(a, b);
}

// The bits of 16 places, the first one lowest, from two answers of `Greater`.
inline std::uint32_t Bits(RowOfEight first, RowOfEight second) {
  return static_cast<std::uint32_t>(_mm_movemask_epi8(_mm_packs_epi16(first, second)));
}

#else

struct RowOfEight {
  std::int16_t count[8];
};

inline RowOfEight LoadRow(const std::int16_t* from) {
  RowOfEight row;
  std::memcpy(&row, from, sizeof row);
  return row;
}

inline void StoreRow(std::int16_t* to, RowOfEight row) {
  std::memcpy(to, &row, sizeof row);
}

inline RowOfEight FillRow(int value) {
  RowOfEight row;
  for (std::int16_t& count : row.count) count = static_cast<std::int16_t>(value);
  return row;
}

inline RowOfEight Greater(RowOfEight a, const RowOfEight& b) {
  for (int i = 0; i < 8; ++i) a.count[i] = static_cast<std::int16_t>(a.count[i] > b.count[i] ? -1 : 0);
  return a;
}

inline RowOfEight Subtract(RowOfEight a, const RowOfEight& b) {
  for (int i = 0; i < 8; ++i) a.count[i] = static_cast<std::int16_t>(a.count[i] - b.count[i]);
  return a;
}

inline std::uint32_t Bits(const RowOfEight& first, const RowOfEight& second) {
  std::uint32_t bits = 0;
  for (int i = 0; i < 8; ++i) {
    bits |= (first.count[i] != 0 ? 1U : 0U) << i | (second.count[i] != 0 ? 1U : 0U) << (8 + i);
  }
  return bits;
}

#endif

}  // namespace lorv::lzari
