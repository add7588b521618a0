// A QtViewWidget to assistive clients: a widget of the program like others, which has the elements of its view for
// children and leaves the keyboard to them. A widget with one element is nothing
// beside it and gives it its name; one with several is a group of that name.
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
  QAccessible::Role role() const override;
  QString text(QAccessible::Text which) const override;
  QStringList actionNames() const override { return {}; }

  // What the element is called that is alone in the widget and has no name of its own.
  QString nameFor(const platform::Ref<platform::NSObject>& element) const;

 private:
  platform::AccessibilityElements elements() const;

  AccessibilityBridge& bridge_;
};

}  // namespace tessaluna::backend::qt
