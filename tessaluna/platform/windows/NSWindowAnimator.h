// What NSWindow::animator gives: its setter moves the window by the current NSAnimationContext instead of at once. Used where it
// is made: window->animator()->setFrame(frame, true);
#pragma once

#include "tessaluna/platform/foundation/Geometry.h"
#include "tessaluna/platform/views/Forward.h"

namespace tessaluna::platform {

class NSWindowAnimator {
 public:
  explicit NSWindowAnimator(NSWindow& window) : window_(window) {}
  const NSWindowAnimator* operator->() const { return this; }

  void setFrame(CGRect frame, bool display) const;

 private:
  NSWindow& window_;
};

}  // namespace tessaluna::platform
