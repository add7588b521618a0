#include "backends/raster/ColorPainter.h"

#include <cstring>

#include "backends/raster/Blend.h"

namespace backend::raster {

namespace {

constexpr float fullCoverage = 1 - leastCoverage;

bool isAnySet(Int4 flags) {
  const Long2 halves = reinterpret_cast<Long2>(flags);
  return (halves[0] | halves[1]) != 0;
}

Float4 coverageOfFour(const float* windings) {
  Float4 v;
  std::memcpy(&v, windings, sizeof v);
  return smaller(larger(v, -v), splat(1));
}

// Four pixels with what is left of them and what comes to them, channel by channel.
Int4 blended(Int4 pixels, Float4 kept, const Float4 (&added)[4]) {
  Int4 result{};
  for (int channel = 0; channel < 4; ++channel) {
    const Int4 values = pixels >> (8 * channel) & 0xff;
    const Float4 sum = __builtin_convertvector(values, Float4) * kept + added[channel];
    result |= __builtin_convertvector(sum, Int4) << (8 * channel);
  }
  return result;
}

}  // namespace

ColorPainter::ColorPainter(Bitmap& bitmap, Float4 color)
    : bitmap_(bitmap), alpha_(color[3]), isOpaque_(color[3] >= fullCoverage) {
  storeRow(&color, &pixel_, 1);
  for (int channel = 0; channel < 4; ++channel) inks_[channel] = splat(color[channel] * 255);
}

inline void ColorPainter::paintFour(std::uint32_t* pixels, Float4 coverage) const {
  Int4 four;
  std::memcpy(&four, pixels, sizeof four);
  Float4 added[4];
  for (int channel = 0; channel < 4; ++channel) added[channel] = inks_[channel] * coverage + splat(0.5f);
  four = blended(four, splat(1) - splat(alpha_) * coverage, added);
  std::memcpy(pixels, &four, sizeof four);
}

void ColorPainter::even(int x, int y, int count, float winding) {
  std::uint32_t* pixels = bitmap_.row(y) + x;
  const float coverage = coverageOf(winding);
  if (isOpaque_ && coverage > fullCoverage) {
    std::fill_n(pixels, count, pixel_);
    return;
  }
  const Float4 kept = splat(1 - alpha_ * coverage);
  Float4 added[4];
  for (int channel = 0; channel < 4; ++channel) added[channel] = inks_[channel] * splat(coverage) + splat(0.5f);
  for (; count > 0; pixels += 4, count -= 4) {
    const std::size_t bytes = std::size_t(std::min(count, 4)) * 4;
    Int4 four{};
    if (bytes == 16) std::memcpy(&four, pixels, 16);
    else std::memcpy(&four, pixels, bytes);
    four = blended(four, kept, added);
    if (bytes == 16) std::memcpy(pixels, &four, 16);
    else std::memcpy(pixels, &four, bytes);
  }
}

void ColorPainter::varied(int x, int y, int count, const float* windings) {
  std::uint32_t* pixels = bitmap_.row(y) + x;
  for (; count >= 4; pixels += 4, windings += 4, count -= 4) {
    const Float4 coverage = coverageOfFour(windings);
    if (!isAnySet(coverage > splat(leastCoverage))) continue;
    if (isOpaque_ && !isAnySet(coverage < splat(fullCoverage))) std::fill_n(pixels, 4, pixel_);
    else paintFour(pixels, coverage);
  }
  if (count == 0) return;
  std::uint32_t four[4] = {};
  float last[4] = {};
  std::copy_n(pixels, count, four);
  std::copy_n(windings, count, last);
  paintFour(four, coverageOfFour(last));
  std::copy_n(four, count, pixels);
}

}  // namespace backend::raster
