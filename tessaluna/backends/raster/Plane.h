// One value for each pixel of a box: a clip's mask, a glyph, or what casts a shadow. Everything outside the box counts as 0.
#pragma once

#include "tessaluna/backends/raster/CoverageBuffer.h"

namespace tessaluna::backend::raster {

class Plane : public RowByRowSink<Plane> {
 public:
  // Makes room for the box; its values are undefined. False when memory is short.
  bool begin(const PixelRect& box) {
    box_ = box;
    return memory_.prepare(box.area()) != nullptr;
  }
  // The same with all values 0.
  bool beginEmpty(const PixelRect& box) {
    if (!begin(box)) return false;
    std::fill_n(memory_.data(), box.area(), 0.0f);
    return true;
  }

  const PixelRect& box() const { return box_; }
  std::size_t bytes() const { return memory_.bytes(); }
  float* row(int y) { return memory_.data() + std::size_t(y - box_.top) * std::size_t(box_.width()); }
  const float* row(int y) const { return const_cast<Plane*>(this)->row(y); }

  // These make it a sink of a coverage buffer.
  void uniform(int x, int y, int count, float winding) { std::fill_n(row(y) + (x - box_.left), count, coverageOf(winding)); }
  void varied(int x, int y, int count, const float* windings) { writeCoverage(windings, count, row(y) + (x - box_.left)); }

 private:
  PixelRect box_;
  WorkBuffer<float> memory_;
};

}  // namespace tessaluna::backend::raster
