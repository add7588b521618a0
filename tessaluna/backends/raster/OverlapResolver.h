// Finds what bounds the inside among the sides of polygons in a row of pixels, where they may overlap each other or
// themselves.
//
// It cuts the row into strips at every corner and every crossing. In a strip all sides are straight lines from top to
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
  // What bounds the inside: the inside is right of a bound that goes down, and left of one that goes up.
  struct Bound {
    CGPoint from, to;
  };

  // Sides are added between begin() and resolve(). They lie between the heights 0 and 1, and `direction` is 1 if the polygon
  // goes down there, -1 if it goes up.
  void begin();
  void add(CGPoint above, CGPoint below, int direction);
  // `winding` is that of what lies left of all sides, and a point is inside if any of the `relevant` bits of its winding number is set.
  // The result is valid until the next begin().
  std::span<const Bound> resolve(int winding, int relevant);
  // The work of the last resolve(): the number of sides that go through each strip, added up over all strips.
  std::size_t sidesOfStrips() const { return sidesOfStrips_; }

 private:
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
  double goTo(double top, double least);
  void addStrip(double top, double bottom, double least);
  void place(double top, double bottom);
  void sortByPlace();
  void sortByDigits();
  double firstCrossing(double top, double bottom, double least);
  void sortByMiddle(double bottom);
  void findBounds(double top);
  void setBound(Side& side, int bound, double top);
  void endBound(Side& side, double y);

  std::vector<Side> sides_;       // by their tops
  std::vector<Across> across_;    // from the left
  std::vector<Across> unsorted_;  // across_ before it was sorted by digits
  std::vector<Key> keys_;
  std::vector<Bound> bounds_;
  std::size_t next_ = 0;  // not yet reached
  std::size_t sidesOfStrips_ = 0;
  int winding_ = 0, relevant_ = ~0;
  bool isInOrder_ = true;  // at the strip's bottom as well, apart from a crossing there
};

}  // namespace tessaluna::backend::raster
