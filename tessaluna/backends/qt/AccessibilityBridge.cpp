#include "tessaluna/backends/qt/AccessibilityBridge.h"

#include <QCoreApplication>
#include <QWindow>
#include <algorithm>
#include <utility>

#include "tessaluna/backends/qt/AccessibleElement.h"
#include "tessaluna/backends/qt/AccessibleWidget.h"
#include "tessaluna/backends/qt/EmbeddingHosts.h"
#include "tessaluna/backends/qt/QtBackend.h"
#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tessaluna/backends/qt/QtWindow.h"
#include "tessaluna/backends/qt/accessibilityNames.h"
#include "tessaluna/platform/views/NSView.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::backend::qt {

using namespace tessaluna::platform;

namespace {

// Absent for a window that shares a program's widget.
QWindow* ownQWindowOf(const NSWindow& window) {
  const auto* native = dynamic_cast<const QtWindow*>(window.nativeWindow());
  return native ? native->qWindow() : nullptr;
}

bool isSeen(const NSWindow& window) { return !window.accessibilityIsIgnored() && window.accessibilityParent() == NSApp; }

void send(QAccessibleInterface* interface, QAccessible::Event what) {
  if (!interface) return;
  QAccessibleEvent event(interface, what);
  QAccessible::updateAccessibility(&event);
}

}  // namespace

AccessibilityBridge::AccessibilityBridge(EmbeddingHosts& hosts) : hosts_(hosts) {
  QAccessible::installFactory(makeInterface);
  changes_ = accessibilityNotificationCenter().addObserverForName(
      "", nullptr, nullptr, [this](const Ref<NSNotification>& told) { changed(*told); });
  keyWindows_ = NSNotificationCenter::defaultCenter().addObserverForName(
      NSWindowDidBecomeKeyNotification, nullptr, nullptr, [this](const Ref<NSNotification>&) { focusMayHaveChanged(); });
  timer_.setSingleShot(true);
  connect(&timer_, &QTimer::timeout, this, &AccessibilityBridge::tell);
}

AccessibilityBridge::~AccessibilityBridge() {
  QAccessible::removeFactory(makeInterface);
  accessibilityNotificationCenter().removeObserver(changes_);
  NSNotificationCenter::defaultCenter().removeObserver(keyWindows_);
  const std::vector<AccessibleElement*> copy(interfaces_.begin(), interfaces_.end());
  for (AccessibleElement* interface : copy) QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(interface));
}

QAccessibleInterface* AccessibilityBridge::interfaceOf(const Ref<NSObject>& element) {
  const NSAccessibility* asked = accessibilityOf(element);
  if (!asked) return nullptr;
  if (AccessibleElement* known = AccessibleElement::ofIfAny(*asked)) return known;
  if (element == NSApp) return QAccessible::queryAccessibleInterface(qApp);
  if (const auto* window = dynamic_cast<const NSWindow*>(element.get())) {
    QWindow* object = ownQWindowOf(*window);
    return object ? QAccessible::queryAccessibleInterface(object) : nullptr;
  }
  auto* made = new AccessibleElement(*this, element, nullptr);
  QAccessible::registerAccessibleInterface(made);
  return made;
}

QAccessibleInterface* AccessibilityBridge::makeInterface(const QString&, QObject* object) {
  AccessibilityBridge* own = QtBackend::accessibility();
  if (!own) return nullptr;
  if (auto* widget = dynamic_cast<QtViewWidget*>(object)) return new AccessibleWidget(*own, *widget);
  if (!object->isWindowType() || !NSApp) return nullptr;
  for (const Ref<NSWindow>& window : NSApp->windows())
    if (ownQWindowOf(*window) == object && isSeen(*window)) return new AccessibleElement(*own, window, object);
  return nullptr;
}

QAccessibleInterface* AccessibilityBridge::rootOf(const Ref<NSWindow>& window) {
  return window->isVisible() && isSeen(*window) ? interfaceOf(window) : nullptr;
}

QAccessibleInterface* AccessibilityBridge::widgetAround(const Ref<NSView>& view) {
  QtViewWidget* widget = view ? hosts_.widgetOf(*view) : nullptr;
  return widget ? QAccessible::queryAccessibleInterface(widget) : nullptr;
}

QAccessibleInterface* AccessibilityBridge::interfaceAt(const AccessibilityElements& elements, QPoint point) {
  for (auto element = elements.rbegin(); element != elements.rend(); ++element) {
    QAccessibleInterface* interface = interfaceOf(*element);
    if (interface && !interface->state().invisible && interface->rect().contains(point)) return interface;
  }
  return nullptr;
}

// Changes.

void AccessibilityBridge::changed(const NSNotification& told) {
  const NSAccessibility* asked = accessibilityOf(told.object());
  if (!asked || !QAccessible::isActive()) return;
  const std::string& name = told.name();
  if (name == NSAccessibilityFocusedUIElementChangedNotification) return focusMayHaveChanged();
  if (name == NSAccessibilityCreatedNotification) {
    send(interfaceOf(told.object()), QAccessible::ObjectCreated);
    send(interfaceOf(told.object()), QAccessible::ObjectShow);
    return tellSelectionLater(told.object());
  }
  // A change of what no client has met is news to nobody.
  AccessibleElement* interface = AccessibleElement::ofIfAny(*asked);
  if (!interface) return;
  if (name == NSAccessibilityUIElementDestroyedNotification) {
    send(interface, QAccessible::ObjectHide);
    send(interface, QAccessible::ObjectDestroyed);
    interface->forgetSelection();
  } else if (name == NSAccessibilityValueChangedNotification) {
    interface->tellValue();
  } else if (name == NSAccessibilitySelectedTextChangedNotification) {
    interface->tellSelectedText();
  } else if (name == NSAccessibilitySelectedChildrenChangedNotification) {
    // Later: while rows are made, the selected one may not be in its place yet.
    tellSelectionLater(told.object());
  } else if (name == NSAccessibilityTitleChangedNotification) {
    send(interface, QAccessible::NameChanged);
  } else if (name == NSAccessibilityEnabledChangedNotification) {
    QAccessible::State changed;
    changed.disabled = true;
    QAccessibleStateChangeEvent event(interface, changed);
    QAccessible::updateAccessibility(&event);
  }
}

void AccessibilityBridge::windowWasShown(const Ref<NSWindow>& window) {
  if (!QAccessible::isActive() || !window || !isSeen(*window)) return;
  send(interfaceOf(window), QAccessible::ObjectCreated);
  send(interfaceOf(window), QAccessible::ObjectShow);
}

void AccessibilityBridge::focusMayHaveChanged() {
  if (!QAccessible::isActive()) return;
  isFocusToBeTold_ = true;
  timer_.start(0);
}

void AccessibilityBridge::tellSelectionLater(const Ref<NSObject>& element) {
  const bool isKnown = std::any_of(selections_.begin(), selections_.end(),
                                   [&](const WeakRef<NSObject>& one) { return one.lock() == element; });
  if (!isKnown) selections_.push_back(element);
  timer_.start(0);
}

void AccessibilityBridge::tell() {
  deleteGone();
  if (std::exchange(isFocusToBeTold_, false)) tellFocus();
  for (const WeakRef<NSObject>& list : std::exchange(selections_, {}))
    if (const Ref<NSObject> held = list.lock())
      if (AccessibleElement* interface = AccessibleElement::ofIfAny(*accessibilityOf(held))) interface->tellSelection();
}

void AccessibilityBridge::tellFocus() {
  const Ref<NSWindow> window = NSApp ? NSApp->keyWindow() : nullptr;
  if (!window) return;
  const Ref<NSObject> focused = focusedWithin(childrenOf(*window));
  send(interfaceOf(focused ? focused : window), QAccessible::Focus);
}

// Interfaces that go.

void AccessibilityBridge::elementIsForgotten(AccessibleElement& interface) {
  interfaces_.erase(&interface);
  std::erase(gone_, &interface);
}

void AccessibilityBridge::elementHasGone(AccessibleElement& interface) {
  // Later: it may be one of its own actions that let the element go.
  gone_.push_back(&interface);
  timer_.start(0);
}

void AccessibilityBridge::deleteGone() {
  for (AccessibleElement* interface : std::exchange(gone_, {}))
    QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(interface));
}

}  // namespace tessaluna::backend::qt
