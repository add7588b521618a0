// How clearly a color differs from its ground.
#pragma once

#include "tessaluna/platform/backend/Canvas.h"

namespace tessaluna::platform {

// What is seen of the color on the ground.
backend::Color painted(backend::Color color, backend::Color ground);

// Of the two's brightness, from 1 for none to 21 for black on white. The color is painted on the ground first, where it is
// translucent; the ground is opaque.
double contrastRatio(backend::Color color, backend::Color ground);

}  // namespace tessaluna::platform
