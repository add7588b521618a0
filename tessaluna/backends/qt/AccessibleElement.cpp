#include "tessaluna/backends/qt/AccessibleElement.h"

#include "tessaluna/backends/qt/AccessibilityBridge.h"
#include "tessaluna/backends/qt/AccessibleWidget.h"
#include "tessaluna/backends/qt/QtNativeWindow.h"
#include "tessaluna/backends/qt/accessibilityNames.h"
#include "tessaluna/backends/qt/screenSpace.h"
#include "tessaluna/platform/accessibility/accessibleTree.h"
#include "tessaluna/platform/accessibility/attributes.h"
#include "tessaluna/platform/views/NSView.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::backend::qt {

using namespace tessaluna::platform;

// Hangs on the element and goes with it.
class AccessibleElement::Link : public AccessibleMemory {
 public:
  Link(AccessibleElement& own, const Ref<NSObject>& element) : AccessibleMemory(element), own(&own) { own.link_ = this; }
  ~Link() override {
    if (!own) return;
    own->link_ = nullptr;
    own->bridge_.elementHasGone(*own);
  }

  AccessibleElement* own;
};

AccessibleElement::AccessibleElement(AccessibilityBridge& bridge, const Ref<NSObject>& element, QObject* object)
    : bridge_(bridge), element_(element), object_(object), text_(*this), table_(bridge, *this), row_(*this) {
  accessibilityOf(element)->setAccessibilityCompanion(std::make_unique<Link>(*this, element));
  bridge_.elementWasMade(*this);
}

AccessibleElement::~AccessibleElement() {
  bridge_.elementIsForgotten(*this);
  if (!link_) return;
  link_->own = nullptr;
  if (const Ref<NSObject> held = element()) accessibilityOf(held)->setAccessibilityCompanion(nullptr);
}

AccessibleElement* AccessibleElement::ofIfAny(const NSAccessibility& element) {
  const auto* link = dynamic_cast<const Link*>(element.accessibilityCompanion());
  return link ? link->own : nullptr;
}

// The way up and down.

QWindow* AccessibleElement::window() const {
  const Ref<NSView> view = viewOfAccessible(element());
  const NSWindow* window = view ? view->window() : nullptr;
  const auto* native = window ? dynamic_cast<const QtNativeWindow*>(window->nativeWindow()) : nullptr;
  return native ? native->qWindow() : nullptr;
}

QAccessibleInterface* AccessibleElement::parent() const {
  const Ref<NSObject> parent = accessibleParentOf(element());
  const bool isOutermost = dynamic_cast<const NSWindow*>(parent.get()) != nullptr;
  QAccessibleInterface* widget = isOutermost ? bridge_.widgetAround(viewOfAccessible(element())) : nullptr;
  return widget ? widget : bridge_.interfaceOf(parent);
}

int AccessibleElement::childCount() const {
  if (table_.items()) return table_.rowCount();
  return static_cast<int>(accessibleChildrenOf(element()).size());
}

QAccessibleInterface* AccessibleElement::child(int index) const {
  return table_.items() ? table_.cellAt(index, 0) : bridge_.interfaceOf(accessibleChildrenOf(element()), index);
}

int AccessibleElement::indexOfChild(const QAccessibleInterface* child) const {
  if (!table_.items()) return AccessibilityBridge::indexIn(accessibleChildrenOf(element()), child);
  const auto* row = dynamic_cast<const AccessibleElement*>(child);
  return row && row->parent() == this ? row->row_.rowIndex() : -1;
}

QAccessibleInterface* AccessibleElement::childAt(int x, int y) const {
  return bridge_.interfaceOf(elementAtPoint(shownAccessibleChildrenOf(element()), middleOfPixel({x, y})));
}

QAccessibleInterface* AccessibleElement::focusChild() const { return bridge_.interfaceOf(focusedElementBelow(element())); }

// What it is.

QAccessible::Role AccessibleElement::role() const {
  if (table_.items()) return QAccessible::Table;
  return row_.isInTable() ? QAccessible::Row : qtRoleOf(accessibleRoleOf(element()));
}

QAccessible::State AccessibleElement::state() const {
  const Ref<NSObject> held = element();
  QAccessible::State state = qtStateOf(accessibleStatesOf(held));
  state.invalid = !held;
  state.selectableText = isAccessibleTextInput(held);
  return state;
}

// That of the widget in which there is nothing but this element.
QString AccessibleElement::nameOfWidget() const {
  const auto* widget = dynamic_cast<const AccessibleWidget*>(bridge_.widgetAround(viewOfAccessible(element())));
  return widget ? widget->nameFor(element()) : QString();
}

QString AccessibleElement::text(QAccessible::Text which) const {
  const Ref<NSObject> held = element();
  switch (which) {
    case QAccessible::Name: {
      const std::string name = accessibleNameOf(held);
      return name.empty() ? nameOfWidget() : QString::fromStdString(name);
    }
    case QAccessible::Value: return QString::fromStdString(accessibleValueTextOf(held));
    case QAccessible::Description: return QString::fromStdString(accessibleHelpOf(held));
    default: return {};
  }
}

void AccessibleElement::setText(QAccessible::Text which, const QString& text) {
  if (which == QAccessible::Value) text_.replaceText(0, -1, text);
}

QRect AccessibleElement::rect() const {
  const Ref<NSObject> held = element();
  return held ? qtRectOf(accessibleFrameOf(held)) : QRect();
}

void* AccessibleElement::interface_cast(QAccessible::InterfaceType type) {
  const Ref<NSObject> held = element();
  if (!held) return nullptr;
  switch (type) {
    case QAccessible::ActionInterface: return static_cast<QAccessibleActionInterface*>(this);
    case QAccessible::ValueInterface:
      return accessibleQuantityOf(held) ? static_cast<QAccessibleValueInterface*>(this) : nullptr;
    case QAccessible::TextInterface:
      return isAccessibleTextInput(held) ? static_cast<QAccessibleTextInterface*>(&text_) : nullptr;
    case QAccessible::EditableTextInterface:
      return accessibleStatesOf(held).contains(AccessibleState::Editable)
                 ? static_cast<QAccessibleEditableTextInterface*>(&text_)
                 : nullptr;
    case QAccessible::TableInterface: return table_.items() ? static_cast<QAccessibleTableInterface*>(&table_) : nullptr;
    case QAccessible::TableCellInterface:
      return row_.isInTable() ? static_cast<QAccessibleTableCellInterface*>(&row_) : nullptr;
    default: return nullptr;
  }
}

// What it does.

QStringList AccessibleElement::actionNames() const {
  QStringList names;
  for (const std::string& action : accessibleActionsOf(element())) names.append(qtActionOf(action));
  return names;
}

void AccessibleElement::doAction(const QString& name) { performAccessibleAction(element(), actionOf(name)); }

namespace {

QVariant variantOf(std::optional<double> number) { return number ? QVariant(*number) : QVariant(); }

AccessibleQuantity quantityOf(const Ref<NSObject>& element) {
  return accessibleQuantityOf(element).value_or(AccessibleQuantity());
}

}  // namespace

QVariant AccessibleElement::currentValue() const { return quantityOf(element()).value; }
QVariant AccessibleElement::maximumValue() const { return variantOf(quantityOf(element()).maximum); }
QVariant AccessibleElement::minimumValue() const { return variantOf(quantityOf(element()).minimum); }

void AccessibleElement::setCurrentValue(const QVariant& value) {
  const Ref<NSObject> held = element();
  if (held && value.canConvert<double>())
    accessibilityOf(held)->accessibilitySetValue(value.toDouble(), NSAccessibilityValueAttribute);
}

}  // namespace tessaluna::backend::qt
