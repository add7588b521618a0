// A window's knowledge of where the pointer is: which tracking areas it has entered, which cursor it wears, and
// which tool tip it would show. Things happen only when the pointer moves or a button goes up: an area that appears, goes or is
// laid out under a still pointer sends nothing.
// The one exception is what the user scrolls under the pointer: to the areas of that content the pointer has moved, and they
// get exits, entries and moves with the window's next frame. A press before that frame is preceded by the exits, and by the
// entries to areas that ask for entries while a button is down.
//
// While a button is down an entry is sent only to areas that ask for that, and no move; the others get the entry, and a drag's
// end one move, at the release. The exit of an entry that was sent comes at once in any case. An area that was taken from
// its view gets nothing more.
//
// Exits are owed where the pointer does not leave but what it has entered goes from under it: with its window, which sends
// them when it is shown again without the pointer there; or out of the window, and then they come before the next press or
// with the next move.
#pragma once

#include <optional>
#include <string>
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
  // Without moving anything: as far as the window knows the pointer is there.
  void pointerIsAt(CGPoint point) { pointer_ = point; }
  // What is below the view is under another part of the pointer's way than before. True if crossScrolledContent has to be
  // called at the next frame, and no earlier call of this has said so.
  bool contentWasScrolled(NSView& content);
  void crossScrolledContent(bool isButtonDown);
  void windowWasHidden();  // sends nothing
  void windowWasShown();
  void viewWillLeave(const NSView& view);
  // Before a press: sends the exits that are owed to views which have left the window since, or were scrolled away.
  void sendOwedExits(const Ref<NSEvent>& event);
  // The view was notified by other means that the pointer is not on it.
  void wasExited(const NSView& view);
  // A tool tip that shows, or would, goes until the pointer moves again.
  void hideToolTip() { showToolTip({}); }

 private:
  struct Place {
    Ref<NSView> view;
    Ref<NSTrackingArea> area;
    friend bool operator==(const Place&, const Place&) = default;
  };
  // When the exit is to be sent.
  enum class Exit { AsThePointerLeaves, UnlessThePointerIsThere, InAnyCase };
  struct Entered {
    WeakRef<NSView> view;
    WeakRef<NSTrackingArea> area;
    Exit exit = Exit::AsThePointerLeaves;
  };

  void collect(const Ref<NSView>& view, CGPoint inSuperview, std::vector<Place>& places) const;
  bool isActive(const NSTrackingArea& area, const NSView& view) const;
  std::vector<Place> placesAt(CGPoint point) const;
  void sendExits(const Ref<NSEvent>& event, const std::vector<Place>& places);
  // To those of the places that want it.
  void sendEntriesAndMoves(const Ref<NSEvent>& event, const std::vector<Place>& places, bool isButtonDown);
  bool isScrolled(const NSView* view) const;
  template <class Condition>
  void sendExitsWhere(Condition isDue, const Ref<NSEvent>& event);
  const NSView* updateCursor(CGPoint point);  // the view under it
  void updateToolTip(const NSView* hit);
  void showToolTip(const std::string& text);

  NSWindow& window_;
  std::vector<Entered> entered_;
  std::optional<CGPoint> pointer_;         // base space; absent while it is not in the window
  std::vector<WeakRef<NSView>> scrolled_;  // whose content was, since the last frame
  bool hasDragged_ = false;                // since the last press, or content was scrolled
};

}  // namespace tessaluna::platform
