#include "tessaluna/platform/graphics/NSBezierPath.h"

#include "tessaluna/platform/graphics/CGContext.h"
#include "tessaluna/platform/graphics/NSAffineTransform.h"
#include "tessaluna/platform/graphics/NSGraphicsContext.h"

namespace tessaluna::platform {

const ClassInfo NSBezierPath::staticClassInfo{.name = "NSBezierPath", .base = &NSObject::staticClassInfo};

// Not in the class: there it would let a maker clear the whole object first, with the room for its points.
NSBezierPath::NSBezierPath() = default;

Ref<NSBezierPath> NSBezierPath::bezierPath() { return make<NSBezierPath>(); }

Ref<NSBezierPath> NSBezierPath::bezierPathWithRect(CGRect rect) { return make<NSBezierPath>(backend::Path::rect, rect); }

Ref<NSBezierPath> NSBezierPath::bezierPathWithOvalInRect(CGRect rect) {
  return make<NSBezierPath>(backend::Path::oval, rect);
}

Ref<NSBezierPath> NSBezierPath::bezierPathWithRoundedRect(CGRect rect, CGFloat xRadius, CGFloat yRadius) {
  return make<NSBezierPath>(backend::Path::roundedRect, rect, CGSize{xRadius, yRadius});
}

void NSBezierPath::lineToPoint(CGPoint point) {
  if (!path_.hasCurrentPoint()) stopProgram("NSBezierPath: lineToPoint: without a current point");
  path_.lineTo(point);
}

void NSBezierPath::curveToPoint(CGPoint point, CGPoint controlPoint1, CGPoint controlPoint2) {
  if (!path_.hasCurrentPoint()) stopProgram("NSBezierPath: curveToPoint: without a current point");
  path_.curveTo(point, controlPoint1, controlPoint2);
}

std::span<CGPoint> NSBezierPath::appendSegments(std::span<const backend::PathVerb> verbs, std::size_t pointCount) {
  const bool hadCurrentPoint = path_.hasCurrentPoint();
  const std::span<CGPoint> points = path_.append(verbs, pointCount);
  if (!hadCurrentPoint && !path_.isEmpty() && path_.verbs().front() != backend::PathVerb::Move)
    stopProgram("NSBezierPath: appendSegments: without a current point");
  return points;
}

void NSBezierPath::transformUsingAffineTransform(const NSAffineTransform& transform) { path_.transform(transform.matrix()); }

Ref<NSBezierPath> NSBezierPath::copy() const {
  auto copy = make<NSBezierPath>(path_);
  copy->dash_ = dash_;
  copy->dashPhase_ = dashPhase_;
  copy->lineWidth_ = lineWidth_;
  copy->miterLimit_ = miterLimit_;
  copy->lineCapStyle_ = lineCapStyle_;
  copy->lineJoinStyle_ = lineJoinStyle_;
  copy->windingRule_ = windingRule_;
  return copy;
}

void NSBezierPath::setLineDash(std::span<const CGFloat> pattern, CGFloat phase) {
  dash_.assign(pattern.begin(), pattern.end());
  dashPhase_ = phase;
}

backend::FillRule NSBezierPath::fillRule() const {
  return windingRule_ == NSEvenOddWindingRule ? backend::FillRule::EvenOdd : backend::FillRule::NonZero;
}

void NSBezierPath::fill() const {
  if (CGContext* context = NSGraphicsContext::currentCGContextIfAny()) context->fillPath(path_, fillRule());
}

void NSBezierPath::stroke() const {
  CGContext* context = NSGraphicsContext::currentCGContextIfAny();
  if (!context) return;
  context->strokePath(path_, {.width = lineWidth_,
                              .cap = static_cast<backend::LineCap>(lineCapStyle_),
                              .join = static_cast<backend::LineJoin>(lineJoinStyle_),
                              .miterLimit = miterLimit_,
                              .dash = dash_,
                              .dashPhase = dashPhase_});
}

void NSBezierPath::addClip() const {
  if (CGContext* context = NSGraphicsContext::currentCGContextIfAny()) context->clipPath(path_, fillRule());
}

}  // namespace tessaluna::platform
