// A sink receives the coverage of a shape, row by row from the top, and the runs of a row from the left:
//   sink.uniform(x, y, count, winding)  a run of pixels with one winding, left out where it is 0
//   sink.varied(x, y, count, windings)  a run with one winding per pixel, some of which may be 0
// Equal rows arrive together, run by run, with the windings of one row:
//   sink.uniformRows(box, winding), sink.variedRows(box, windings)
// A pixel's coverage is the absolute value of its winding, at most 1.
#pragma once

#include "tessaluna/backends/raster/Float4.h"
#include "tessaluna/backends/raster/PixelRect.h"

namespace tessaluna::backend::raster {

// Coverage below this cannot change a pixel's 8-bit value; rounding leaves such remainders where a sum should be 0.
inline constexpr float leastCoverage = 1.0f / 1024;

// Above this a pixel counts as fully covered.
inline constexpr float fullCoverage = 1 - leastCoverage;

// The coverage of a pixel with this average winding.
inline float coverageOf(float winding) { return std::min(std::abs(winding), 1.0f); }
inline Float4 coverageOfFour(const float* windings) { return smaller(magnitude(fourOf(windings)), splat(1)); }
inline void writeCoverage(const float* windings, int count, float* out) {
  for (; count >= 4; count -= 4, windings += 4, out += 4) {
    const Float4 v = coverageOfFour(windings);
    std::memcpy(out, &v, sizeof v);
  }
  std::transform(windings, windings + count, out, coverageOf);
}

// A sink that has no faster way for equal rows.
template <class Sink>
class RowByRowSink {
 public:
  void uniformRows(const PixelRect& box, float winding) {
    for (int y = box.top; y < box.bottom; ++y) sink().uniform(box.left, y, box.width(), winding);
  }
  void variedRows(const PixelRect& box, const float* windings) {
    for (int y = box.top; y < box.bottom; ++y) sink().varied(box.left, y, box.width(), windings);
  }

 private:
  Sink& sink() { return static_cast<Sink&>(*this); }
};

}  // namespace tessaluna::backend::raster
