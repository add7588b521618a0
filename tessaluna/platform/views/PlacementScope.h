// While it lives, the frame or the bounds' origin that this view is given is where a layout puts it, which is not the program's
// wish: an animation of it continues.
#pragma once

#include <utility>

#include "tessaluna/platform/views/Forward.h"

namespace tessaluna::platform {

class PlacementScope {
 public:
  explicit PlacementScope(const NSView& view) : outer_(std::exchange(placedView, &view)) {}
  ~PlacementScope() { placedView = outer_; }
  PlacementScope(const PlacementScope&) = delete;
  PlacementScope& operator=(const PlacementScope&) = delete;
  static bool isPlacing(const NSView& view) { return placedView == &view; }

 private:
  static inline const NSView* placedView = nullptr;
  const NSView* outer_;
};

}  // namespace tessaluna::platform
