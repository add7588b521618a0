// The space that a color's components count in. Components of calibrated, device and sRGB colors go to the pixels
// unchanged, so a space is a name that distinguishes two colors, not a conversion.
#pragma once

#include "tessaluna/platform/foundation/NSObject.h"

namespace tessaluna::platform {

class NSColorSpace : public NSObject {
 public:
  enum class Kind {
    CalibratedRGB,
    CalibratedWhite,
    DeviceRGB,
    DeviceWhite,
    SRGB,
    GenericRGB,
    Named,    // of the system's catalog: control text, selection, ...
    Pattern,  // an image, laid side by side
  };

  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  // One object each.
  static Ref<NSColorSpace> genericRGBColorSpace();
  static Ref<NSColorSpace> sRGBColorSpace();
  static Ref<NSColorSpace> deviceRGBColorSpace();

  explicit NSColorSpace(Kind kind) : kind_(kind) {}
  Kind kind() const { return kind_; }

 private:
  Kind kind_;
};

}  // namespace tessaluna::platform
