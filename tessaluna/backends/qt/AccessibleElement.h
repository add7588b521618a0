// One element of the platform's accessibility tree in Qt's words. It asks the element again at each question.
#pragma once

#include <QAccessible>
#include <QPointer>

#include "tessaluna/backends/qt/AccessibleTable.h"
#include "tessaluna/backends/qt/AccessibleText.h"
#include "tessaluna/platform/accessibility/AccessibleChanges.h"

namespace tessaluna::backend::qt {

class AccessibilityBridge;

class AccessibleElement : public QAccessibleInterface, public QAccessibleActionInterface, public QAccessibleValueInterface {
 public:
  // The object is what Qt knows the element by: a window's QWindow, and null for all else.
  AccessibleElement(AccessibilityBridge& bridge, const platform::Ref<platform::NSObject>& element, QObject* object);
  ~AccessibleElement() override;
  static AccessibleElement* ofIfAny(const platform::NSAccessibility& element);

  platform::Ref<platform::NSObject> element() const { return element_.lock(); }  // null once it has gone

  bool isValid() const override { return !element_.expired(); }
  QObject* object() const override { return object_; }
  QWindow* window() const override;
  QAccessibleInterface* parent() const override;
  QAccessibleInterface* child(int index) const override;
  int childCount() const override;
  int indexOfChild(const QAccessibleInterface* child) const override;
  QAccessibleInterface* childAt(int x, int y) const override;
  QAccessibleInterface* focusChild() const override;

  QAccessible::Role role() const override;
  QAccessible::State state() const override;
  QString text(QAccessible::Text which) const override;
  void setText(QAccessible::Text which, const QString& text) override;
  QRect rect() const override;
  void* interface_cast(QAccessible::InterfaceType type) override;

  QStringList actionNames() const override;
  void doAction(const QString& name) override;
  QStringList keyBindingsForAction(const QString&) const override { return {}; }

  QVariant currentValue() const override;
  void setCurrentValue(const QVariant& value) override;
  QVariant maximumValue() const override;
  QVariant minimumValue() const override;
  QVariant minimumStepSize() const override { return {}; }

 private:
  class Link;
  QString nameOfWidget() const;

  AccessibilityBridge& bridge_;
  platform::WeakRef<platform::NSObject> element_;
  Link* link_ = nullptr;  // the element's end of the bond; null once either has gone
  QPointer<QObject> object_;
  AccessibleText text_;
  AccessibleTable table_;
  AccessibleTableRow row_;
};

}  // namespace tessaluna::backend::qt
