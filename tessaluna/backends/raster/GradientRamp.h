// The colors along a linear gradient, for device pixels. Colors are mixed before they are premultiplied.
#pragma once

#include <vector>

#include "tessaluna/backends/raster/Blend.h"
#include "tessaluna/backends/raster/RowSource.h"

namespace tessaluna::backend::raster {

class GradientRamp final : public RowSource {
 public:
  // False if there is nothing to paint: there are no stops, or the transform flattens the plane.
  bool begin(const LinearGradient& gradient, const CGAffineTransform& toDevice);

  // The color of the pixel in this column and row; a fraction means a place between centers.
  Float4 colorAt(double x, double y) const;

  bool isOpaque() const override { return isOpaque_; }
  void writePixels(int x, int y, int count, std::uint32_t* pixels) override;
  void writeInks(int x, int y, int count, InkRow& row) override;

 private:
  struct Stop {
    double location;
    Float4 color;  // not premultiplied, 0...1
  };
  // A color that changes linearly from one pixel to the next, not premultiplied.
  struct Slope {
    Float4 first, perPixel;
  };

  double positionOf(double x, double y) const { return start_ + perColumn_ * x + perRow_ * y; }
  std::size_t stopAfter(double position) const;
  Slope slopeAt(double position, std::size_t next) const;
  // Calls write(index, count, slope) for the parts of a run over which the color changes linearly.
  template <class Write>
  void forEachSlope(int x, int y, int count, Write write) const;

  std::vector<Stop> stops_;
  bool isOpaque_ = false;
  double start_ = 0, perColumn_ = 0, perRow_ = 0;  // positions of pixel centers on the axis
};

}  // namespace tessaluna::backend::raster
