#include "tessaluna/platform/cells/buttonBox.h"

#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NeutralAxis.h"

namespace tessaluna::platform {

Ref<NSBezierPath> buttonBoxPath(CGRect frame) {
  constexpr CGFloat radius = 5;
  return NSBezierPath::bezierPathWithRoundedRect(NSInsetRect(frame, 0.5, 0.5), radius, radius);
}

Ref<NSColor> buttonFaceColor(ButtonBoxLook look) {
  // One that is down differs from the others on a dark palette, too, where black would hardly show.
  const Ref<NSColor> down = NeutralAxis::ofPalette().isDark() ? NSColor::whiteColor() : NSColor::blackColor();
  return NSColor::controlColor()->blendedColorWithFraction(look.isDown ? 0.2 : 0, down);
}

Ref<NSColor> buttonEdgeColor(ButtonBoxLook look) {
  return NSColor::controlTextColor()->colorWithAlphaComponent(look.isEnabled ? 0.35 : 0.15);
}

void drawButtonBox(CGRect frame, ButtonBoxLook look) {
  const Ref<NSBezierPath> box = buttonBoxPath(frame);
  buttonFaceColor(look)->setFill();
  box->fill();
  buttonEdgeColor(look)->setStroke();
  box->stroke();
}

}  // namespace tessaluna::platform
