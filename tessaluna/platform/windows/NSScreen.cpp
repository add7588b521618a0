#include "tessaluna/platform/windows/NSScreen.h"

#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::platform {

const ClassInfo NSScreen::staticClassInfo{.name = "NSScreen", .base = &NSObject::staticClassInfo};

std::vector<Ref<NSScreen>> NSScreen::screens() {
  std::vector<Ref<NSScreen>> result;
  if (const backend::Backend* backend = backend::Backend::current())
    for (const backend::Screen& screen : backend->screens()) result.push_back(make<NSScreen>(screen));
  return result;
}

Ref<NSScreen> NSScreen::mainScreen() {
  const Ref<NSWindow> key = NSApp ? NSApp->keyWindow() : nullptr;
  if (Ref<NSScreen> screen = key ? key->screen() : nullptr) return screen;
  const std::vector<Ref<NSScreen>> all = screens();
  return all.empty() ? nullptr : all.front();
}

bool NSScreen::isEqual(const NSObject* other) const {
  const auto* screen = dynamic_cast<const NSScreen*>(other);
  return screen && screen->frame() == frame() && screen->backingScaleFactor() == backingScaleFactor();
}

}  // namespace tessaluna::platform
