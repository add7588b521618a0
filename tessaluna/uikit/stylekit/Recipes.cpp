#include "tessaluna/uikit/stylekit/Recipes.h"

#include "tessaluna/platform/graphics/NSRect.h"

namespace TessalunaUIKit::recipes {

using namespace tessaluna::platform;

Ref<NSShadow> kitShadow() { return make<NSShadow>(color(0.167, 0.167, 0.167, 1), CGSize{1, -1}, 1.5); }

Ref<NSGradient> transportGradient() {
  const auto end = color(0.5, 0.5, 0.5, 1);
  const auto start = NSColor::darkGrayColor();
  const Ref<NSColor> colors[] = {start, start->blendedColorWithFraction(0.5, end), end};
  constexpr CGFloat locations[] = {0, 0.43, 1};
  return make<NSGradient>(colors, locations, NSColorSpace::genericRGBColorSpace());
}

void drawInnerShadow(CGContext& context, const NSBezierPath& path, const NSShadow& shadow) {
  NSGraphicsContext::saveGraphicsState();
  NSRectClip(path.bounds());
  CGContextSetShadowWithColor(context, {0, 0}, 0, nullptr);
  CGContextSetAlpha(context, shadow.shadowColor()->alphaComponent());
  CGContextBeginTransparencyLayer(context);
  // The inner layer holds the shape in the opaque shadow's color. Composited "source out" it first leaves its shadow, which
  // lies askew under it, and then itself only where that shadow is thin: along the edge that the shadow has left.
  const auto opaque =
      make<NSShadow>(shadow.shadowColor()->colorWithAlphaComponent(1), shadow.shadowOffset(), shadow.shadowBlurRadius());
  opaque->set();
  CGContextSetBlendMode(context, kCGBlendModeSourceOut);
  CGContextBeginTransparencyLayer(context);
  opaque->shadowColor()->setFill();
  path.fill();
  CGContextEndTransparencyLayer(context);
  CGContextEndTransparencyLayer(context);
  NSGraphicsContext::restoreGraphicsState();
}

}  // namespace TessalunaUIKit::recipes
