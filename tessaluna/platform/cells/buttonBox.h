// The rounded box of stock buttons.
#pragma once

#include "tessaluna/platform/foundation/Geometry.h"
#include "tessaluna/platform/graphics/Forward.h"
#include "tessaluna/platform/graphics/NSBezierPath.h"

namespace tessaluna::platform {

struct ButtonBoxLook {
  bool isDown = false, isEnabled = true;
};

// The outline, half a point inside, so that a stroke of one point falls on whole points.
Ref<NSBezierPath> buttonBoxPath(CGRect frame);
Ref<NSColor> buttonFaceColor(ButtonBoxLook look);
Ref<NSColor> buttonEdgeColor(ButtonBoxLook look);
void drawButtonBox(CGRect frame, ButtonBoxLook look);

}  // namespace tessaluna::platform
