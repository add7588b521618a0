// Whether a view shows that it has the keyboard.
#pragma once

#include "tessaluna/platform/foundation/EnumNames.h"

namespace tessaluna::platform {

enum NSFocusRingType {
  NSFocusRingTypeDefault = 0,  // as Exterior
  NSFocusRingTypeNone = 1,
  NSFocusRingTypeExterior = 2,
};

template <>
struct EnumNames<NSFocusRingType> {
  static constexpr NamedValue all[] = {
      {"default", NSFocusRingTypeDefault}, {"none", NSFocusRingTypeNone}, {"exterior", NSFocusRingTypeExterior}};
};

}  // namespace tessaluna::platform
