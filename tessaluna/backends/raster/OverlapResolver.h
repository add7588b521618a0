// Replaces polygons that overlap each other or themselves with others that do not overlap and bound the same area: what is
// inside by the fill rule gets the winding number 1, everything else 0.
//
// It cuts the plane into strips at every corner and every crossing. In a strip all sides are straight lines from top to
// bottom that keep their order, so going through them from the left finds those where inside and outside meet.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "tessaluna/backends/raster/Polygons.h"

namespace tessaluna::backend::raster {

class OverlapResolver {
 public:
  // Prepares the polygons for cover(). They must not change meanwhile.
  void take(const Polygons& polygons);

  // Where and how the polygons are resolved: they are moved and scaled, and the box has whole pixels.
  struct Task {
    CGPoint moved;
    double scale = 1;  // after moving
    FillRule rule = FillRule::NonZero;
    DeviceRect box;
  };

  // Writes the coverage of the box's pixels, in rows that lie `stride` values apart.
  void cover(const Task& task, float* values, std::ptrdiff_t stride);
  // The work of the last cover(): the number of sides that go through each strip, added up over all strips.
  std::size_t sidesOfStrips() const { return sidesOfStrips_; }

 private:
  // Some consecutive sides of a polygon, in its own space.
  struct Stretch {
    const CGPoint *before, *first, *end;  // the point where the first side begins, and those where sides end
    Double2 low, high;
    bool isFirst, isLast;  // of its polygon
  };
  // Whether the path is left of the box while sides are collected, and the height where it got there.
  struct LeftPart {
    bool isLeft = false;
    double since = 0;
  };
  // A side of a polygon, which goes down.
  struct Side {
    double top, bottom, x, slope;  // x at the top, and its change by height
    int direction;
    int bound = 0;     // 1 where the inside begins after it, -1 where it ends, 0 elsewhere
    double since = 0;  // the height from which it is a bound
    double at(double y) const { return x + (y - top) * slope; }
  };
  // A side that goes through a strip: x at the strip's top and bottom, and the x by which it is sorted.
  struct Across {
    double above, below, place;
    Side* side;
  };
  struct Key {
    std::uint32_t place, index;
  };
  // Where the winding number at the left side of the box changes.
  struct LeftChange {
    double y;
    int winding;
  };
  struct Bound {
    CGPoint from, to;
  };
  struct Pixels;

  void collect(const Task& task);
  void collectStretch(const Stretch& stretch, const Task& task, LeftPart& part);
  void collectSide(CGPoint from, CGPoint to, const DeviceRect& box);
  void collectLeft(double from, double to, const DeviceRect& box);
  void addRows(double top, double bottom, FillRule rule);
  double goTo(double top, double least, double bottom);
  double passLeftChanges(double middle, double end);
  void addStrip(double top, double bottom, double least, FillRule rule);
  void place(double top, double bottom);
  void sortByPlace();
  void sortByDigits();
  double firstCrossing(double top, double bottom, double least);
  void sortByMiddle(double bottom);
  void findBounds(double top, FillRule rule);
  void setBound(Side& side, int bound, double top);
  void endBounds(double y);
  void endBound(Side& side, double y);

  std::vector<Stretch> stretches_;
  std::vector<Side> sides_;       // by their tops
  std::vector<Across> across_;    // from the left
  std::vector<Across> unsorted_;  // across_ before it was sorted by digits
  std::vector<Key> keys_;
  std::vector<LeftChange> leftChanges_;  // by height
  std::vector<Bound> bounds_;
  std::size_t next_ = 0, nextLeftChange_ = 0;  // not yet reached
  std::size_t sidesOfStrips_ = 0;
  Side left_{};  // the left side of the box
  int leftWinding_ = 0;
  bool isInOrder_ = true;  // at the strip's bottom as well, apart from a crossing there
};

}  // namespace tessaluna::backend::raster
