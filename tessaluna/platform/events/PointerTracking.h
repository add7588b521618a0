// A window's knowledge of where the pointer is: which tracking areas it has entered, and which cursor it wears. Things happen
// only when the pointer moves or a button goes up: an area that appears, goes or scrolls under a still pointer sends nothing.
//
// While a button is down an entry is sent only to areas that ask for that, and no move; the others get the entry, and a drag's
// end one move, at the release. The exit of an entry that was sent comes at once in any case. An area that was taken from its view gets nothing more.
#pragma once

#include <vector>

#include "tessaluna/platform/events/NSTrackingArea.h"
#include "tessaluna/platform/foundation/Geometry.h"
#include "tessaluna/platform/views/Forward.h"

namespace tessaluna::platform {

class PointerTracking {
 public:
  explicit PointerTracking(NSWindow& window) : window_(window) {}

  // The pointer is at the event's place. Exits go first, then entries, then moves, in the order of the view tree.
  void pointerMoved(const Ref<NSEvent>& event, bool isButtonDown);
  // The pointer has left the window.
  void pointerLeft(const Ref<NSEvent>& event);
  // It is nowhere in the window any more, and nothing is sent.
  void windowWasHidden() { entered_.clear(); }

 private:
  struct Place {
    Ref<NSView> view;
    Ref<NSTrackingArea> area;
    friend bool operator==(const Place&, const Place&) = default;
  };
  struct Entered {
    WeakRef<NSView> view;
    WeakRef<NSTrackingArea> area;
  };

  void collect(const Ref<NSView>& view, CGPoint inSuperview, std::vector<Place>& places) const;
  bool isActive(const NSTrackingArea& area, const NSView& view) const;
  void sendExits(const Ref<NSEvent>& event, const std::vector<Place>& staying);
  void updateCursor(CGPoint point);

  NSWindow& window_;
  std::vector<Entered> entered_;
  bool hasDragged_ = false;  // since the last press
};

}  // namespace tessaluna::platform
