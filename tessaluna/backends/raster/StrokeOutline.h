// Makes polygons of lines that a pen is moved along: filled by the non-zero rule they cover what the pen covers.
//
// The pen's way is made of pieces that all go the same way round: one for each chord, a wedge on the outer side of each bend, and
// caps. Their sides add up to one ring or two, which on the inner side of a bend go by the line's own point. So no place has a
// winding number below zero, and none that a piece covers has zero, however often the line comes near itself.
#pragma once

#include <span>
#include <vector>

#include "tessaluna/backends/raster/Polygons.h"
#include "tessaluna/backends/raster/StrokePoint.h"

namespace tessaluna::backend::raster {

class StrokeOutline {
 public:
  // What follows goes to these polygons, in the line's space.
  void begin(const Pen& pen, Polygons& polygons);

  // At least two points, all of them apart from the next; the rest of them is completed.
  void add(std::span<StrokePoint> line, Contour contour);
  // For round ends: a whole pen.
  void addDot(CGPoint at);

 private:
  // One of the pen's edges along a chord, between points where the line has these directions.
  struct Edge {
    CGPoint from, out, to, in;
  };
  // A turn in a point, from one direction to another, between chords of which the shorter one has this length.
  struct Turn {
    CGPoint at, in, out;
    double nearest = 0;
  };

  void findChord(StrokePoint& from, StrokePoint& to) const;
  bool isPlain(const StrokePoint& from, const StrokePoint& to) const;
  void findSide(const StrokePoint& before, StrokePoint& p);
  void addOpen(std::span<const StrokePoint> line);
  void addRings(std::span<StrokePoint> line);
  void keepCovered(std::span<StrokePoint> line);
  void pass(const StrokePoint& before, const StrokePoint& p);
  void passBack(const StrokePoint& before, const StrokePoint& p);
  void goAlong(const StrokePoint& from, const StrokePoint& to);
  void goBack(const StrokePoint& from, const StrokePoint& to);
  void addCorner(const Turn& turn);
  void addBend(CGPoint at, CGPoint in, CGPoint out);
  void addEdge(const Edge& edge);
  void addArc(CGPoint at, CGPoint in, CGPoint out);
  void addCap(CGPoint at, CGPoint inward);
  void putEdge(CGPoint at, CGPoint direction);
  void putPoint(CGPoint p);

  bool isGentle(CGPoint in, CGPoint out) const;
  bool hasMiter(CGPoint in, CGPoint out) const;
  bool mayCut(const Turn& turn) const;
  CGPoint cornerOf(CGPoint in, CGPoint out) const;

  Pen pen_;
  double pixels_ = 1;   // half the pen's width, in device pixels
  double arcStep_ = 1;  // the angle of an arc's chord
  Polygons* polygons_ = nullptr;
  bool isSmooth_ = true;  // the line has one corner a side at every point
  bool isNewRing_ = true;
};

}  // namespace tessaluna::backend::raster
