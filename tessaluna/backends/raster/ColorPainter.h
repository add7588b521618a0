// Puts one color onto a bitmap, by the plain operator and with no clip but the bitmap's box: what nearly all of an icon is
// painted by. A sink of a coverage buffer that looks at four pixels at a time and keeps nothing between rows. All of it is
// here, because runs are short and a call for each of them would take as long as painting it.
#pragma once

#include <cstring>

#include "tessaluna/backends/raster/Bitmap.h"
#include "tessaluna/backends/raster/Blend.h"
#include "tessaluna/backends/raster/CoverageBuffer.h"

namespace tessaluna::backend::raster {

class ColorPainter {
 public:
  ColorPainter(Bitmap& bitmap, Float4 color) : bitmap_(bitmap), isOpaque_(color[3] >= fullCoverage) {
    storeRow(&color, &pixel_, 1);
    const auto part = [&](int channel, int ofOne) {
      const int v = int(std::clamp(color[channel], 0.0f, 1.0f) * float(ofOne));
      return Int4{v, v, v, v};
    };
    alpha_ = inBothHalves(part(3, most));
    inks_[0] = halves(part(0, 0xff00) | part(2, 0xff00) << 16);
    inks_[1] = halves(part(1, 0xff00) | part(3, 0xff00) << 16);
  }

  void even(int x, int y, int count, float winding) {
    std::uint32_t* pixels = bitmap_.row(y) + x;
    const float coverage = coverageOf(winding);
    if (isOpaque_ && coverage > fullCoverage) return replace(pixels, count);
    for (; count >= 4; pixels += 4, count -= 4) paintFour(pixels, splat(coverage));
    if (count > 0) paintLast(pixels, splat(coverage), count);
  }

  void varied(int x, int y, int count, const float* windings) {
    std::uint32_t* pixels = bitmap_.row(y) + x;
    for (; count >= 4; pixels += 4, windings += 4, count -= 4) paintFour(pixels, coverageOfFour(windings));
    if (count == 0) return;
    float last[4] = {};
    std::copy_n(windings, count, last);
    paintLast(pixels, coverageOfFour(last), count);
  }

 private:
  static constexpr float fullCoverage = 1 - leastCoverage;
  static constexpr int most = 0xffff;

  static Float4 coverageOfFour(const float* windings) {
    Float4 v;
    std::memcpy(&v, windings, sizeof v);
    return smaller(magnitude(v), splat(1));
  }

  // Most runs are too short for what fills of the library begin with.
  void replace(std::uint32_t* pixels, int count) const {
    const int p = int(pixel_);
    const Int4 full{p, p, p, p};
    for (; count >= 4; pixels += 4, count -= 4) std::memcpy(pixels, &full, sizeof full);
    for (; count > 0; ++pixels, --count) *pixels = pixel_;
  }

  // In fixed point: shares are of 65535, channels have eight bits behind the point. A pixel's half holds two channels.
  void paintFour(std::uint32_t* pixels, Float4 coverage) const {
    const Short8 share = inBothHalves(__builtin_convertvector(coverage * splat(most), Int4));
    const Short8 kept = ~highHalf(share, alpha_);
    Short8 four;
    std::memcpy(&four, pixels, sizeof four);
    // Both products are cut off, by half a step on average.
    constexpr std::uint16_t rounding = 129;
    const Short8 low = highHalf(four << 8, kept) + highHalf(inks_[0], share) + rounding;
    const Short8 high = highHalf(four & 0xff00, kept) + highHalf(inks_[1], share) + rounding;
    four = low >> 8 | (high & 0xff00);
    std::memcpy(pixels, &four, sizeof four);
  }

  static Short8 halves(Int4 v) { return reinterpret_cast<Short8>(v); }
  static Short8 inBothHalves(Int4 v) { return halves(v | v << 16); }

  // Fewer than four, at the bitmap's edge.
  void paintLast(std::uint32_t* pixels, Float4 coverage, int count) const {
    std::uint32_t four[4] = {};
    std::copy_n(pixels, count, four);
    paintFour(four, coverage);
    std::copy_n(four, count, pixels);
  }

  Bitmap& bitmap_;
  const bool isOpaque_;
  std::uint32_t pixel_;  // the color where it covers all
  Short8 alpha_;         // eight times
  Short8 inks_[2];       // of the first and third channel in turn, and of the others
};

}  // namespace tessaluna::backend::raster
