#include "tessaluna/backends/qt/AccessibleElement.h"

#include <algorithm>

#include "tessaluna/backends/qt/AccessibilityBridge.h"
#include "tessaluna/backends/qt/QtNativeWindow.h"
#include "tessaluna/backends/qt/accessibilityNames.h"
#include "tessaluna/backends/qt/screenSpace.h"
#include "tessaluna/platform/cells/NSCell.h"
#include "tessaluna/platform/views/NSView.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::backend::qt {

using namespace tessaluna::platform;

// Hangs on the element and goes with it.
class AccessibleElement::Link : public NSAccessibility::Companion {
 public:
  explicit Link(AccessibleElement& own) : own(&own) { own.link_ = this; }
  ~Link() override {
    if (!own) return;
    own->link_ = nullptr;
    own->bridge_.elementHasGone(*own);
  }

  AccessibleElement* own;
};

AccessibleElement::AccessibleElement(AccessibilityBridge& bridge, const Ref<NSObject>& element, QObject* object)
    : bridge_(bridge), element_(element), object_(object), text_(*this) {
  accessibilityOf(element)->setAccessibilityCompanion(std::make_unique<Link>(*this));
  text_.noteText();
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

namespace {

QRect rectOf(const NSAccessibility& element) {
  const auto origin = attributeOf<CGPoint>(element, NSAccessibilityPositionAttribute);
  const auto size = attributeOf<CGSize>(element, NSAccessibilitySizeAttribute);
  return origin && size ? qtRectOf({*origin, *size}) : QRect();
}

bool isFocused(const Ref<NSObject>& element) {
  return attributeOf<bool>(*accessibilityOf(element), NSAccessibilityFocusedAttribute).value_or(false);
}

bool isTextInput(std::string_view role) {
  return role == NSAccessibilityTextFieldRole || role == NSAccessibilityTextAreaRole;
}

// One whose value is a state and not a quantity.
bool isToggle(std::string_view role) {
  return role == NSAccessibilityCheckBoxRole || role == NSAccessibilityRadioButtonRole ||
         role == NSAccessibilityDisclosureTriangleRole;
}

std::string roleOf(const NSAccessibility& element) {
  return attributeOf<std::string>(element, NSAccessibilityRoleAttribute).value_or(std::string());
}

// The elements that are selected among those beside this one; absent where nothing is ever selected.
std::optional<AccessibilityElements> selectionAround(const NSAccessibility& element) {
  const auto parent = attributeOf<Ref<NSObject>>(element, NSAccessibilityParentAttribute);
  if (!parent) return std::nullopt;
  return attributeOf<AccessibilityElements>(*accessibilityOf(*parent), NSAccessibilitySelectedChildrenAttribute);
}

QString nameOf(const NSAccessibility& element);

// What an element says that is called by what stands in it.
QString contentOf(const NSAccessibility& element) {
  QStringList names;
  for (const Ref<NSObject>& child : childrenOf(element)) {
    const NSAccessibility& inner = *accessibilityOf(child);
    QString name = nameOf(inner);
    if (name.isEmpty()) name = contentOf(inner);
    if (!name.isEmpty()) names.append(name);
  }
  return names.join(QStringLiteral(", "));
}

QString nameOf(const NSAccessibility& element) {
  for (const std::string_view attribute : {NSAccessibilityDescriptionAttribute, NSAccessibilityTitleAttribute})
    if (const QString name = textOf(element, attribute); !name.isEmpty()) return name;
  const std::string role = roleOf(element);
  if (role == NSAccessibilityStaticTextRole || role == NSAccessibilityLinkRole)
    return textOf(element, NSAccessibilityValueAttribute);
  return selectionAround(element) ? contentOf(element) : QString();
}

// The view that the element is, that its cell stands in, or that it is painted in.
Ref<NSView> viewOf(Ref<NSObject> element) {
  while (element) {
    if (const auto view = std::dynamic_pointer_cast<NSView>(element)) return view;
    if (const auto* window = dynamic_cast<const NSWindow*>(element.get())) return window->contentView();
    if (const auto* cell = dynamic_cast<const NSCell*>(element.get()))
      return cell->controlView() ? refTo(*cell->controlView()) : nullptr;
    const NSAccessibility* asked = accessibilityOf(element);
    element = asked ? asked->accessibilityParent() : nullptr;
  }
  return nullptr;
}

QRect visibleRectOf(const NSView& view) {
  const NSWindow* window = view.window();
  if (!window || !window->isVisible()) return {};
  const CGRect visible = view.visibleRect();
  const bool isEmpty = visible.size.width <= 0 || visible.size.height <= 0;
  return isEmpty ? QRect() : qtRectOf(window->convertRectToScreen(view.convertRectToView(visible, nullptr)));
}

}  // namespace

// The way up and down.

QWindow* AccessibleElement::window() const {
  const Ref<NSView> view = viewOf(element());
  const NSWindow* window = view ? view->window() : nullptr;
  const auto* native = window ? dynamic_cast<const QtNativeWindow*>(window->nativeWindow()) : nullptr;
  return native ? native->qWindow() : nullptr;
}

QAccessibleInterface* AccessibleElement::parent() const {
  const Ref<NSObject> held = element();
  if (!held) return nullptr;
  const auto parent = attributeOf<Ref<NSObject>>(*accessibilityOf(held), NSAccessibilityParentAttribute);
  if (!parent) return nullptr;
  const bool isOutermost = dynamic_cast<const NSWindow*>(parent->get()) != nullptr;
  QAccessibleInterface* widget = isOutermost ? bridge_.widgetAround(viewOf(held)) : nullptr;
  return widget ? widget : bridge_.interfaceOf(*parent);
}

int AccessibleElement::childCount() const { return static_cast<int>(childrenOf(element()).size()); }

QAccessibleInterface* AccessibleElement::child(int index) const {
  const AccessibilityElements children = childrenOf(element());
  return index >= 0 && index < static_cast<int>(children.size()) ? bridge_.interfaceOf(children[index]) : nullptr;
}

int AccessibleElement::indexOfChild(const QAccessibleInterface* child) const {
  const auto* asked = dynamic_cast<const AccessibleElement*>(child);
  const AccessibilityElements children = childrenOf(element());
  const auto found = asked ? std::find(children.begin(), children.end(), asked->element()) : children.end();
  return found == children.end() ? -1 : static_cast<int>(found - children.begin());
}

QAccessibleInterface* AccessibleElement::childAt(int x, int y) const {
  return bridge_.interfaceAt(childrenOf(element()), {x, y});
}

QAccessibleInterface* AccessibleElement::focusChild() const {
  const Ref<NSObject> focused = focusedWithin(childrenOf(element()));
  return focused ? bridge_.interfaceOf(focused) : nullptr;
}

// What it is.

QAccessible::Role AccessibleElement::role() const {
  const Ref<NSObject> held = element();
  if (!held) return QAccessible::NoRole;
  const std::string role = roleOf(*accessibilityOf(held));
  // A client reads the items of a list, and a group that stands among them for one of these.
  if (role == NSAccessibilityGroupRole && selectionAround(*accessibilityOf(held))) return QAccessible::ListItem;
  return qtRoleOf(role);
}

QAccessible::State AccessibleElement::state() const {
  QAccessible::State state;
  const Ref<NSObject> held = element();
  if (!held) {
    state.invalid = true;
    return state;
  }
  const NSAccessibility& asked = *accessibilityOf(held);
  const std::string role = roleOf(asked);
  state.disabled = !attributeOf<bool>(asked, NSAccessibilityEnabledAttribute).value_or(true);
  state.focusable = asked.accessibilityIsAttributeSettable(NSAccessibilityFocusedAttribute) && !state.disabled;
  if (const auto selection = selectionAround(asked)) {
    state.selectable = true;
    state.selected = std::find(selection->begin(), selection->end(), held) != selection->end();
  }
  if (const auto isSelected = attributeOf<bool>(asked, NSAccessibilitySelectedAttribute)) {
    state.selectable = true;
    state.selected = *isSelected;
  }
  if (isToggle(role)) {
    const double value = attributeOf<double>(asked, NSAccessibilityValueAttribute).value_or(0);
    state.checkable = true;
    state.checked = value > 0;
    state.checkStateMixed = value < 0;
  }
  const bool canBeWritten = asked.accessibilityIsAttributeSettable(NSAccessibilityValueAttribute);
  state.editable = isTextInput(role) && canBeWritten;
  state.readOnly = (isTextInput(role) || role == NSAccessibilityStaticTextRole) && !canBeWritten;
  state.multiLine = role == NSAccessibilityTextAreaRole;
  state.selectableText = isTextInput(role);
  if (const auto* cell = dynamic_cast<const NSCell*>(held.get())) state.pressed = cell->isHighlighted();

  const Ref<NSView> view = viewOf(held);
  const NSWindow* window = view ? view->window() : nullptr;
  state.invisible = !window || !window->isVisible();
  state.offscreen = !view || !visibleRectOf(*view).intersects(rectOf(asked));
  const bool isInKeyWindow = window && window->isKeyWindow();
  state.focused = isInKeyWindow && isFocused(held) && !focusedWithin(childrenOf(asked));
  if (dynamic_cast<const NSWindow*>(held.get())) state.active = isInKeyWindow;
  return state;
}

// That of the widget in which there is nothing but this element.
QString AccessibleElement::nameOfWidget() const {
  const QAccessibleInterface* widget = bridge_.widgetAround(viewOf(element()));
  return widget && widget->childCount() == 1 && widget->child(0) == this ? widget->text(QAccessible::Name) : QString();
}

QString AccessibleElement::text(QAccessible::Text which) const {
  const Ref<NSObject> held = element();
  if (!held) return {};
  const NSAccessibility& asked = *accessibilityOf(held);
  switch (which) {
    case QAccessible::Name: {
      const QString name = nameOf(asked);
      return name.isEmpty() ? nameOfWidget() : name;
    }
    case QAccessible::Value: return textOf(asked, NSAccessibilityValueAttribute);
    case QAccessible::Description: {
      const QString help = textOf(asked, NSAccessibilityHelpAttribute);
      return help.isEmpty() ? textOf(asked, NSAccessibilityPlaceholderValueAttribute) : help;
    }
    default: return {};
  }
}

void AccessibleElement::setText(QAccessible::Text which, const QString& text) {
  const Ref<NSObject> held = element();
  if (held && which == QAccessible::Value)
    accessibilityOf(held)->accessibilitySetValue(text.toStdString(), NSAccessibilityValueAttribute);
}

QRect AccessibleElement::rect() const {
  const Ref<NSObject> held = element();
  return held ? rectOf(*accessibilityOf(held)) : QRect();
}

void* AccessibleElement::interface_cast(QAccessible::InterfaceType type) {
  const Ref<NSObject> held = element();
  if (!held) return nullptr;
  const NSAccessibility& asked = *accessibilityOf(held);
  const std::string role = roleOf(asked);
  const bool isQuantity = !isToggle(role) && attributeOf<double>(asked, NSAccessibilityValueAttribute);
  switch (type) {
    case QAccessible::ActionInterface: return static_cast<QAccessibleActionInterface*>(this);
    case QAccessible::ValueInterface: return isQuantity ? static_cast<QAccessibleValueInterface*>(this) : nullptr;
    case QAccessible::TextInterface: return isTextInput(role) ? static_cast<QAccessibleTextInterface*>(&text_) : nullptr;
    case QAccessible::EditableTextInterface: {
      const bool canBeWritten = asked.accessibilityIsAttributeSettable(NSAccessibilityValueAttribute);
      return isTextInput(role) && canBeWritten ? static_cast<QAccessibleEditableTextInterface*>(&text_) : nullptr;
    }
    default: return nullptr;
  }
}

// What it does.

QStringList AccessibleElement::actionNames() const {
  QStringList names;
  const Ref<NSObject> held = element();
  if (!held) return names;
  for (const std::string& action : accessibilityOf(held)->accessibilityActionNames()) names.append(qtActionOf(action));
  if (state().focusable) names.append(setFocusAction());
  return names;
}

void AccessibleElement::doAction(const QString& name) {
  const Ref<NSObject> held = element();
  if (!held) return;
  if (name == setFocusAction()) accessibilityOf(held)->accessibilitySetValue(true, NSAccessibilityFocusedAttribute);
  else accessibilityOf(held)->accessibilityPerformAction(actionOf(name));
}

namespace {

QVariant numberOf(const Ref<NSObject>& element, std::string_view attribute) {
  const auto number = element ? attributeOf<double>(*accessibilityOf(element), attribute) : std::nullopt;
  return number ? QVariant(*number) : QVariant();
}

}  // namespace

QVariant AccessibleElement::currentValue() const { return numberOf(element(), NSAccessibilityValueAttribute); }
QVariant AccessibleElement::maximumValue() const { return numberOf(element(), NSAccessibilityMaxValueAttribute); }
QVariant AccessibleElement::minimumValue() const { return numberOf(element(), NSAccessibilityMinValueAttribute); }

void AccessibleElement::setCurrentValue(const QVariant& value) {
  const Ref<NSObject> held = element();
  if (held && value.canConvert<double>())
    accessibilityOf(held)->accessibilitySetValue(value.toDouble(), NSAccessibilityValueAttribute);
}

// What it tells.

void AccessibleElement::tellValue() {
  const Ref<NSObject> held = element();
  if (!held) return;
  const std::string role = roleOf(*accessibilityOf(held));
  if (isTextInput(role)) {
    text_.tellText(*this);
  } else if (isToggle(role)) {
    QAccessible::State changed;
    changed.checked = true;
    QAccessibleStateChangeEvent event(this, changed);
    QAccessible::updateAccessibility(&event);
  } else if (const QVariant value = currentValue(); value.isValid()) {
    QAccessibleValueChangeEvent event(this, value);
    QAccessible::updateAccessibility(&event);
  } else {
    QAccessibleEvent event(this, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&event);
  }
}

void AccessibleElement::tellSelectedText() {
  if (isValid()) text_.tellSelection(*this);
}

void AccessibleElement::tellSelection() {
  const Ref<NSObject> held = element();
  if (!held) return;
  const auto selection = attributeOf<AccessibilityElements>(*accessibilityOf(held), NSAccessibilitySelectedChildrenAttribute)
                             .value_or(AccessibilityElements());
  AccessibilityElements earlier;
  for (const WeakRef<NSObject>& one : std::exchange(toldSelection_, {}))
    if (Ref<NSObject> alive = one.lock()) earlier.push_back(std::move(alive));
  toldSelection_.assign(selection.begin(), selection.end());

  const auto tell = [&](const AccessibilityElements& some, const AccessibilityElements& others, QAccessible::Event what) {
    for (const Ref<NSObject>& one : some) {
      if (std::find(others.begin(), others.end(), one) != others.end()) continue;
      // A row that was thrown away has nobody above it.
      QAccessibleInterface* interface = bridge_.interfaceOf(one);
      if (!interface || interface->parent() != this) continue;
      QAccessibleEvent event(interface, what);
      QAccessible::updateAccessibility(&event);
    }
  };
  tell(earlier, selection, QAccessible::SelectionRemove);
  tell(selection, earlier, QAccessible::SelectionAdd);
}

Ref<NSObject> focusedWithin(const AccessibilityElements& elements) {
  for (const Ref<NSObject>& element : elements) {
    if (!isFocused(element)) continue;
    const Ref<NSObject> inner = focusedWithin(childrenOf(element));
    return inner ? inner : element;
  }
  return nullptr;
}

}  // namespace tessaluna::backend::qt
