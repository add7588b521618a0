// Points without their fraction, for the places of links.
#pragma once

#include <cstdint>

#include "tessaluna/platform/foundation/Geometry.h"
#include "tessaluna/platform/foundation/stopProgram.h"

namespace TessalunaUIKit {

// Toward zero. A number that no integer holds stops the program.
inline std::int64_t wholePoints(tessaluna::platform::CGFloat x) {
  constexpr tessaluna::platform::CGFloat limit = 0x1p63;
  if (!(x >= -limit && x < limit))
    tessaluna::platform::stopProgram("MultipleLinksTextField: a place in points that no integer holds");
  return static_cast<std::int64_t>(x);
}

}  // namespace TessalunaUIKit
