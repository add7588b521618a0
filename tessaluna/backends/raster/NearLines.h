// Finds where lines come as near to each other, or to themselves, as a pen is wide: there their strokes overlap. Left out is
// what is near because the line leads there within a few pens' widths; the outline sees to that by itself.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "tessaluna/backends/raster/PixelRect.h"
#include "tessaluna/backends/raster/StrokePoint.h"

namespace tessaluna::backend::raster {

class NearLines {
 public:
  void begin(const Pen& pen);
  struct Added {
    std::span<const StrokePoint> points;
    Contour contour;
    bool partsBehindBends;  // as far as neighbouring parts are concerned it does not come near itself
  };
  void add(const Added& line);

  // Adds to `places` rectangles that hold all overlaps. Where finding them would take long, one that holds everything.
  void find(std::vector<DeviceRect>& places);

 private:
  struct Point {
    CGPoint at;
    double beyond;  // how far the stroke of a chord that ends here goes on
    double spread;  // and how far from the point its corners lie
  };
  // A run of chords that all go into the same quarter of directions: it cannot cross itself.
  struct Run {
    std::size_t first, last;  // points
    DeviceRect box;           // of the stroke
    std::size_t line;
    std::size_t number;  // in the line
    int quarter;
    bool hasBoxes = false;
  };
  struct Line {
    std::size_t first, last;  // points; the first one again as the last where it is closed
    std::size_t runs = 0;
    Contour contour = Contour::Open;
    bool partsBehindBends = true;
  };
  // A chord, of length 1 its direction.
  struct Chord;
  struct Stretch;

  void addRun(Line& line, std::size_t first, std::size_t last, int quarter);
  bool followEachOther(const Run& a, const Run& b) const;
  bool isNearAlong(std::size_t first, std::size_t second, const Line& line);
  void compare(const Run& a, Run& b, std::vector<DeviceRect>& places);
  void setBeyond(Point& p, double beyond) const;
  double beyondCorner(const StrokePoint& p) const;
  DeviceRect boxOf(std::size_t chord) const;  // of its stroke
  void prepareBoxes(Run& run);
  bool isCorner(std::size_t point) const { return points_[point].beyond > 0; }
  bool turnsBack(std::size_t first, std::size_t second, int corners, const Line& line) const;
  DeviceRect overlapOf(const Chord& a, const Chord& b) const;
  DeviceRect strokeWithin(const Chord& a, const Chord& b) const;

  std::vector<Point> points_;
  std::vector<DeviceRect> boxes_;  // of the chords that begin at the points, where their runs have them
  std::vector<Run> runs_;
  std::vector<Line> lines_;
  double pixel_ = 1;  // its size
  double reach_ = 0;  // of the stroke from the line
  double beyondEnds_ = 0, miterLimit_ = 1;
  long testsLeft_ = 0;
};

}  // namespace tessaluna::backend::raster
