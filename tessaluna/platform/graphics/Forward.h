// Names of the drawing classes, for headers that only pass them on.
#pragma once

#include "tessaluna/platform/foundation/Reference.h"

namespace tessaluna::platform {

class CGContext;
class NSAffineTransform;
class NSBezierPath;
class NSColor;
class NSColorSpace;
class NSGradient;
class NSGraphicsContext;
class NSImage;
class NSImageRep;
class NSShadow;

}  // namespace tessaluna::platform
