// The ring around what has the keyboard, shown in the key window when a key brought it there: a user who presses buttons with
// the mouse sees none. The window draws it over its views. It lies around the view's focusRingMaskBounds, and where something
// cuts it off there, such as a clip view or the widget that the view is embedded in, inside of that edge.
#pragma once

#include <utility>

#include "tessaluna/platform/foundation/Geometry.h"
#include "tessaluna/platform/graphics/Forward.h"
#include "tessaluna/platform/views/Forward.h"

namespace tessaluna::platform {

class FocusRing {
 public:
  explicit FocusRing(NSWindow& window) : window_(window) {}

  // What is moving the keyboard: a key, the pointer, or the program by itself.
  enum class Cause { Key, Pointer, Program };
  // The cause for as long as the scope lives. The window outlives it.
  class CauseScope {
   public:
    CauseScope(FocusRing& ring, Cause cause) : ring_(ring), earlier_(std::exchange(ring.cause_, cause)) {}
    ~CauseScope() { ring_.cause_ = earlier_; }
    CauseScope(const CauseScope&) = delete;
    CauseScope& operator=(const CauseScope&) = delete;

   private:
    FocusRing& ring_;
    const Cause earlier_;
  };

  void firstResponderDidChange() { cameByKey_ = cause_ == Cause::Key; }
  // The view's focusRingMaskBounds are others. True if that concerns the ring.
  bool maskDidChange(const NSView& view);

  // Has what changed since the last time redrawn. Called before each display, with the views in their places.
  void update();
  void draw() const;  // into the current context, in base space

 private:
  const NSView* view() const;  // that has the keyboard; null for none
  CGRect wantedPlace() const;  // of the ring's outer edge, base space, whole device pixels; empty for no ring
  CGFloat width() const;
  void invalidate() const;
  Ref<NSColor> color() const;

  NSWindow& window_;
  Cause cause_ = Cause::Program;
  bool cameByKey_ = false;
  CGRect place_;  // as it was at the last update
};

}  // namespace tessaluna::platform
