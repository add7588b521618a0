// Colors of four neighbouring pixels in fixed point, as the bitmap painters blend them over the background. A channel has
// eight bits before the point and eight after it; all are premultiplied. Each half of a pixel holds two channels.
#pragma once

#include <algorithm>
#include <cstring>
#include <cwchar>

#include "tessaluna/backends/raster/CoverageSink.h"

namespace tessaluna::backend::raster {

struct FourInks {
  Short8 even;  // blue and red alternating
  Short8 odd;   // green and alpha
};

inline Short8 halves(Int4 v) { return reinterpret_cast<Short8>(v); }
inline Short8 inBothHalves(Int4 v) { return halves(v | v << 16); }

// Coverage from 0 to 1, in 65535ths.
inline constexpr int fullShare = 0xffff;
inline Short8 shareOf(Float4 coverage) { return inBothHalves(__builtin_convertvector(coverage * splat(fullShare), Int4)); }

inline Short8 loadFour(const std::uint32_t* pixels) {
  Short8 four;
  std::memcpy(&four, pixels, sizeof four);
  return four;
}
inline void storeFour(Short8 four, std::uint32_t* pixels) { std::memcpy(pixels, &four, sizeof four); }

inline FourInks inksOf(Short8 four) { return {four << 8, four & 0xff00}; }

// The inks over four pixels, of which the share `kept` remains.
inline Short8 over(Short8 four, const FourInks& inks, Short8 kept) {
  // Both products are truncated, by half a step on average.
  constexpr std::uint16_t rounding = 129;
  const Short8 even = highHalf(four << 8, kept) + inks.even + rounding;
  const Short8 odd = highHalf(four & 0xff00, kept) + inks.odd + rounding;
  return even >> 8 | (odd & 0xff00);
}

inline FourInks lessened(const FourInks& inks, Short8 share) {
  return {highHalf(inks.even, share), highHalf(inks.odd, share)};
}

// The share of the background that remains under inks.
inline Short8 keptBelow(const FourInks& inks) {
  const Int4 alpha = reinterpret_cast<Int4>(inks.odd) & int(0xffff0000);
  const Short8 all = halves(alpha) | reinterpret_cast<Short8>(reinterpret_cast<Uint4>(alpha) >> 16);
  return ~(all + (all >> 8));
}

// Applies paint(pixels, index) to four pixels at a time. The last pixels, which may be fewer than four, are painted in a
// copy.
template <class Paint>
inline void forEachFour(std::uint32_t* pixels, int count, Paint paint) {
  int i = 0;
  // A loop this short may take a quarter longer by where it happens to lie.
#pragma GCC unroll 2
  for (; i + 4 <= count; i += 4) paint(pixels + i, i);
  if (i == count) return;
  std::uint32_t last[4] = {};
  std::copy_n(pixels + i, count - i, last);
  paint(last, i);
  std::copy_n(last, count - i, pixels + i);
}

// Applies paint(pixels, index, coverage) in the same way to a run with one winding per pixel.
template <class Paint>
inline void forEachFour(std::uint32_t* pixels, const float* windings, int count, Paint paint) {
  forEachFour(pixels, count, [&](std::uint32_t* four, int index) {
    if (index + 4 <= count) return paint(four, index, coverageOfFour(windings + index));
    float last[4] = {};
    std::copy_n(windings + index, count - index, last);
    paint(four, index, coverageOfFour(last));
  });
}

// Most runs are too short for the overhead of the library's fills, and a loop with one store per iteration takes twice as
// long as the stores. For long runs the C library uses the processor's widest stores.
inline constexpr int longRun = 128;
inline void fillPixels(std::uint32_t* pixels, int count, std::uint32_t pixel) {
  if constexpr (sizeof(wchar_t) == sizeof(std::uint32_t)) {
    if (count >= longRun) {
      std::wmemset(reinterpret_cast<wchar_t*>(pixels), wchar_t(pixel), std::size_t(count));
      return;
    }
  }
  const int p = int(pixel);
  const Short8 full = halves(Int4{p, p, p, p});
  for (; count >= 32; pixels += 32, count -= 32) {
    for (int i = 0; i < 32; i += 4) storeFour(full, pixels + i);
  }
  for (; count >= 4; pixels += 4, count -= 4) storeFour(full, pixels);
  for (; count > 0; ++pixels, --count) *pixels = pixel;
}

}  // namespace tessaluna::backend::raster
