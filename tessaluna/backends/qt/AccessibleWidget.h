// A QtViewWidget to assistive clients: a widget of the program like others, which has the elements of its view for
// children and leaves the keyboard to them.
#pragma once

#include <QAccessibleWidget>

#include "tessaluna/platform/accessibility/AccessibilityValue.h"

namespace tessaluna::backend::qt {

class AccessibilityBridge;
class QtViewWidget;

class AccessibleWidget : public QAccessibleWidget {
 public:
  AccessibleWidget(AccessibilityBridge& bridge, QtViewWidget& widget);

  QAccessibleInterface* child(int index) const override;
  int childCount() const override;
  int indexOfChild(const QAccessibleInterface* child) const override;
  QAccessibleInterface* childAt(int x, int y) const override;
  QAccessibleInterface* focusChild() const override;
  QAccessible::State state() const override;
  QStringList actionNames() const override { return {}; }

 private:
  platform::AccessibilityElements elements() const;

  AccessibilityBridge& bridge_;
};

}  // namespace tessaluna::backend::qt
