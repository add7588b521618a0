// Makes the outline of a stroke: polygons that, filled by the non-zero rule, cover what the pen covers. It cuts the path's
// lines into dashes and to the visible part, and passes them on as points. A pen that the transform keeps round is moved
// along the line in device space; otherwise caps, joins and dashes are made in the path's own space and then transformed.
#pragma once

#include "tessaluna/backends/raster/StrokeOutline.h"

namespace tessaluna::backend::raster {

class Stroker {
 public:
  // Adds the outline to `polygons`, in device pixels. Parts outside the visible rectangle may be missing; true if nothing
  // is.
  bool stroke(const Path& path, const StrokeStyle& style, const CGAffineTransform& toDevice, const DeviceRect& visible,
              Polygons& polygons);

 private:
  friend class Flattener<Stroker>;
  static constexpr bool wantsDirections = true;

  void setPen(const StrokeStyle& style);
  void setDashes(const StrokeStyle& style);

  // The flattener calls these.
  void moveTo(CGPoint p);
  void lineTo(CGPoint p, Corner corner) { add({p, corner}); }
  void curvePoint(CGPoint p, CGPoint direction);
  void leave(CGPoint direction) { points_.back().out = kept(direction); }
  void arrive(CGPoint direction) {
    if (!isDouble_) points_.back().in = kept(direction);
  }
  void close() { finishContour(Contour::Closed); }

  // Dashes keep how far the curve would go at its speed there in the time of a chord, from which they know the curve.
  CGPoint kept(CGPoint direction) const { return dashes_.empty() ? unit(direction) : direction; }
  void add(const StrokePoint& p);
  bool mergeDouble(StrokePoint& last, const StrokePoint& p) const;
  void finishContour(Contour contour);
  void walkContour(Contour contour);
  void walkSegment(const StrokePoint& from, const StrokePoint& to);
  struct Visible;
  std::optional<Visible> visiblePart(const StrokePoint& from, const StrokePoint& to) const;
  void skip(double length);
  void nextDash();
  void goToNextDash();
  void finishPiece();
  void outline(std::span<StrokePoint> line, Contour contour);
  void outlineDot(const StrokePoint& p);

  StrokeOutline outline_;
  Pen pen_;
  Polygons* polygons_ = nullptr;
  double perLength_ = 1;  // the scale from the path's space to the line's
  double nearest_ = 0;    // a distance too short to be visible
  DeviceRect reach_;      // what lies outside is not visible
  std::vector<StrokePoint> points_, piece_;
  bool isDouble_ = false;                // the point added last was merged with the one before
  std::optional<std::size_t> firstFar_;  // the first point out of reach
  bool isWhole_ = true;                  // no point has been out of reach so far

  std::vector<double> dashes_;  // on and off alternating; empty for a solid line
  double dashTotal_ = 0, dashPhase_ = 0;
  int dashesLeft_ = 0;  // how many more may be made
  std::size_t dash_ = 0;
  bool isOn_ = true;
  double rest_ = 0;  // of the current dash or gap
};

}  // namespace tessaluna::backend::raster
