// What several glyphs share: how a color is written, the kit's shadow, the gradient of the transport bar, and the soft
// shadow along the inside of a shape's edge. Each call makes its objects again and keeps none.
#pragma once

#include "tessaluna/platform/graphics/CGContext.h"
#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSGradient.h"
#include "tessaluna/platform/graphics/NSGraphicsContext.h"
#include "tessaluna/platform/graphics/NSShadow.h"
#include "tessaluna/uikit/stylekit/Listing.h"
#include "tessaluna/uikit/stylekit/SnappedEdges.h"

namespace TessalunaUIKit::recipes {

// A literal color of the kit, in calibrated RGB.
inline tessaluna::platform::Ref<tessaluna::platform::NSColor> color(double red, double green, double blue, double alpha) {
  return tessaluna::platform::NSColor::colorWithCalibratedRed(red, green, blue, alpha);
}

// (0.167, 0.167, 0.167, 1), offset (1, -1), blur radius 1.5. It only ever feeds the inner shadow.
tessaluna::platform::Ref<tessaluna::platform::NSShadow> kitShadow();

// From dark gray at the bottom to a medium gray at the top, to be drawn at 90 degrees.
tessaluna::platform::Ref<tessaluna::platform::NSGradient> transportGradient();

// A soft shadow along the inside of the path's edge, over what the path has just been filled with. It runs in full also
// when the shadow's color is clear and it leaves no mark.
void drawInnerShadow(tessaluna::platform::CGContext& context, const tessaluna::platform::NSBezierPath& path,
                     const tessaluna::platform::NSShadow& shadow);

}  // namespace TessalunaUIKit::recipes
