// How much a constraint counts, and along which axis. A priority of 1000 must be kept; lower ones are wishes, of which higher
// ones come first however many lower ones they cost.
#pragma once

#include "tessaluna/platform/foundation/languageVersion.h"

namespace tessaluna::platform {

using NSLayoutPriority = double;
inline constexpr NSLayoutPriority NSLayoutPriorityRequired = 1000;
inline constexpr NSLayoutPriority NSLayoutPriorityDefaultHigh = 750;
inline constexpr NSLayoutPriority NSLayoutPriorityDefaultLow = 250;
inline constexpr NSLayoutPriority NSLayoutPriorityFittingSizeCompression = 50;

enum NSLayoutConstraintOrientation {
  NSLayoutConstraintOrientationHorizontal = 0,
  NSLayoutConstraintOrientationVertical = 1,
};

}  // namespace tessaluna::platform
