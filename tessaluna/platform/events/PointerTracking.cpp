#include "tessaluna/platform/events/PointerTracking.h"

#include <algorithm>
#include <utility>

#include "tessaluna/platform/events/NSCursor.h"
#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/foundation/stopProgram.h"
#include "tessaluna/platform/views/NSView.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::platform {

namespace {

using Handler = void (NSResponder::*)(const Ref<NSEvent>&);

void send(const Ref<NSTrackingArea>& area, NSEventType type, Handler handler, const Ref<NSEvent>& cause) {
  const Ref<NSResponder> owner = area->owner();
  if (!owner) return;
  NSEvent::Fields fields = cause->fields();
  fields.type = type;
  fields.trackingArea = area;
  (owner.get()->*handler)(make<NSEvent>(std::move(fields)));
}

bool stillHas(const NSView& view, const Ref<NSTrackingArea>& area) {
  const auto& areas = view.trackingAreas();
  return std::find(areas.begin(), areas.end(), area) != areas.end();
}

}  // namespace

bool PointerTracking::isActive(const NSTrackingArea& area, const NSView& view) const {
  const std::uint32_t options = area.options();
  if (options & NSTrackingActiveAlways) return true;
  if (options & NSTrackingActiveInActiveApp) return NSApp && NSApp->isActive();
  if (options & NSTrackingActiveInKeyWindow) return window_.isKeyWindow();
  if (options & NSTrackingActiveWhenFirstResponder) return window_.firstResponder() == &view;
  return false;
}

void PointerTracking::collect(const Ref<NSView>& view, CGPoint inSuperview, std::vector<Place>& places) const {
  if (view->isHidden()) return;
  const CGPoint point = view->transformToSuperview().inverted()->apply(inSuperview);
  // Nothing of a view shows outside its bounds, and so no area of it or below it reaches there.
  if (!NSPointInRect(point, view->bounds())) return;
  for (const Ref<NSTrackingArea>& area : view->trackingAreas()) {
    const bool isInside = (area->options() & NSTrackingInVisibleRect) || NSPointInRect(point, area->rect());
    if (isInside && isActive(*area, *view)) places.push_back({view, area});
  }
  for (const Ref<NSView>& subview : view->subviews()) collect(subview, point, places);
}

std::vector<PointerTracking::Place> PointerTracking::placesAt(CGPoint point) const {
  std::vector<Place> places;
  if (window_.contentView()) collect(window_.contentView(), point, places);
  return places;
}

template <class Condition>
void PointerTracking::sendExitsWhere(Condition isDue, const Ref<NSEvent>& event) {
  std::vector<Entered> left;
  std::erase_if(entered_, [&](const Entered& entered) {
    if (!isDue(entered)) return false;
    left.push_back(entered);
    return true;
  });
  for (const Entered& entered : left) {
    const Ref<NSView> view = entered.view.lock();
    const Ref<NSTrackingArea> area = entered.area.lock();
    if (view && area && stillHas(*view, area)) send(area, NSEventType::MouseExited, &NSResponder::mouseExited, event);
  }
}

// Of those that the pointer is not at; what is owed only while the window shows.
void PointerTracking::sendExits(const Ref<NSEvent>& event, const std::vector<Place>& places) {
  const auto isThere = [&](const Entered& entered) {
    return std::find(places.begin(), places.end(), Place{entered.view.lock(), entered.area.lock()}) != places.end();
  };
  sendExitsWhere(
      [&](const Entered& entered) {
        switch (entered.exit) {
          case Exit::AsThePointerLeaves: return !isThere(entered);
          case Exit::UnlessThePointerIsThere: return window_.isVisible() && !isThere(entered);
          case Exit::InAnyCase: return window_.isVisible();
        }
        unreachable();
      },
      event);
}

void PointerTracking::windowWasHidden() {
  hideToolTip();
  pointer_.reset();
  scrolled_.clear();
  for (Entered& entered : entered_)
    if (entered.exit == Exit::AsThePointerLeaves) entered.exit = Exit::UnlessThePointerIsThere;
}

void PointerTracking::windowWasShown() {
  const backend::Backend* backend = backend::Backend::current();
  if (entered_.empty() || !backend) return;
  const CGPoint point = window_.convertPointFromScreen(backend->mouseLocation());
  sendExits(make<NSEvent>(NSEvent::Fields{
                .type = NSEventType::MouseExited, .location = point, .timestamp = backend->now(), .window = refTo(window_)}),
            placesAt(point));
}

void PointerTracking::viewWillLeave(const NSView& view) {
  for (Entered& entered : entered_)
    if (entered.view.lock().get() == &view) entered.exit = Exit::InAnyCase;
}

bool PointerTracking::isScrolled(const NSView* view) const {
  return view && std::any_of(scrolled_.begin(), scrolled_.end(), [view](const WeakRef<NSView>& scrolled) {
           const Ref<NSView> content = scrolled.lock();
           return content && view->isDescendantOf(content.get());
         });
}

void PointerTracking::sendOwedExits(const Ref<NSEvent>& event) {
  const std::vector<Place> places = scrolled_.empty() ? std::vector<Place>() : placesAt(event->locationInWindow());
  sendExitsWhere(
      [&](const Entered& entered) {
        const Ref<NSView> view = entered.view.lock();
        const Place place{view, entered.area.lock()};
        return entered.exit == Exit::InAnyCase ||
               (isScrolled(view.get()) && std::find(places.begin(), places.end(), place) == places.end());
      },
      event);
}

bool PointerTracking::contentWasScrolled(NSView& content) {
  if (!pointer_) return false;
  const bool isFirst = scrolled_.empty();
  scrolled_.push_back(refTo(content));
  return isFirst;
}

void PointerTracking::crossScrolledContent(bool isButtonDown) {
  const backend::Backend* backend = backend::Backend::current();
  if (scrolled_.empty() || !pointer_ || !backend) return;
  window_.layoutIfNeeded();
  std::vector<Place> places = placesAt(*pointer_);
  const auto event = make<NSEvent>(NSEvent::Fields{
      .type = NSEventType::MouseMoved, .location = *pointer_, .timestamp = backend->now(), .window = refTo(window_)});
  sendOwedExits(event);
  std::erase_if(places, [this](const Place& place) { return !isScrolled(place.view.get()); });
  scrolled_.clear();
  hideToolTip();
  sendEntriesAndMoves(event, places, isButtonDown);
  if (!isButtonDown && pointer_) updateCursor(*pointer_);
}

void PointerTracking::wasExited(const NSView& view) {
  std::erase_if(entered_, [&](const Entered& entered) {
    const Ref<NSTrackingArea> area = entered.area.lock();
    return area && area->owner().get() == &view && entered.view.lock().get() == &view;
  });
}

void PointerTracking::pointerMoved(const Ref<NSEvent>& event, bool isButtonDown) {
  const CGPoint point = event->locationInWindow();
  pointer_ = point;
  // What is under the pointer now it has moved over, even where the event is a release at the same place.
  if (!scrolled_.empty()) {
    window_.layoutIfNeeded();
    hasDragged_ = true;
  }
  scrolled_.clear();
  const std::vector<Place> places = placesAt(point);
  sendExits(event, places);
  // Where the pointer is again after the window was away, it enters again.
  std::erase_if(entered_, [&](const Entered& entered) {
    return entered.exit == Exit::UnlessThePointerIsThere && window_.isVisible();
  });
  sendEntriesAndMoves(event, places, isButtonDown);
  if (isButtonDown) return;
  const NSView* hit = updateCursor(point);
  // A release does not bring back the tool tip that the press has sent away.
  if (event->type() == NSEventType::MouseMoved || event->type() == NSEventType::MouseEntered) updateToolTip(hit);
}

void PointerTracking::sendEntriesAndMoves(const Ref<NSEvent>& event, const std::vector<Place>& places, bool isButtonDown) {
  // A handler before may have taken an area away, or its view.
  const auto isThere = [&](const Place& place) {
    return place.view->window() == &window_ && stillHas(*place.view, place.area);
  };
  for (const Place& place : places) {
    const std::uint32_t options = place.area->options();
    const bool isWanted =
        (options & NSTrackingMouseEnteredAndExited) && (!isButtonDown || (options & NSTrackingEnabledDuringMouseDrag));
    const bool isEntered = std::any_of(entered_.begin(), entered_.end(), [&](const Entered& entered) {
      return entered.area.lock() == place.area && entered.view.lock() == place.view;
    });
    if (!isWanted || isEntered || !isThere(place)) continue;
    entered_.push_back({place.view, place.area});
    send(place.area, NSEventType::MouseEntered, &NSResponder::mouseEntered, event);
  }
  const bool endsDrag = !isButtonDown && std::exchange(hasDragged_, false);
  if (isButtonDown) hasDragged_ = true;
  if (isButtonDown || (event->type() != NSEventType::MouseMoved && !endsDrag)) return;
  for (const Place& place : places)
    if ((place.area->options() & NSTrackingMouseMoved) && isThere(place))
      send(place.area, NSEventType::MouseMoved, &NSResponder::mouseMoved, event);
}

void PointerTracking::pointerLeft(const Ref<NSEvent>& event) {
  hideToolTip();
  pointer_.reset();
  scrolled_.clear();
  sendExits(event, {});
}

void PointerTracking::showToolTip(const std::string& text) {
  if (window_.nativeWindow()) window_.nativeWindow()->setToolTip(text);
}

void PointerTracking::updateToolTip(const NSView* hit) {
  while (hit && hit->toolTip().empty()) hit = hit->superview();
  showToolTip(hit ? hit->toolTip() : std::string());
}

const NSView* PointerTracking::updateCursor(CGPoint point) {
  if (!window_.contentView() || !window_.nativeWindow()) return nullptr;
  window_.updateCursorRects();
  const NSView* hit = window_.contentView()->hitTest(point);
  Ref<NSCursor> cursor = NSCursor::arrowCursor();
  // The frontmost view under the pointer decides; where it has no rectangle, what is under it does.
  for (const NSView* view = hit; view; view = view->superview()) {
    if (Ref<NSCursor> found = view->cursorAt(view->convertPointFromView(point, nullptr))) {
      cursor = std::move(found);
      break;
    }
  }
  window_.nativeWindow()->setCursor(cursor->shape());
  return hit;
}

}  // namespace tessaluna::platform
