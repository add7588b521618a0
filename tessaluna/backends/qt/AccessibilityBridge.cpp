#include "tessaluna/backends/qt/AccessibilityBridge.h"

#include <QApplication>
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
#include "tessaluna/platform/accessibility/accessibleTree.h"
#include "tessaluna/platform/views/NSView.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::backend::qt {

using namespace tessaluna::platform;

namespace {

// Null for a window that shares a program's widget.
QWindow* ownQWindowOf(const NSWindow& window) {
  const auto* native = dynamic_cast<const QtWindow*>(window.nativeWindow());
  return native ? native->qWindow() : nullptr;
}

void send(QAccessibleEvent&& event) { QAccessible::updateAccessibility(&event); }

void sendText(QAccessibleInterface* interface, const AccessibleTextChange& text) {
  const int offset = static_cast<int>(text.offset);
  const QString removed = QString::fromStdU16String(text.removed), inserted = QString::fromStdU16String(text.inserted);
  if (removed.isEmpty()) send(QAccessibleTextInsertEvent(interface, offset, inserted));
  else if (inserted.isEmpty()) send(QAccessibleTextRemoveEvent(interface, offset, removed));
  else send(QAccessibleTextUpdateEvent(interface, offset, removed, inserted));
}

void sendTextSelection(QAccessibleInterface* interface, NSRange selection, std::size_t caret) {
  const int start = static_cast<int>(selection.location), end = start + static_cast<int>(selection.length);
  if (start < end) send(QAccessibleTextSelectionEvent(interface, start, end));
  send(QAccessibleTextCursorEvent(interface, static_cast<int>(caret)));
}

void sendState(QAccessibleInterface* interface, AccessibleState state, bool isOn) {
  if (state == AccessibleState::Selected)
    return send(QAccessibleEvent(interface, isOn ? QAccessible::SelectionAdd : QAccessible::SelectionRemove));
  AccessibleStates changed;
  changed.set(state);
  send(QAccessibleStateChangeEvent(interface, qtStateOf(changed)));
}

}  // namespace

AccessibilityBridge::AccessibilityBridge(EmbeddingHosts& hosts)
    : hosts_(hosts),
      changes_({.isListening = [] { return QAccessible::isActive(); },
                .changed = [this](const AccessibleChange& change) { changed(change); }}) {
  QAccessible::installFactory(makeInterface);
  timer_.setSingleShot(true);
  connect(&timer_, &QTimer::timeout, this, &AccessibilityBridge::deleteGone);
  passedOn_.setSingleShot(true);
  connect(&passedOn_, &QTimer::timeout, this, &AccessibilityBridge::reportFocusAgain);
}

AccessibilityBridge::~AccessibilityBridge() {
  QAccessible::removeFactory(makeInterface);
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
    if (ownQWindowOf(*window) == object && isAccessibleWindow(*window)) return new AccessibleElement(*own, window, object);
  return nullptr;
}

QAccessibleInterface* AccessibilityBridge::rootOf(const Ref<NSWindow>& window) {
  return window->isVisible() && isAccessibleWindow(*window) ? interfaceOf(window) : nullptr;
}

QAccessibleInterface* AccessibilityBridge::widgetAround(const Ref<NSView>& view) {
  QtViewWidget* widget = view ? hosts_.widgetOf(*view) : nullptr;
  return widget ? QAccessible::queryAccessibleInterface(widget) : nullptr;
}

QAccessibleInterface* AccessibilityBridge::interfaceOf(const AccessibilityElements& elements, int index) {
  return index >= 0 && index < static_cast<int>(elements.size()) ? interfaceOf(elements[index]) : nullptr;
}

int AccessibilityBridge::indexIn(const AccessibilityElements& elements, const QAccessibleInterface* interface) {
  const auto* asked = dynamic_cast<const AccessibleElement*>(interface);
  const auto found = asked ? std::find(elements.begin(), elements.end(), asked->element()) : elements.end();
  return found == elements.end() ? -1 : static_cast<int>(found - elements.begin());
}

void AccessibilityBridge::changed(const AccessibleChange& change) {
  QAccessibleInterface* interface = interfaceOf(change.element);
  if (!interface) return;
  using Kind = AccessibleChange::Kind;
  switch (change.kind) {
    case Kind::Created:
      send(QAccessibleEvent(interface, QAccessible::ObjectCreated));
      return send(QAccessibleEvent(interface, QAccessible::ObjectShow));
    case Kind::Destroyed:
      send(QAccessibleEvent(interface, QAccessible::ObjectHide));
      return send(QAccessibleEvent(interface, QAccessible::ObjectDestroyed));
    case Kind::Focused: return send(QAccessibleEvent(interface, QAccessible::Focus));
    case Kind::Name: return send(QAccessibleEvent(interface, QAccessible::NameChanged));
    case Kind::State: return sendState(interface, change.state, change.isOn);
    case Kind::Quantity: return send(QAccessibleValueChangeEvent(interface, change.value));
    case Kind::Rows: return send(QAccessibleTableModelChangeEvent(interface, QAccessibleTableModelChangeEvent::ModelReset));
    case Kind::Text: return sendText(interface, change.text);
    case Kind::TextSelection: return sendTextSelection(interface, change.selection, change.caret);
  }
}

void AccessibilityBridge::reportFocusAgain() {
  QWidget* widget = QApplication::focusWidget();
  // The elements in a widget of ours are reported by themselves.
  if (widget && !dynamic_cast<QtViewWidget*>(widget)) send(QAccessibleEvent(widget, QAccessible::Focus));
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
