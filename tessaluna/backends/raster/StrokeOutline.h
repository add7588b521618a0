// Makes polygons of lines that a pen is moved along: filled by the non-zero rule they cover what the pen covers. They overlap
// only where the line comes near itself. Behind a corner, and in a bend narrower than the pen, the inner side is cut off where it
// meets itself, unless the cut would go over two corners, between which there may be a hole.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "tessaluna/backends/raster/Polygons.h"
#include "tessaluna/backends/raster/StrokePoint.h"

namespace tessaluna::backend::raster {

class StrokeOutline {
 public:
  // What follows goes to these polygons, in the line's space.
  void begin(const Pen& pen, Polygons& polygons);

  // At least two points, all of them apart from the next; their directions are completed.
  void add(std::span<StrokePoint> line, Contour contour);
  // For round ends: a whole pen.
  void addDot(CGPoint at);

 private:
  // A corner of the side that is being made, for a line that comes in and goes out in these directions.
  struct Bend {
    CGPoint at, in, out;
    Corner corner;
    bool isTight = false;  // on the inner side the pen's edge may go back
  };
  // How the pen comes to a point and leaves it; the chords are zero where it does not follow them.
  struct Passage {
    CGPoint at, chordIn, in, out, chordOut;
    Corner corner;
  };

  void completeDirections(std::span<StrokePoint> line, Contour contour);
  void completeChord(StrokePoint& from, StrokePoint& to) const;
  void findSide(const StrokePoint& before, StrokePoint& p);
  StrokePoint::Sides sidesAlongChord(double turn, double squaredLength, double across) const;
  std::optional<CGPoint> sideOf(const Bend& bend) const;
  void addOpen(std::span<const StrokePoint> line);
  void addSmoothRings(std::span<const StrokePoint> line);
  void addRings(std::span<const StrokePoint> line);
  void pass(const StrokePoint& before, const StrokePoint& p);
  void passBack(const StrokePoint& before, const StrokePoint& p);
  void goThrough(const Passage& passage);
  void addBend(const Bend& bend);
  void addJoin(const Bend& bend);
  void addInnerBend(const Bend& bend);
  void addArc(CGPoint at, CGPoint in, CGPoint out);
  void addCap(CGPoint at, CGPoint inward);

  void beginRing();
  void finishRing();
  void beginSide();  // what was made before is not cut any more
  void putPoint(CGPoint p);
  void addSidePoint(CGPoint p, CGPoint direction);
  void fold();
  void cutFold(CGPoint to);
  bool coverCorner(CGPoint in, CGPoint out) const;
  bool isHole(std::size_t first, CGPoint meeting) const;

  Pen pen_;
  double pixelsPerLength_ = 1;
  double arcStep_ = 1;  // the angle of an arc's chord
  Polygons* polygons_ = nullptr;
  bool isSmooth_ = true;  // the line has one corner a side at every point
  bool isNewRing_ = true;
  std::size_t ringStart_ = 0, sideStart_ = 0;  // indices of their first points
  // A fold is what the side does from the point after which it first goes back, until it is cut.
  bool isFolded_ = false, hasFoldCorner_ = false;
  std::size_t foldStart_ = 0, sidesAfterFold_ = 0;
};

}  // namespace tessaluna::backend::raster
