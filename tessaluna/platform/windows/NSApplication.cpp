#include "tessaluna/platform/windows/NSApplication.h"

#include <algorithm>

#include "tessaluna/platform/foundation/AtEndOfScope.h"
#include "tessaluna/platform/windows/NSWindow.h"
#include "tessaluna/platform/windows/WindowInput.h"

namespace tessaluna::platform {

const ClassInfo NSApplication::staticClassInfo{.name = "NSApplication", .base = &NSResponder::staticClassInfo};

Ref<NSApplication> NSApp;

NSUserInterfaceLayoutDirection NSApplication::userInterfaceLayoutDirection() const {
  const backend::Backend* desktop = backend::Backend::current();
  const bool isRightToLeft = desktop && desktop->layoutDirection() == backend::LayoutDirection::RightToLeft;
  return isRightToLeft ? NSUserInterfaceLayoutDirectionRightToLeft : NSUserInterfaceLayoutDirectionLeftToRight;
}

class NSApplication::Monitor : public NSObject {
 public:
  Monitor(NSEventMask mask, NSEvent::MonitorHandler handler)
      : mask(mask), handler(std::make_shared<NSEvent::MonitorHandler>(std::move(handler))) {}

  const NSEventMask mask;
  std::shared_ptr<const NSEvent::MonitorHandler> handler;  // null once it is removed, though somebody may keep the token
};

Ref<NSApplication> NSApplication::sharedApplication() {
  if (!NSApp) NSApp = make<NSApplication>();
  return NSApp;
}

void NSApplication::sendEvent(const Ref<NSEvent>& event) {
  Ref<NSEvent> current = event;
  // A monitor may add or remove others, itself included: the list is walked as it was, without those that have gone.
  const std::vector<Ref<Monitor>> copy = monitors_;
  for (const Ref<Monitor>& monitor : copy) {
    const std::shared_ptr<const NSEvent::MonitorHandler> handler = monitor->handler;
    if (!handler || !(monitor->mask & maskOf(current->type()))) continue;
    current = (*handler)(current);
    if (!current) return;
  }
  const Ref<NSWindow> window = current->window();
  if (!window) return;
  if (current != event) window->windowClient().input().eventWasReplaced(*event, *current);
  const Ref<NSObject> held = shared_from_this();
  const Ref<NSEvent> earlier = std::exchange(currentEvent_, current);
  const AtEndOfScope reset([&] { currentEvent_ = earlier; });
  window->sendEvent(current);
}

Ref<NSObject> NSApplication::addMonitor(NSEventMask mask, NSEvent::MonitorHandler handler) {
  monitors_.push_back(make<Monitor>(mask, std::move(handler)));
  return monitors_.back();
}

void NSApplication::removeMonitor(const Ref<NSObject>& token) {
  const auto found = std::find(monitors_.begin(), monitors_.end(), token);
  if (found == monitors_.end()) return;
  // Freed last: what it has captured may change the list as it goes.
  const std::shared_ptr<const NSEvent::MonitorHandler> handler = std::exchange((*found)->handler, nullptr);
  monitors_.erase(found);
}

std::vector<Ref<NSWindow>> NSApplication::windows() const {
  std::vector<Ref<NSWindow>> result;
  for (const WeakRef<NSWindow>& window : windows_)
    if (Ref<NSWindow> alive = window.lock()) result.push_back(std::move(alive));
  return result;
}

void NSApplication::windowWasMade(const Ref<NSWindow>& window) {
  // A weak reference to a window that has gone still holds its memory.
  std::erase_if(windows_, [](const WeakRef<NSWindow>& other) { return other.expired(); });
  windows_.push_back(window);
}

std::optional<AccessibilityElements> NSApplication::accessibilityOwnChildren() const {
  AccessibilityElements result;
  for (const Ref<NSWindow>& window : windows())
    if (window->isVisible() && window->accessibilityParent().get() == this) result.push_back(window);
  return result;
}

void NSApplication::windowKeyStatusChanged(NSWindow& window, bool isKey) {
  if (isKey) {
    keyWindow_ = refTo(window);
  } else if (keyWindow_.lock().get() == &window) {
    keyWindow_.reset();
  }
}

Ref<NSObject> NSApplication::targetForAction(std::string_view action, NSObject* target) {
  if (action.empty()) return nullptr;
  if (target) return target->respondsToSelector(action) ? target->shared_from_this() : nullptr;
  if (const Ref<NSWindow> window = keyWindow())
    if (const Ref<NSResponder> responder = window->firstResponder()->responderForSelector(action)) return responder;
  return responderForSelector(action);
}

bool NSApplication::sendAction(std::string_view action, NSObject* target, NSObject* sender) {
  const Ref<NSObject> receiver = targetForAction(action, target);
  return receiver && receiver->performSelector(action, sender);
}

}  // namespace tessaluna::platform
