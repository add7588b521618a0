// In which direction things that belong side by side follow each other.
#pragma once

#include "tessaluna/platform/foundation/EnumNames.h"

namespace tessaluna::platform {

enum NSUserInterfaceLayoutDirection {
  NSUserInterfaceLayoutDirectionLeftToRight = 0,
  NSUserInterfaceLayoutDirectionRightToLeft = 1,
};

template <>
struct EnumNames<NSUserInterfaceLayoutDirection> {
  static constexpr NamedValue all[] = {{"leftToRight", NSUserInterfaceLayoutDirectionLeftToRight},
                                       {"rightToLeft", NSUserInterfaceLayoutDirectionRightToLeft}};
};

}  // namespace tessaluna::platform
