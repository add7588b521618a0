// Four floats that are processed at once: the channels of a pixel (blue, green, red, alpha as in memory, premultiplied,
// 0...1), or four neighbours in a row.
#pragma once

#include <cstdint>
#include <cstring>
#ifdef __SSE2__
#include <emmintrin.h>
#endif

#include "tessaluna/platform/foundation/languageVersion.h"

namespace tessaluna::backend::raster {

using Float4 = float __attribute__((vector_size(16)));
using Int4 = int __attribute__((vector_size(16)));
using Uint4 = std::uint32_t __attribute__((vector_size(16)));
using Double2 = double __attribute__((vector_size(16)));
using Short8 = std::uint16_t __attribute__((vector_size(16)));
using Byte16 = std::uint8_t __attribute__((vector_size(16)));
using Long2 = long long __attribute__((vector_size(16)));
using Flags2 = decltype(Double2{} < Double2{});

inline Float4 splat(float v) { return Float4{v, v, v, v}; }
inline Double2 bothOf(double v) { return Double2{v, v}; }

inline Float4 fourOf(const float* values) {
  Float4 v;
  std::memcpy(&v, values, sizeof v);
  return v;
}

// The high halves of the products.
inline Short8 highHalf(Short8 a, Short8 b) {
#ifdef __SSE2__
  // Whether a compiler vectorizes the loop depends on the code around it.
  return reinterpret_cast<Short8>(_mm_mulhi_epu16(reinterpret_cast<__m128i>(a), reinterpret_cast<__m128i>(b)));
#else
  Short8 result;
  for (int i = 0; i < 8; ++i) result[i] = std::uint16_t(std::uint32_t(a[i]) * b[i] >> 16);
  return result;
#endif
}

// The bytes of both first halves, alternating.
inline Short8 interleavedBytes(Long2 a, Long2 b) {
  return reinterpret_cast<Short8>(__builtin_shufflevector(reinterpret_cast<Byte16>(a), reinterpret_cast<Byte16>(b), 0, 16, 1,
                                                          17, 2, 18, 3, 19, 4, 20, 5, 21, 6, 22, 7, 23));
}

// Numbers that are not larger than a byte, as bytes.
inline Short8 packedBytes(Short8 a, Short8 b) {
#ifdef __SSE2__
  return reinterpret_cast<Short8>(_mm_packus_epi16(reinterpret_cast<__m128i>(a), reinterpret_cast<__m128i>(b)));
#else
  return reinterpret_cast<Short8>(__builtin_shufflevector(reinterpret_cast<Byte16>(a), reinterpret_cast<Byte16>(b), 0, 2, 4,
                                                          6, 8, 10, 12, 14, 16, 18, 20, 22, 24, 26, 28, 30));
#endif
}

#ifdef __SSE2__
// `flags` is the result of a comparison.
inline bool isAnySet(Int4 flags) { return _mm_movemask_ps(reinterpret_cast<Float4>(flags)) != 0; }
inline Float4 smaller(Float4 a, Float4 b) { return _mm_min_ps(a, b); }
inline Float4 larger(Float4 a, Float4 b) { return _mm_max_ps(a, b); }
inline bool areBothSet(Flags2 flags) { return _mm_movemask_pd(reinterpret_cast<Double2>(flags)) == 3; }
#else
inline bool isAnySet(Int4 flags) {
  const Long2 halves = reinterpret_cast<Long2>(flags);
  return (halves[0] | halves[1]) != 0;
}
inline Float4 smaller(Float4 a, Float4 b) { return a < b ? a : b; }
inline Float4 larger(Float4 a, Float4 b) { return a > b ? a : b; }
inline bool areBothSet(Flags2 flags) { return (flags[0] & flags[1]) != 0; }
#endif
inline Double2 smaller(Double2 a, Double2 b) { return a < b ? a : b; }
inline Double2 larger(Double2 a, Double2 b) { return a > b ? a : b; }
inline Double2 magnitude(Double2 v) { return reinterpret_cast<Double2>(reinterpret_cast<Long2>(v) & 0x7fffffffffffffff); }
inline Float4 magnitude(Float4 v) { return reinterpret_cast<Float4>(reinterpret_cast<Int4>(v) & 0x7fffffff); }

}  // namespace tessaluna::backend::raster
