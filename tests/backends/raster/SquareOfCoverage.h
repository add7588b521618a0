// A sink of a coverage buffer that keeps the coverage of a square's pixels, from its upper left corner at 0, 0.
#pragma once

#include <algorithm>
#include <vector>

#include "tessaluna/backends/raster/CoverageSink.h"

namespace tessaluna::backend::raster::test {

class SquareOfCoverage : public RowByRowSink<SquareOfCoverage> {
 public:
  explicit SquareOfCoverage(int side) : side_(side), values_(std::size_t(side * side)) {}
  float at(int x, int y) const { return values_[std::size_t(y * side_ + x)]; }

  void uniform(int x, int y, int count, float winding) { std::fill_n(pixel(x, y), count, coverageOf(winding)); }
  void varied(int x, int y, int count, const float* windings) { writeCoverage(windings, count, pixel(x, y)); }

 private:
  float* pixel(int x, int y) { return &values_[std::size_t(y * side_ + x)]; }

  int side_;
  std::vector<float> values_;
};

}  // namespace tessaluna::backend::raster::test
