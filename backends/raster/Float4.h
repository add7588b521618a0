// Four floats worked on at once: the channels of a pixel (blue, green, red, alpha, as they lie in memory,
// premultiplied, 0...1), or four neighbours in a row.
#pragma once

namespace backend::raster {

using Float4 = float __attribute__((vector_size(16)));
using Int4 = int __attribute__((vector_size(16)));
using Double2 = double __attribute__((vector_size(16)));
using Long2 = long long __attribute__((vector_size(16)));

inline Float4 splat(float v) { return Float4{v, v, v, v}; }

// Of the flags that a comparison gives.
inline bool isAnySet(Int4 flags) {
  const Long2 halves = reinterpret_cast<Long2>(flags);
  return (halves[0] | halves[1]) != 0;
}

inline Float4 smaller(Float4 a, Float4 b) { return a < b ? a : b; }
inline Float4 larger(Float4 a, Float4 b) { return a > b ? a : b; }

}  // namespace backend::raster
