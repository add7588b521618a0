// A sink receives the coverage of a shape, row by row from the top:
//   sink.uniform(x, y, count, winding)  a run of pixels with one winding, left out where it is 0
//   sink.varied(x, y, count, windings)  a run with one winding per pixel, some of which may be 0
// A pixel's coverage is the absolute value of its winding, at most 1.
#pragma once

#include "tessaluna/backends/raster/PixelRect.h"

namespace tessaluna::backend::raster {

// A sink that does not need rows in order receives equal rows in one call per run, with the windings of one row.
template <class Sink>
concept TakesRows = requires(Sink& sink, const PixelRect& box, const float* windings) {
  sink.uniformRows(box, 1.0f);
  sink.variedRows(box, windings);
};

}  // namespace tessaluna::backend::raster
