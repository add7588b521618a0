// Hands a window's mouse events to its views: a press to the view under the pointer, the drags and the release that follow it
// to the same one, the wheel to what lies under the pointer. What the pointer enters and leaves, PointerTracking tells.
#pragma once

#include "tessaluna/platform/events/PointerTracking.h"

namespace tessaluna::platform {

class MouseDispatch {
 public:
  explicit MouseDispatch(NSWindow& window) : window_(window), tracking_(window) {}

  void send(const Ref<NSEvent>& event);
  void windowWasHidden() { tracking_.windowWasHidden(); }
  // Its release goes to nobody.
  void viewWillLeave(const NSView& view);

 private:
  struct Press {
    WeakRef<NSView> view;  // gets the drags and the release, as long as it is in the window
    bool isDown = false;
  };

  Ref<NSView> viewAt(const NSEvent& event) const;
  bool isButtonDown() const;
  void sendButton(const Ref<NSEvent>& event);

  NSWindow& window_;
  PointerTracking tracking_;
  Press pressed_[3];  // of the left, the right and any other button
};

}  // namespace tessaluna::platform
