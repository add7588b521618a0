// The colors along a linear gradient, for device pixels. Colors are mixed as they are, before they are
// premultiplied.
#pragma once

#include <vector>

#include "tessaluna/backends/raster/Blend.h"

namespace tessaluna::backend::raster {

class GradientRamp {
 public:
  // False where there is nothing to paint: no stops, or a transform that flattens the plane.
  bool begin(const LinearGradient& gradient, const CGAffineTransform& toDevice, double alpha);

  // True if all pixels of a row have one color.
  bool isEvenAlongRows() const { return perColumn_ == 0; }
  // Of the pixel in this column and row; a fraction asks for a place between centers.
  Float4 colorAt(double x, double y) const { return colorAt(start_ + perColumn_ * x + perRow_ * y); }
  void row(int x, int y, int count, Float4* out) const;

 private:
  struct Stop {
    double location;
    Float4 color;  // not premultiplied
  };

  Float4 colorAt(double position) const;

  std::vector<Stop> stops_;
  double alpha_ = 1;
  double start_ = 0, perColumn_ = 0, perRow_ = 0;  // position on the axis of pixel centers
};

}  // namespace tessaluna::backend::raster
