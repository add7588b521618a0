// The Porter-Duff operators on rows of pixels.
#pragma once

#include <algorithm>

#include "tessaluna/backends/raster/Float4.h"
#include "tessaluna/platform/backend/Canvas.h"

namespace tessaluna::backend::raster {

// True for an operator that also changes the destination outside the shape.
constexpr bool isUnbounded(BlendMode mode) {
  return mode == BlendMode::SourceIn || mode == BlendMode::SourceOut || mode == BlendMode::DestinationIn ||
         mode == BlendMode::DestinationAtop;
}
// True for an operator that leaves its shape empty where the source is transparent, and nothing else outside it.
constexpr bool showsEmptyParts(BlendMode mode) { return mode == BlendMode::Clear || mode == BlendMode::Copy; }
// True for an operator with which a transparent source changes nothing.
constexpr bool needsSource(BlendMode mode) { return !isUnbounded(mode) && !showsEmptyParts(mode); }

// Blends `count` source pixels, multiplied by their coverage, into the destination. An unbounded operator works on all of
// them, and `clip` says how much of its result is mixed in; it may be null for a plain clip. For the other operators the
// coverage must already include the clip.
void blendRow(BlendMode mode, Float4* destination, const Float4* source, const float* coverage, const float* clip,
              int count);

// These convert between 8-bit pixels and channels of 0...1; stored values are rounded to the nearest.
void loadRow(const std::uint32_t* pixels, Float4* out, int count);
void storeRow(const Float4* row, std::uint32_t* pixels, int count);

// NaN becomes 0, since every comparison with it fails.
inline double clamp01(double v) { return v > 0 ? std::min(v, 1.0) : 0.0; }

inline Float4 premultiplied(const Color& color, double alpha) {
  const double a = clamp01(color.alpha) * clamp01(alpha);
  return Float4{float(clamp01(color.blue) * a), float(clamp01(color.green) * a), float(clamp01(color.red) * a), float(a)};
}

}  // namespace tessaluna::backend::raster
