// Exact regions of the plane, for references: what a path fills or a pen covers, computed line by line. They are slow and
// independent of the canvas: curves become hundreds of chords, strokes a union of rectangles, join wedges and caps.
#pragma once

#include <vector>

#include "tessaluna/platform/backend/Canvas.h"

namespace tessaluna::backend::raster::test {

struct Interval {
  double low, high;
};

class Region {
 public:
  static Region filled(const Path& path, FillRule rule, const CGAffineTransform& toDevice);
  static Region stroked(const Path& path, const StrokeStyle& style, const CGAffineTransform& toDevice);

  // The parts of the line at height y that lie in the region, in order and apart from each other.
  std::vector<Interval> at(double y) const;
  // The same region between two heights, with less to search.
  Region between(double top, double bottom) const;

 private:
  struct Polygon {  // or a single side of a fill
    std::vector<CGPoint> points;
    double top, bottom;
  };
  // The part of a convex polygon between two heights with no corner between them, so that its sides are straight there.
  struct Slab {
    double top, bottom;
    Interval above, below;
  };
  enum class Rule { NonZero, EvenOdd, Union };  // Union: of convex polygons in either direction

  void add(std::vector<CGPoint> points, const CGAffineTransform& toDevice);

  Rule rule_ = Rule::NonZero;
  std::vector<Polygon> polygons_;
  std::vector<Slab> slabs_;
};

// The area of each pixel that a region covers, computed from many exact lines per row of pixels.
class Coverage {
 public:
  Coverage(int width, int height) : width(width), height(height), values(std::size_t(width) * std::size_t(height)) {}
  Coverage(const Region& region, int width, int height);

  double& at(int x, int y) { return values[std::size_t(y) * std::size_t(width) + std::size_t(x)]; }
  double at(int x, int y) const { return values[std::size_t(y) * std::size_t(width) + std::size_t(x)]; }

  // The direct convolution with a Gaussian at whole pixels, whose weights add up to 1. Everything outside the picture is 0.
  Coverage blurred(double deviation) const;
  Coverage times(const Coverage& other) const;
  Coverage cropped(int left, int top, int newWidth, int newHeight) const;

  int width, height;
  std::vector<double> values;
};

}  // namespace tessaluna::backend::raster::test
