// How a failed expectation prints values of the platform layer.
#pragma once

#include <ostream>

#include "tessaluna/platform/foundation/AffineTransform.h"
#include "tessaluna/platform/foundation/Geometry.h"

namespace tessaluna::platform {

inline void PrintTo(CGPoint p, std::ostream* out) { *out << "(" << p.x << ", " << p.y << ")"; }
inline void PrintTo(CGSize s, std::ostream* out) { *out << s.width << " by " << s.height; }
inline void PrintTo(CGRect r, std::ostream* out) {
  out->precision(17);
  *out << "(" << r.origin.x << ", " << r.origin.y << ", " << r.size.width << ", " << r.size.height << ")";
}
inline void PrintTo(const CGAffineTransform& t, std::ostream* out) {
  *out << "[" << t.a << " " << t.b << " " << t.c << " " << t.d << " " << t.tx << " " << t.ty << "]";
}

}  // namespace tessaluna::platform
