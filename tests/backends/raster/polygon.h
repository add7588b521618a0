// Paths of straight lines from point to point.
#pragma once

#include <initializer_list>

#include "tessaluna/platform/backend/Path.h"

namespace tessaluna::backend::raster::test {

inline Path polyline(std::initializer_list<CGPoint> points) {
  Path path;
  for (const CGPoint& p : points) path.isEmpty() ? path.moveTo(p) : path.lineTo(p);
  return path;
}

inline Path polygon(std::initializer_list<CGPoint> points) {
  Path path = polyline(points);
  path.close();
  return path;
}

}  // namespace tessaluna::backend::raster::test
