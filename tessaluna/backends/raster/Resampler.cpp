#include "tessaluna/backends/raster/Resampler.h"

#include <algorithm>
#include <cmath>

#include "tessaluna/backends/raster/PixelRect.h"

namespace tessaluna::backend::raster {

void Resampler::begin(const Axis& axis) {
  taps_.clear();
  weights_.clear();
  const double low = std::min(axis.start, axis.end), high = std::max(axis.start, axis.end);
  const double perPixel = axis.sourceLength / (axis.end - axis.start);  // source pixels a device pixel, with its sign
  const bool shrinks = std::abs(perPixel) > 1;
  for (int device = axis.low; device < axis.high; ++device) {
    Taps taps{.first = 0, .count = 0, .weights = weights_.size()};
    // The part of the device pixel that the picture covers, and the source under it.
    const double from = std::max(low, double(device)), to = std::min(high, double(device) + 1);
    if (to > from) {
      const double a = axis.sourceStart + (from - axis.start) * perPixel;
      const double b = axis.sourceStart + (to - axis.start) * perPixel;
      const double covered = to - from, s0 = std::min(a, b), s1 = std::max(a, b);
      const int last = axis.pixels - 1;
      if (shrinks) {
        const int first = floorWithin(s0, 0, last);
        const int end = floorWithin(std::ceil(s1), first + 1, axis.pixels);
        taps.first = first;
        taps.count = end - first;
        for (int i = first; i < end; ++i) {
          const double part = std::max(0.0, std::min(s1, i + 1.0) - std::max(s0, double(i)));
          weights_.push_back(float(part / std::abs(perPixel)));
        }
      } else {
        // Between the middles of two source pixels; beyond the outermost middle the outermost pixel goes on.
        const double middle = (s0 + s1) * 0.5 - 0.5;
        const int first = floorWithin(middle, 0, last), second = std::min(first + 1, last);
        const double share = std::clamp(middle - first, 0.0, 1.0);
        taps.first = first;
        taps.count = second - first + 1;
        weights_.push_back(float((taps.count == 1 ? 1 : 1 - share) * covered));
        if (taps.count == 2) weights_.push_back(float(share * covered));
      }
    }
    taps_.push_back(taps);
  }
}

}  // namespace tessaluna::backend::raster
