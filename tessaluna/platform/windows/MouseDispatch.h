// Hands a window's mouse events to its views: a press to the view under the pointer, the drags and the release that follow it
// to the same one, the wheel to what lies under the pointer. PointerTracking reports what the pointer enters and leaves.
#pragma once

#include "tessaluna/platform/events/PointerTracking.h"
#include "tessaluna/platform/windows/BackgroundDrag.h"

namespace tessaluna::platform {

class MouseDispatch {
 public:
  explicit MouseDispatch(NSWindow& window) : window_(window), tracking_(window), backgroundDrag_(window) {}

  void send(const Ref<NSEvent>& event);
  void windowWasShown() { tracking_.windowWasShown(); }
  void windowWasHidden() { tracking_.windowWasHidden(); }
  void contentWasScrolled(NSView& content);
  // A pressed view gets mouseExited: and then mouseUp:, outside of everything, and nothing more of its press.
  void viewWillLeave(NSView& view);

 private:
  struct Press {
    WeakRef<NSView> view;  // gets the drags and the release, as long as it is in the window
    bool isDown = false;
  };

  Ref<NSView> viewAt(const NSEvent& event) const;
  bool isButtonDown() const;
  void sendButton(const Ref<NSEvent>& event);
  void endPress(int button);  // for its view, as viewWillLeave says

  NSWindow& window_;
  PointerTracking tracking_;
  BackgroundDrag backgroundDrag_;
  Press pressed_[3];  // of the left, the right and any other button
};

}  // namespace tessaluna::platform
