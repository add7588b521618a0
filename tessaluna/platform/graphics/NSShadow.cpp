#include "tessaluna/platform/graphics/NSShadow.h"

#include "tessaluna/platform/graphics/CGContext.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSGraphicsContext.h"

namespace tessaluna::platform {

const ClassInfo NSShadow::staticClassInfo{.name = "NSShadow", .base = &NSObject::staticClassInfo};

NSShadow::NSShadow() : shadowColor_(NSColor::blackColor()->colorWithAlphaComponent(1.0 / 3)) {}

NSShadow::NSShadow(Ref<NSColor> color, CGSize offset, CGFloat blurRadius)
    : shadowColor_(std::move(color)), shadowOffset_(offset), shadowBlurRadius_(blurRadius) {}

void NSShadow::set() const {
  CGContext* context = NSGraphicsContext::currentCGContextIfAny();
  if (!context) return;
  CGContextSetShadowWithColor(*context, shadowOffset_, shadowBlurRadius_, shadowColor_.get());
}

}  // namespace tessaluna::platform
