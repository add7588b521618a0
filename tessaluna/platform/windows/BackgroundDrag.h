// Moves a window by a drag on its background: by the desktop where it can, otherwise after the pointer. Part of each window.
#pragma once

#include "tessaluna/platform/foundation/Geometry.h"
#include "tessaluna/platform/views/Forward.h"

namespace tessaluna::platform {

class BackgroundDrag {
 public:
  explicit BackgroundDrag(NSWindow& window) : window_(window) {}

  // The left button went down on the view, or on no view at all.
  void pressed(const NSView* view);
  // The pointer was moved with the button down. True if that moves the window: the drag is none of the view's then.
  bool dragged();
  void released() { state_ = State::Idle; }

 private:
  enum class State { Idle, MayBegin, Follows, IsTheDesktops };

  NSWindow& window_;
  State state_ = State::Idle;
  CGPoint start_;    // of the pointer, on the screen
  CGPoint grabbed_;  // the same, from the window's corner
};

}  // namespace tessaluna::platform
