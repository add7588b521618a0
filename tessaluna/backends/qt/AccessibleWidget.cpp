#include "tessaluna/backends/qt/AccessibleWidget.h"

#include "tessaluna/backends/qt/AccessibilityBridge.h"
#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tessaluna/backends/qt/screenSpace.h"
#include "tessaluna/platform/accessibility/accessibleTree.h"
#include "tessaluna/platform/views/NSView.h"

namespace tessaluna::backend::qt {

using namespace tessaluna::platform;

AccessibleWidget::AccessibleWidget(AccessibilityBridge& bridge, QtViewWidget& widget)
    : QAccessibleWidget(&widget, QAccessible::Client), bridge_(bridge) {}

AccessibilityElements AccessibleWidget::elements() const {
  const auto* own = dynamic_cast<const QtViewWidget*>(widget());
  return own && !own->view()->isHidden() ? NSAccessibilityUnignoredChildren({own->view()}) : AccessibilityElements();
}

int AccessibleWidget::childCount() const { return static_cast<int>(elements().size()); }

QAccessibleInterface* AccessibleWidget::child(int index) const { return bridge_.interfaceOf(elements(), index); }

int AccessibleWidget::indexOfChild(const QAccessibleInterface* child) const {
  return AccessibilityBridge::indexIn(elements(), child);
}

QAccessibleInterface* AccessibleWidget::childAt(int x, int y) const {
  return bridge_.interfaceOf(elementAtPoint(elements(), middleOfPixel({x, y})));
}

QAccessibleInterface* AccessibleWidget::focusChild() const { return bridge_.interfaceOf(focusedElementWithin(elements())); }

QAccessible::State AccessibleWidget::state() const {
  QAccessible::State state = QAccessibleWidget::state();
  state.focusable = state.focused = false;
  return state;
}

QString AccessibleWidget::nameFor(const Ref<NSObject>& element) const {
  const AccessibilityElements shown = elements();
  return shown.size() == 1 && shown.front() == element ? QAccessibleWidget::text(QAccessible::Name) : QString();
}

QString AccessibleWidget::text(QAccessible::Text which) const {
  return which == QAccessible::Name && elements().size() == 1 ? QString() : QAccessibleWidget::text(which);
}

QAccessible::Role AccessibleWidget::role() const {
  return text(QAccessible::Name).isEmpty() ? QAccessible::Client : QAccessible::Grouping;
}

}  // namespace tessaluna::backend::qt
