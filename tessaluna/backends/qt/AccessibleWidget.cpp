#include "tessaluna/backends/qt/AccessibleWidget.h"

#include <algorithm>

#include "tessaluna/backends/qt/AccessibilityBridge.h"
#include "tessaluna/backends/qt/AccessibleElement.h"
#include "tessaluna/backends/qt/QtViewWidget.h"
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

QAccessibleInterface* AccessibleWidget::child(int index) const {
  const AccessibilityElements all = elements();
  return index >= 0 && index < static_cast<int>(all.size()) ? bridge_.interfaceOf(all[index]) : nullptr;
}

int AccessibleWidget::indexOfChild(const QAccessibleInterface* child) const {
  const auto* asked = dynamic_cast<const AccessibleElement*>(child);
  const AccessibilityElements all = elements();
  const auto found = asked ? std::find(all.begin(), all.end(), asked->element()) : all.end();
  return found == all.end() ? -1 : static_cast<int>(found - all.begin());
}

QAccessibleInterface* AccessibleWidget::childAt(int x, int y) const { return bridge_.interfaceAt(elements(), {x, y}); }

QAccessibleInterface* AccessibleWidget::focusChild() const { return bridge_.interfaceOf(focusedWithin(elements())); }

QAccessible::State AccessibleWidget::state() const {
  QAccessible::State state = QAccessibleWidget::state();
  state.focusable = state.focused = false;
  return state;
}

}  // namespace tessaluna::backend::qt
