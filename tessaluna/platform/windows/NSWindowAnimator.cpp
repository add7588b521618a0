#include "tessaluna/platform/windows/NSWindowAnimator.h"

#include "tessaluna/platform/time/NSAnimationContext.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::platform {

// Every step of an animation is displayed anyway.
void NSWindowAnimator::setFrame(CGRect frame, bool) const {
  window_.animateFrame(frame, *NSAnimationContext::currentContext());
}

}  // namespace tessaluna::platform
