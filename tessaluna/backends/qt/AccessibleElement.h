// One element of the platform's accessibility tree, as Qt shows it to assistive clients. It asks the element anew at
// each question and keeps nothing but what it has told last, so that a change can be told as a difference.
#pragma once

#include <QAccessible>
#include <QPointer>
#include <vector>

#include "tessaluna/backends/qt/AccessibleText.h"
#include "tessaluna/platform/accessibility/NSAccessibility.h"

namespace tessaluna::backend::qt {

class AccessibilityBridge;

class AccessibleElement : public QAccessibleInterface, public QAccessibleActionInterface, public QAccessibleValueInterface {
 public:
  // The object is what Qt knows the element by: a window's QWindow, and absent for all else.
  AccessibleElement(AccessibilityBridge& bridge, const platform::Ref<platform::NSObject>& element, QObject* object);
  ~AccessibleElement() override;
  static AccessibleElement* ofIfAny(const platform::NSAccessibility& element);

  platform::Ref<platform::NSObject> element() const { return element_.lock(); }  // absent once it has gone

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

  // What has changed since it was told last is told now.
  void tellValue();
  void tellSelection();
  void tellSelectedText();
  void forgetSelection() { toldSelection_.clear(); }

 private:
  class Link;
  QString nameOfWidget() const;

  AccessibilityBridge& bridge_;
  platform::WeakRef<platform::NSObject> element_;
  Link* link_ = nullptr;  // the element's end of the bond; absent once either has gone
  QPointer<QObject> object_;
  AccessibleText text_;
  std::vector<platform::WeakRef<platform::NSObject>> toldSelection_;
};

// The innermost one that has the keyboard, among the elements and those below them; absent if none has.
platform::Ref<platform::NSObject> focusedWithin(const platform::AccessibilityElements& elements);

}  // namespace tessaluna::backend::qt
