#include "tests/backends/qt/QtTest.h"

#include <QScreen>

#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/foundation/numberText.h"
#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/graphics/NSColor.h"

// What a platform of Qt's tells Qt; it is not in Qt's public headers.
class QWindowSystemInterface {
 public:
  static void handleScreenGeometryChange(QScreen* screen, const QRect& pixels, const QRect& availablePixels);
  static void handlePrimaryScreenChanged(QPlatformScreen* screen);
};

namespace tessaluna::backend::qt {

using namespace tessaluna::platform;

namespace {

constexpr Selector clicksSelectors[] = {action<&Clicks::clicked>("clicked:")};

void setHeightOfPrimaryScreen(int pixels) {
  const QRect place(0, 0, 800, pixels);
  QWindowSystemInterface::handleScreenGeometryChange(QGuiApplication::primaryScreen(), place, place);
  QCoreApplication::processEvents();
}

}  // namespace

HeightOfPrimaryScreen::HeightOfPrimaryScreen(int pixels) { setHeightOfPrimaryScreen(pixels); }
HeightOfPrimaryScreen::~HeightOfPrimaryScreen() { setHeightOfPrimaryScreen(800); }

// The primary one is the first in Qt's list.
SecondScreenAsPrimary::SecondScreenAsPrimary() {
  QWindowSystemInterface::handlePrimaryScreenChanged(QGuiApplication::screens()[1]->handle());
}
SecondScreenAsPrimary::~SecondScreenAsPrimary() {
  QWindowSystemInterface::handlePrimaryScreenChanged(QGuiApplication::screens()[1]->handle());
}

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
