// Puts one color onto a bitmap, by the plain operator and with no clip but the bitmap's box: what nearly all of an icon is
// painted by. A sink of a coverage buffer that looks at four pixels at a time and keeps nothing between rows. All of it is
// here, because runs are short and a call for each of them would take as long as painting it.
#pragma once

#include <cstring>

#include "backends/raster/Bitmap.h"
#include "backends/raster/Blend.h"
#include "backends/raster/CoverageBuffer.h"

namespace backend::raster {

class ColorPainter {
 public:
  ColorPainter(Bitmap& bitmap, Float4 color)
      : bitmap_(bitmap), alpha_(splat(color[3])), isOpaque_(color[3] >= fullCoverage) {
    storeRow(&color, &pixel_, 1);
    for (int channel = 0; channel < 4; ++channel) inks_[channel] = splat(color[channel] * 255);
  }

  void even(int x, int y, int count, float winding) {
    std::uint32_t* pixels = bitmap_.row(y) + x;
    const float coverage = coverageOf(winding);
    if (isOpaque_ && coverage > fullCoverage) {
      std::fill_n(pixels, count, pixel_);
      return;
    }
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

  static Float4 coverageOfFour(const float* windings) {
    Float4 v;
    std::memcpy(&v, windings, sizeof v);
    return smaller(larger(v, -v), splat(1));
  }

  void paintFour(std::uint32_t* pixels, Float4 coverage) const {
    if (isOpaque_ && !isAnySet(coverage < splat(fullCoverage))) {
      const int p = int(pixel_);
      const Int4 full{p, p, p, p};
      std::memcpy(pixels, &full, sizeof full);
      return;
    }
    if (!isAnySet(coverage > splat(leastCoverage))) return;
    Int4 four;
    std::memcpy(&four, pixels, sizeof four);
    const Float4 kept = splat(1) - alpha_ * coverage;
    Int4 result{};
    for (int channel = 0; channel < 4; ++channel) {
      const Int4 before = four >> (8 * channel) & 0xff;
      const Float4 sum = __builtin_convertvector(before, Float4) * kept + (inks_[channel] * coverage + splat(0.5f));
      result |= __builtin_convertvector(sum, Int4) << (8 * channel);
    }
    std::memcpy(pixels, &result, sizeof result);
  }

  // Fewer than four, at the bitmap's edge.
  void paintLast(std::uint32_t* pixels, Float4 coverage, int count) const {
    std::uint32_t four[4] = {};
    std::copy_n(pixels, count, four);
    paintFour(four, coverage);
    std::copy_n(four, count, pixels);
  }

  Bitmap& bitmap_;
  const Float4 alpha_;
  const bool isOpaque_;
  std::uint32_t pixel_;  // the color where it covers all
  Float4 inks_[4];       // each channel of the color four times, of 255
};

}  // namespace backend::raster
