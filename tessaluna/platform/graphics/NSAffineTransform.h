// A transform that is built step by step. Each step comes before those that are already there, as a change of the space that
// drawing counts in does.
#pragma once

#include "tessaluna/platform/foundation/AffineTransform.h"
#include "tessaluna/platform/foundation/NSObject.h"
#include "tessaluna/platform/graphics/Forward.h"

namespace tessaluna::platform {

class NSAffineTransform : public NSObject {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  static Ref<NSAffineTransform> transform();  // the one that changes nothing

  void translateXBy(CGFloat x, CGFloat y);
  void scaleBy(CGFloat factor) { scaleXBy(factor, factor); }
  void scaleXBy(CGFloat x, CGFloat y);
  void rotateByDegrees(CGFloat degrees);                  // counterclockwise with y up
  void appendTransform(const NSAffineTransform& other);   // after the existing ones
  void prependTransform(const NSAffineTransform& other);  // before them
  void invert();                                          // stops the program for a transform that flattens the plane

  CGPoint transformPoint(CGPoint point) const { return matrix_.apply(point); }
  CGSize transformSize(CGSize size) const;
  Ref<NSBezierPath> transformBezierPath(const NSBezierPath& path) const;  // with its stroke attributes
  void concat() const;                                                    // onto the space of the current context

  const CGAffineTransform& matrix() const { return matrix_; }

 private:
  CGAffineTransform matrix_;
};

}  // namespace tessaluna::platform
