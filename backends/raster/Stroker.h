// Makes the outline of a stroke: polygons that, filled by the non-zero rule, cover what the pen covers. Caps,
// joins and dashes are made in the path's own space and then transformed, so that a transform that is not
// uniform bends the pen.
#pragma once

#include <vector>

#include "agg_math_stroke.h"
#include "backends/raster/Flattener.h"
#include "backends/raster/NearLines.h"
#include "backends/raster/Polygons.h"
#include "platform/backend/Canvas.h"

namespace backend::raster {

// A point of the line to stroke, with the distance to the next one.
struct StrokePoint : agg::vertex_dist {
  StrokePoint(CGPoint p, Corner corner) : vertex_dist(p.x, p.y), corner(corner) {}

  Corner corner = Corner::Sharp;
  // The directions, of length 1, in which the line arrives and leaves. Zero until it is known: as the chord
  // goes.
  CGPoint in, out;
  CGPoint chord;  // to the next point
  // From the point to the outline's corner on the left of the line. That on the right lies opposite; where one corner a
  // side does not do, it is not known.
  std::optional<CGPoint> side;
};

class Stroker {
 public:
  // Adds the outline to `polygons`, in device pixels. What lies outside the visible rectangle may be missing.
  //
  // Overlaps are likely where a thin line comes near itself.
  Overlaps stroke(const Path& path, const StrokeStyle& style, const CGAffineTransform& toDevice,
                  const DeviceRect& visible, Polygons& polygons);

 private:
  friend class Flattener<Stroker>;
  enum class Contour { Open, Closed };

  // Where the joins and caps that AGG computes go to.
  class Outline {
   public:
    using value_type = agg::point_d;
    void begin() { isNew_ = true; }
    void remove_all() {}
    void add(const value_type& p);

    CGAffineTransform toDevice;
    Polygons* polygons = nullptr;

   private:
    bool isNew_ = true;
  };

  void setPen(const StrokeStyle& style, double deviceScale);
  void setDashes(const StrokeStyle& style, double deviceScale);

  // Told by the flattener.
  void moveTo(CGPoint p);
  void lineTo(CGPoint p, Corner corner);
  void leave(CGPoint direction) { points_.back().out = unit(direction); }
  void arrive(CGPoint direction) { points_.back().in = unit(direction); }
  void close() { finishContour(Contour::Closed); }
  static CGPoint unit(CGPoint v);

  void finishContour(Contour contour);
  void walkContour(Contour contour);
  void walkSegment(std::size_t point);  // from it to the next one
  CGPoint directionAt(std::size_t point, double part) const;
  struct Visible;
  std::optional<Visible> visiblePart(const StrokePoint& from, const StrokePoint& to) const;
  void skip(double length);
  void nextDash();
  void finishPiece();

  void outline(std::vector<StrokePoint>& line, Contour contour);
  void outlineDot(CGPoint at);
  // A corner of the outline's left side, for a line that comes in and goes out in these directions.
  struct Bend {
    CGPoint at, in, out;
    double inLength, outLength;
    Corner corner;
  };
  bool turns(CGPoint in, CGPoint out, double length) const;
  std::optional<double> gentleFactor(const Bend& bend) const;
  void findSide(const StrokePoint& before, StrokePoint& at) const;
  void addJoin(const Bend& bend);
  void turn(const StrokePoint& at, CGPoint in, CGPoint out, double length);
  void addCap(CGPoint at, CGPoint inward);

  agg::math_stroke<Outline> pen_;
  Outline outline_;
  LineCap cap_ = LineCap::Butt;
  agg::line_join_e join_ = agg::miter_join_revert;
  double halfWidth_ = 0, arcTolerance_ = 0;
  double tolerance_ = 0;  // a distance too short to be seen, in the path's space
  DeviceRect reach_;      // what lies outside cannot be seen, in the path's space
  std::vector<StrokePoint> points_, piece_;
  bool isThin_ = false;  // a stroke that may overlap itself without filling a pixel
  NearLines near_;       // all of its lines

  std::vector<double> dashes_;  // on and off in turn; empty for a solid line
  double dashTotal_ = 0, dashPhase_ = 0;
  int dashesLeft_ = 0;  // that may still be made
  std::size_t dash_ = 0;
  bool isOn_ = true;
  double rest_ = 0;  // of the dash or gap that is being walked
};

}  // namespace backend::raster
