// Replaces polygons that overlap each other or themselves by others that do not and that bound the same area:
// what a fill rule says is inside gets the winding number 1, all else 0.
//
// It cuts the plane into strips at every corner and every crossing. In a strip all sides are straight lines
// from top to bottom that keep their order, so walking through them from the left finds those where inside
// and outside meet.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "backends/raster/Polygons.h"

namespace backend::raster {

class OverlapResolver {
 public:
  // What to resolve: these polygons, moved and scaled, in those rows of a box that are not 0.
  struct Task {
    const Polygons& polygons;
    CGPoint moved;
    double scale = 1;  // after moving
    FillRule rule = FillRule::NonZero;
    DeviceRect box;  // as many pixels high as there are rows
    std::span<const std::uint8_t> rows;
  };

  // What lies left of the box counts as if it ran along its left side. Tells the sides to edge(from, to), downwards where the inside begins and upwards where it ends.
  template <class Function>
  void resolve(const Task& task, Function edge);

 private:
  // A side of a polygon, and what is known of it while strips go over it.
  struct Side {
    double top, bottom, x, slope;  // x at the top, and its change by height
    int direction;
    double above = 0, below = 0, place = 0;  // x at the strip's top and bottom, and that which gives the order
    int bound = 0;                           // 1 where the inside begins behind it, -1 where it ends, 0 elsewhere
    double since = 0;                        // the height from which on it is a bound
    double at(double y) const { return x + (y - top) * slope; }
  };
  struct Placed {
    double place;
    Side* side;
  };
  struct Bound {
    CGPoint from, to;
  };

  void collect(const Task& task);
  void collectSide(CGPoint from, CGPoint to, const DeviceRect& box);
  void addRow(double top, double bottom, FillRule rule);
  void addStrip(double top, double bottom, FillRule rule, int depth);
  void goToStrip(double top, double bottom);
  std::optional<double> firstCrossing(double top, double bottom) const;
  void sortByPlace();
  void sortManyByPlace();
  void endBound(Side& side, double y);

  std::vector<Side> sides_;    // by their tops
  std::vector<Side*> across_;  // those that go through the strip, from the left
  std::vector<Placed> placed_;
  std::vector<double> cuts_;
  std::vector<Bound> bounds_;
  std::size_t next_ = 0;  // of the sides, not yet reached
  int stripsLeft_ = 0;    // in this row
};

template <class Function>
void OverlapResolver::resolve(const Task& task, Function edge) {
  collect(task);
  clearForReuse(bounds_);
  // Row by row, so that little needs to be looked at at once.
  double top = task.box.top;
  for (const std::uint8_t isWanted : task.rows) {
    if (isWanted) addRow(top, top + 1, task.rule);
    else for (Side* side : across_) endBound(*side, top);
    ++top;
  }
  for (Side* side : across_) endBound(*side, top);
  for (const Bound& bound : bounds_) edge(bound.from, bound.to);
}

}  // namespace backend::raster
