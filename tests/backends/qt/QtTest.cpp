#include "tests/backends/qt/QtTest.h"

#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/foundation/numberText.h"
#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/graphics/NSColor.h"

namespace tessaluna::backend::qt {

using namespace tessaluna::platform;

namespace {

constexpr Selector clicksSelectors[] = {action<&Clicks::clicked>("clicked:")};

}  // namespace

const ClassInfo Clicks::staticClassInfo{.name = "Clicks", .base = &NSObject::staticClassInfo, .selectors = clicksSelectors};

void Witness::drawRect(CGRect rect) {
  draws.push_back(rect);
  NSColor::redColor()->setFill();
  NSBezierPath::bezierPathWithOvalInRect(bounds())->fill();
}

void Witness::keyDown(const Ref<NSEvent>& event) {
  keys.push_back(event->characters());
  if (!takesKeys) NSView::keyDown(event);
}

void Witness::scrollWheel(const Ref<NSEvent>& event) {
  scrolls.push_back({event->scrollingDeltaX(), event->scrollingDeltaY()});
  if (!takesScrolls) NSView::scrollWheel(event);
}

void Witness::noteMouse(const char* what, const NSEvent& event) {
  const CGPoint place = convertPointFromView(event.locationInWindow(), nullptr);
  mouse.push_back(std::string(what) + " " + std::to_string(event.clickCount()) + " (" + numberText(place.x) + ", " +
                  numberText(place.y) + ")");
}

void Witness::mouseDown(const Ref<NSEvent>& event) { noteMouse("down", *event); }
void Witness::mouseDragged(const Ref<NSEvent>& event) { noteMouse("dragged", *event); }
void Witness::mouseUp(const Ref<NSEvent>& event) { noteMouse("up", *event); }

}  // namespace tessaluna::backend::qt
