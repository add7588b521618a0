// Closed polygons in device pixels, y down, from which coverage is computed. Their points are in one list: a polygon's
// points go from its start to the start of the next polygon, and its last side goes back to its first point.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "tessaluna/backends/raster/Flattener.h"
#include "tessaluna/backends/raster/Float4.h"
#include "tessaluna/backends/raster/WorkBuffer.h"

namespace tessaluna::backend::raster {

class Polygons {
 public:
  void clear() {
    points_.clear();
    starts_.clear();
  }
  std::size_t pointCount() const { return points_.size(); }

  void moveTo(CGPoint p) {
    starts_.push_back(points_.size());
    points_.push_back(p);
  }
  // Makes room for the points of a whole polygon. The caller fills them in before it adds anything else.
  CGPoint* addPolygon(std::size_t count) {
    const std::size_t start = points_.size();
    starts_.push_back(start);
    points_.resize(start + count);
    return points_.data() + start;
  }
  void lineTo(CGPoint p, Corner = Corner::Sharp) { points_.push_back(p); }
  void close() {}
  void leave(CGPoint) {}
  void arrive(CGPoint) {}

  std::size_t count() const { return starts_.size(); }
  std::span<const CGPoint> polygon(std::size_t index) const {
    const std::size_t end = index + 1 < starts_.size() ? starts_[index + 1] : points_.size();
    return std::span(points_).subspan(starts_[index], end - starts_[index]);
  }
  std::span<CGPoint> points() { return points_; }
  // Drops all points from this index on. They must belong to the last polygon, and its first point must stay.
  void cutTo(std::size_t end) { points_.resize(end); }

  // Calls side(from, to) for all sides of a polygon, beginning where the chain of its first point ends, so that no chain is
  // cut.
  template <class Function>
  static void forEachSide(std::span<const CGPoint> points, Function side) {
    const std::size_t count = points.size();
    std::size_t last = count - 1;
    while (last > 0 && points[last].y == points[0].y) --last;
    const double way = points[0].y - points[last].y;
    std::size_t start = 0;
    while (start + 1 < count && (points[start + 1].y - points[start].y) * way >= 0) ++start;
    CGPoint from = points[start];
    const auto go = [&](std::size_t i, std::size_t end) {
      for (; i < end; ++i) {
        side(from, points[i]);
        from = points[i];
      }
    };
    go(start + 1, count);
    go(0, start + 1);
  }

  // Empty if there are no points.
  DeviceRect bounds() const { return boundsOf(points_); }
  static DeviceRect boundsOf(std::span<const CGPoint> points) {
    if (points.empty()) return {};
    Double2 low = pairOf(points[0]), high = low;
    for (const CGPoint& p : points) {
      low = smaller(pairOf(p), low);
      high = larger(pairOf(p), high);
    }
    return {low[0], low[1], high[0], high[1]};
  }

 private:
  std::vector<CGPoint> points_;
  std::vector<std::size_t> starts_;
};

}  // namespace tessaluna::backend::raster
