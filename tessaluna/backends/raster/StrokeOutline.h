// Makes polygons from lines along which a pen moves: filled by the non-zero rule, they cover what the pen covers. They
// overlap only where the line comes near itself. At a corner, and in a bend narrower than the pen, the inner side is cut off
// where it meets itself, unless the cut would span two corners, between which there may be a hole.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "tessaluna/backends/raster/Polygons.h"
#include "tessaluna/backends/raster/StrokePoint.h"

namespace tessaluna::backend::raster {

class StrokeOutline {
 public:
  // Starts an outline in the line's space, which is added to `polygons`.
  void begin(const Pen& pen, Polygons& polygons);

  // The line has at least two points, and no two neighbours coincide. Missing directions are filled in.
  void add(std::span<StrokePoint> line, Contour contour);
  // Adds a full circle of the pen, for a line without length and with round caps.
  void addDot(CGPoint at);

 private:
  // A corner of the current side, for a line that arrives and leaves in these directions.
  struct Bend {
    CGPoint at, in, out;
    Corner corner;
    bool isTight = false;  // the pen's edge may go backwards on the inner side
    bool comesCurved = false, goesCurved = false;
  };
  // How the pen arrives at a point and leaves it; the chords are zero if it does not follow them.
  struct Passage {
    CGPoint at, chordIn, in, out, chordOut;
    Corner corner;
    bool comesCurved, goesCurved;
  };

  // The line between two points, with its directions there.
  struct Edge {
    CGPoint from, out, to, in;
  };

  void completeDirections(std::span<StrokePoint> line, Contour contour);
  void completeChord(StrokePoint& from, StrokePoint& to) const;
  void findSide(const StrokePoint& before, StrokePoint& p);
  StrokePoint::Sides sidesAlongChord(double turn, double squaredLength, double across) const;
  bool isTwisted(const StrokePoint& from, const StrokePoint& to) const;
  std::optional<CGPoint> sideOf(const Bend& bend) const;
  void addOpen(std::span<const StrokePoint> line);
  void addSmoothRings(std::span<const StrokePoint> line);
  void addRings(std::span<const StrokePoint> line);
  void pass(const StrokePoint& before, const StrokePoint& p);
  void passBack(const StrokePoint& before, const StrokePoint& p);
  void goThrough(const Passage& passage);
  void goAlong(const StrokePoint& from, const StrokePoint& to);
  void goBack(const StrokePoint& from, const StrokePoint& to);
  void addTwist(const Edge& edge);
  void addBend(const Bend& bend);
  void addJoin(const Bend& bend);
  void addInnerBend(const Bend& bend);
  void addArc(CGPoint at, CGPoint in, CGPoint out);
  void addCap(CGPoint at, CGPoint inward);

  void beginRing();
  void finishRing();
  void beginSide();  // earlier points are no longer cut
  void putPoint(CGPoint p);
  void addSidePoint(CGPoint p, CGPoint direction);
  void fold();
  void cutFold(CGPoint to);
  bool coverCorner(CGPoint in, CGPoint out) const;
  bool isShort(std::size_t first, CGPoint meeting) const;
  bool isHole(std::size_t first, CGPoint meeting) const;

  Pen pen_;
  double pixelsPerLength_ = 1;
  double arcStep_ = 1;  // the angle of an arc's chord
  Polygons* polygons_ = nullptr;
  bool isSmooth_ = true;  // the line has one corner per side at every point
  bool isNewRing_ = true;
  std::size_t ringStart_ = 0, sideStart_ = 0;  // indices of their first points
  // A fold begins at the point after which the side first goes backwards, and ends where it is cut.
  bool isFolded_ = false, hasFoldCorner_ = false;
  std::size_t foldStart_ = 0, sidesAfterFold_ = 0;
};

}  // namespace tessaluna::backend::raster
