// Tells whether lines come as near to each other, or to themselves, as a pen is wide: then their strokes
// overlap. A thin stroke may do so without filling a pixel, and coverage sums would not show it.
#pragma once

#include <span>
#include <vector>

#include "platform/foundation/Geometry.h"

namespace backend::raster {

using platform::CGPoint;

class NearLines {
 public:
  void clear();
  void moveTo(CGPoint p);
  void lineTo(CGPoint p, double length);  // of the line from the point before
  // Tells that the line led back to its start.
  void close() { lines_.back().isClosed = true; }

  // True if two parts are nearer than `distance`, apart from those that are near because the line leads from
  // one to the other. Also true where finding out would take long.
  bool find(double distance);

 private:
  // A run of chords that all go into the same quarter of directions: it cannot cross itself.
  struct Run {
    std::size_t first, last;  // points
    double left, right, top, bottom;
  };

  void makeRuns();
  bool areNear(const Run& a, const Run& b, double distance);
  bool areChordsNear(std::size_t a, std::size_t b, double distance) const;

  struct Point {
    CGPoint at;
    double along;  // the length of all lines up to here
    std::size_t line;
  };
  struct Line {
    double start = 0, end = 0;  // along all lines
    bool isClosed = false;
  };
  std::vector<Point> points_;
  std::vector<Run> runs_;
  std::vector<Line> lines_;
  long testsLeft_ = 0;
};

}  // namespace backend::raster
