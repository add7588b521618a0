// An outline that is built point by point, filled, stroked or clipped to. It holds its own stroke attributes; fill and
// stroke use the colors set last in the current context and do nothing without one.
#pragma once

#include <span>
#include <vector>

#include "tessaluna/platform/backend/Path.h"
#include "tessaluna/platform/foundation/NSObject.h"
#include "tessaluna/platform/graphics/Forward.h"

namespace tessaluna::platform {

enum NSLineCapStyle { NSButtLineCapStyle = 0, NSRoundLineCapStyle = 1, NSSquareLineCapStyle = 2 };
enum NSLineJoinStyle { NSMiterLineJoinStyle = 0, NSRoundLineJoinStyle = 1, NSBevelLineJoinStyle = 2 };
enum NSWindingRule { NSNonZeroWindingRule = 0, NSEvenOddWindingRule = 1 };

class NSBezierPath : public NSObject {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  static Ref<NSBezierPath> bezierPath();
  static Ref<NSBezierPath> bezierPathWithRect(CGRect rect);
  static Ref<NSBezierPath> bezierPathWithOvalInRect(CGRect rect);
  // A radius beyond half of its side is cut to that half.
  static Ref<NSBezierPath> bezierPathWithRoundedRect(CGRect rect, CGFloat xRadius, CGFloat yRadius);

  NSBezierPath();
  explicit NSBezierPath(backend::Path path) : path_(std::move(path)) {}
  // Of a figure that is made in its place: make<NSBezierPath>(backend::Path::oval, rect).
  template <class... Arguments>
  explicit NSBezierPath(backend::Path (&figure)(Arguments...), const Arguments&... arguments)
      : path_(figure(arguments...)) {}

  // A line or a curve needs a current point: on an empty path it stops the program. After closePath the current point is
  // the start of the subpath that was closed.
  void moveToPoint(CGPoint point) { path_.moveTo(point); }
  void lineToPoint(CGPoint point);
  void curveToPoint(CGPoint point, CGPoint controlPoint1, CGPoint controlPoint2);
  void closePath() { path_.close(); }
  void appendBezierPath(const NSBezierPath& path) { path_.append(path.path_); }
  // Many segments at once. Gives their points, in the order of path().points(), for the caller to fill in.
  std::span<CGPoint> appendSegments(std::span<const backend::PathVerb> verbs, std::size_t pointCount);

  void transformUsingAffineTransform(const NSAffineTransform& transform);
  Ref<NSBezierPath> copy() const;

  void setWindingRule(NSWindingRule rule) { windingRule_ = rule; }
  void setLineWidth(CGFloat width) { lineWidth_ = width; }                  // points; 1 initially
  void setLineCapStyle(NSLineCapStyle style) { lineCapStyle_ = style; }     // butt
  void setLineJoinStyle(NSLineJoinStyle style) { lineJoinStyle_ = style; }  // miter
  void setMiterLimit(CGFloat limit) { miterLimit_ = limit; }                // 10
  // Lengths in points, on and off in turn, starting `phase` points into the pattern. Copied; an empty one is a solid line.
  void setLineDash(std::span<const CGFloat> pattern, CGFloat phase);

  NSWindingRule windingRule() const { return windingRule_; }
  CGFloat lineWidth() const { return lineWidth_; }
  bool isEmpty() const { return path_.isEmpty(); }
  // The tight box of the outline itself, without its stroke. Zero for an empty path.
  CGRect bounds() const { return path_.bounds(); }
  const backend::Path& path() const { return path_; }

  void fill() const;
  void stroke() const;
  // Intersects the clip of the current context with the path.
  void addClip() const;

  backend::FillRule fillRule() const;

 private:
  backend::Path path_;
  std::vector<CGFloat> dash_;
  CGFloat dashPhase_ = 0;
  CGFloat lineWidth_ = 1;
  CGFloat miterLimit_ = 10;
  NSLineCapStyle lineCapStyle_ = NSButtLineCapStyle;
  NSLineJoinStyle lineJoinStyle_ = NSMiterLineJoinStyle;
  NSWindingRule windingRule_ = NSNonZeroWindingRule;
};

}  // namespace tessaluna::platform
