// What a view derives from, beside NSView, that lies over another one and has the keyboard for it: the ring shows as it would around
// that other view.
#pragma once

#include "tessaluna/platform/graphics/Forward.h"
#include "tessaluna/platform/views/Forward.h"

namespace tessaluna::platform {

class FocusRingSurroundings {
 public:
  virtual ~FocusRingSurroundings() = default;
  // The view whose ring it is: what cuts that one off cuts the ring. The view itself or one of its superviews.
  virtual const NSView& viewWithFocusRing() const = 0;
  // What the ring is painted on, opaque; null for the window's ground.
  virtual Ref<NSColor> focusRingGround() const = 0;
};

}  // namespace tessaluna::platform
