#include "tessaluna/platform/views/NSViewAnimator.h"

#include "tessaluna/platform/time/PropertyAnimation.h"
#include "tessaluna/platform/views/NSView.h"

namespace tessaluna::platform {

namespace {

NSWindow* windowOf(const NSView& view) { return view.window(); }

}  // namespace

void NSViewAnimator::setFrame(CGRect frame) const {
  animateProperty<&NSView::setFrame>(view_, view_.frame(), frame, windowOf);
}

void NSViewAnimator::setBoundsOrigin(CGPoint origin) const {
  animateProperty<&NSView::setBoundsOrigin>(view_, view_.bounds().origin, origin, windowOf);
}

}  // namespace tessaluna::platform
