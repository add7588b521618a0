// A shadow: a color, an offset in base space (y up) and a blur radius. set makes it the shadow of the current context.
#pragma once

#include "tessaluna/platform/foundation/Geometry.h"
#include "tessaluna/platform/foundation/NSObject.h"
#include "tessaluna/platform/graphics/Forward.h"

namespace tessaluna::platform {

class NSShadow : public NSObject {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  // Black at a third of its strength, no offset, no blur.
  NSShadow();
  // The color may be null: set then takes the shadow away.
  NSShadow(Ref<NSColor> color, CGSize offset, CGFloat blurRadius);

  const Ref<NSColor>& shadowColor() const { return shadowColor_; }
  CGSize shadowOffset() const { return shadowOffset_; }
  CGFloat shadowBlurRadius() const { return shadowBlurRadius_; }
  void setShadowColor(Ref<NSColor> color) { shadowColor_ = std::move(color); }
  void setShadowOffset(CGSize offset) { shadowOffset_ = offset; }
  void setShadowBlurRadius(CGFloat radius) { shadowBlurRadius_ = radius; }

  void set() const;

 private:
  Ref<NSColor> shadowColor_;
  CGSize shadowOffset_;
  CGFloat shadowBlurRadius_ = 0;
};

}  // namespace tessaluna::platform
