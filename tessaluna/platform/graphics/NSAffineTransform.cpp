#include "tessaluna/platform/graphics/NSAffineTransform.h"

#include <cmath>
#include <numbers>

#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/graphics/NSGraphicsContext.h"

namespace tessaluna::platform {

const ClassInfo NSAffineTransform::staticClassInfo{.name = "NSAffineTransform", .base = &NSObject::staticClassInfo};

Ref<NSAffineTransform> NSAffineTransform::transform() { return make<NSAffineTransform>(); }

void NSAffineTransform::translateXBy(CGFloat x, CGFloat y) { matrix_ = CGAffineTransform::translation(x, y).then(matrix_); }

void NSAffineTransform::scaleXBy(CGFloat x, CGFloat y) { matrix_ = CGAffineTransform::scale(x, y).then(matrix_); }

void NSAffineTransform::rotateByDegrees(CGFloat degrees) {
  const CGFloat radians = degrees * std::numbers::pi / 180, sine = std::sin(radians), cosine = std::cos(radians);
  matrix_ = CGAffineTransform{cosine, sine, -sine, cosine, 0, 0}.then(matrix_);
}

void NSAffineTransform::appendTransform(const NSAffineTransform& other) { matrix_ = matrix_.then(other.matrix_); }
void NSAffineTransform::prependTransform(const NSAffineTransform& other) { matrix_ = other.matrix_.then(matrix_); }

void NSAffineTransform::invert() {
  const std::optional<CGAffineTransform> inverse = matrix_.inverted();
  if (!inverse) stopProgram("NSAffineTransform: a transform that flattens the plane has no inverse");
  matrix_ = *inverse;
}

CGSize NSAffineTransform::transformSize(CGSize size) const {
  return {matrix_.a * size.width + matrix_.c * size.height, matrix_.b * size.width + matrix_.d * size.height};
}

Ref<NSBezierPath> NSAffineTransform::transformBezierPath(const NSBezierPath& path) const {
  const auto result = path.copy();
  result->transformUsingAffineTransform(*this);
  return result;
}

void NSAffineTransform::concat() const {
  if (CGContext* context = NSGraphicsContext::currentCGContextIfAny()) context->concat(matrix_);
}

}  // namespace tessaluna::platform
