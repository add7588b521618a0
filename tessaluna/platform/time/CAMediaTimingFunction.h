// The pace of an animation: a cubic Bezier curve from (0, 0) to (1, 1), across the share of the duration that has passed and
// upward the share of the way. Immutable.
#pragma once

#include <string_view>

#include "tessaluna/platform/foundation/Geometry.h"
#include "tessaluna/platform/foundation/NSObject.h"

namespace tessaluna::platform {

inline constexpr std::string_view kCAMediaTimingFunctionLinear = "linear";
inline constexpr std::string_view kCAMediaTimingFunctionEaseIn = "easeIn";
inline constexpr std::string_view kCAMediaTimingFunctionEaseOut = "easeOut";
inline constexpr std::string_view kCAMediaTimingFunctionEaseInEaseOut = "easeInEaseOut";
inline constexpr std::string_view kCAMediaTimingFunctionDefault = "default";

class CAMediaTimingFunction : public NSObject {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  // One of the five names above; another stops the program.
  static Ref<CAMediaTimingFunction> functionWithName(std::string_view name);
  // The abscissas are brought into 0 to 1, so that the curve never runs back in time. The ordinates may lie anywhere: the
  // animation then goes beyond its ends.
  static Ref<CAMediaTimingFunction> functionWithControlPoints(CGPoint first, CGPoint second);
  CAMediaTimingFunction(CGPoint first, CGPoint second);

  // 0 and 3 are the ends, 1 and 2 the points between. Another index stops the program.
  CGPoint getControlPointAtIndex(int index) const;

  // The share of the way at a share of the time; before 0 and after 1 that of the end.
  double valueAt(double time) const;

 private:
  double parameterAt(double time) const;

  CGPoint first_, second_;
};

}  // namespace tessaluna::platform
