// Names of the drawing classes, for headers that only pass them on.
#pragma once

#include "platform/foundation/Reference.h"

namespace platform {

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

}  // namespace platform
