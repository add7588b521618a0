// What NSView::animator gives: its setters move the view by the current NSAnimationContext instead of at once. Used where it is
// made: view->animator()->setFrame(frame);
#pragma once

#include "tessaluna/platform/foundation/Geometry.h"
#include "tessaluna/platform/views/Forward.h"

namespace tessaluna::platform {

class NSViewAnimator {
 public:
  explicit NSViewAnimator(NSView& view) : view_(view) {}
  const NSViewAnimator* operator->() const { return this; }

  void setFrame(CGRect frame) const;
  void setBoundsOrigin(CGPoint origin) const;

 private:
  NSView& view_;
};

}  // namespace tessaluna::platform
