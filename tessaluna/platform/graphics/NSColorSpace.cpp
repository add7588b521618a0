#include "tessaluna/platform/graphics/NSColorSpace.h"

namespace tessaluna::platform {

const ClassInfo NSColorSpace::staticClassInfo{.name = "NSColorSpace", .base = &NSObject::staticClassInfo};

Ref<NSColorSpace> NSColorSpace::genericRGBColorSpace() {
  static const Ref<NSColorSpace> space = make<NSColorSpace>(Kind::GenericRGB);
  return space;
}

Ref<NSColorSpace> NSColorSpace::sRGBColorSpace() {
  static const Ref<NSColorSpace> space = make<NSColorSpace>(Kind::SRGB);
  return space;
}

Ref<NSColorSpace> NSColorSpace::deviceRGBColorSpace() {
  static const Ref<NSColorSpace> space = make<NSColorSpace>(Kind::DeviceRGB);
  return space;
}

}  // namespace tessaluna::platform
