#include "tessaluna/platform/events/NSEvent.h"

#include "tessaluna/platform/backend/Backend.h"
#include "tessaluna/platform/events/NSTrackingArea.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::platform {

const ClassInfo NSEvent::staticClassInfo{.name = "NSEvent", .base = &NSObject::staticClassInfo};

Ref<NSObject> NSEvent::addLocalMonitorForEventsMatchingMask(NSEventMask mask, MonitorHandler handler) {
  if (!NSApp) stopProgram("NSEvent: a local monitor needs NSApp");
  return NSApp->addMonitor(mask, std::move(handler));
}

void NSEvent::removeMonitor(const Ref<NSObject>& token) {
  if (NSApp) NSApp->removeMonitor(token);
}

CGPoint NSEvent::mouseLocation() {
  const backend::Backend* backend = backend::Backend::current();
  return backend ? backend->mouseLocation() : CGPoint{};
}

}  // namespace tessaluna::platform
