// Makes polygons from lines along which a pen moves: filled by the non-zero rule, they cover what the pen covers. They may
// overlap themselves, but always with the same winding: an outline is the sum of the pieces that the pen sweeps between two
// points and at a corner. Since overlaps take time, a fold on the inner side of a bend is cut where the sides before and
// after it meet, if the line is long enough on both sides of it.
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
  using Way = StrokePoint::Way;
  // A corner of the current side, for a line that arrives and leaves in these directions.
  struct Bend {
    CGPoint at, in, out;
    Corner corner;
    bool comesCurved = false, goesCurved = false;
  };
  // The way of the pen between two points, with its directions there.
  struct Edge {
    CGPoint from, out, to, in;
  };

  void completeDirections(std::span<StrokePoint> line, Contour contour);
  void completeEdge(StrokePoint& from, StrokePoint& to);
  bool isTight(double turn, double squaredLength);
  void findSide(const StrokePoint& before, StrokePoint& p);
  std::optional<CGPoint> sideOf(CGPoint in, CGPoint out) const;
  void addOpen(std::span<const StrokePoint> line);
  void addRings(std::span<StrokePoint> line);
  void goAlong(const StrokePoint& from, const StrokePoint& to);
  void goBack(const StrokePoint& from, const StrokePoint& to);
  void pass(const StrokePoint& before, const StrokePoint& p);
  void passBack(const StrokePoint& before, const StrokePoint& p);
  void addTightEdge(const Edge& edge);
  void addTurn(const Edge& edge);
  void addCorner(const Bend& bend);
  void addJoin(const Bend& bend);
  void addCap(CGPoint at, CGPoint inward);
  CGPoint edgeAt(CGPoint at, CGPoint direction) const;

  void beginRing();
  void putPoint(CGPoint p);
  void putSide(CGPoint p);
  void beginSides();
  void fold(CGPoint in, CGPoint out);
  void tryCut();
  bool cutWhereSidesMeet(std::size_t first, std::size_t last);

  Pen pen_;
  double pixelsPerLength_ = 1;
  double arcStep_ = 1;  // the angle of an arc's chord
  Polygons* polygons_ = nullptr;
  double tips_ = 0;       // the width, in pixels, of tips that were left out since the line was last less tight
  bool isSmooth_ = true;  // the line has one corner per side at every point
  bool isNewRing_ = true;
  std::size_t sidesStart_ = 0;  // the sides from this point on are those of edges
  // A fold begins at the point after which the side first goes backwards, and ends where it last does. It is open until it is
  // cut or the sides after it are too long for that.
  bool isFolded_ = false, goesBackwards_ = false;
  std::size_t sidesBeforeFold_ = 0, foldStart_ = 0;
  CGPoint foldDirection_;  // in which the line comes
};

}  // namespace tessaluna::backend::raster
