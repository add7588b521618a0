#include "tessaluna/backends/qt/accessibilityNames.h"

namespace tessaluna::backend::qt {

using namespace tessaluna::platform;

namespace {

struct RoleName {
  std::string_view role;
  QAccessible::Role qt;
};

constexpr RoleName roles[] = {
    {NSAccessibilityApplicationRole, QAccessible::Application},
    {NSAccessibilityWindowRole, QAccessible::Window},
    {NSAccessibilityButtonRole, QAccessible::Button},
    {NSAccessibilityCheckBoxRole, QAccessible::CheckBox},
    {NSAccessibilityDisclosureTriangleRole, QAccessible::Button},
    {NSAccessibilityGroupRole, QAccessible::Grouping},
    {NSAccessibilityImageRole, QAccessible::Graphic},
    {NSAccessibilityLevelIndicatorRole, QAccessible::Slider},
    {NSAccessibilityLinkRole, QAccessible::Link},
    {NSAccessibilityListRole, QAccessible::List},
    {NSAccessibilityMenuButtonRole, QAccessible::ButtonMenu},
    {NSAccessibilityPopUpButtonRole, QAccessible::ComboBox},
    {NSAccessibilityProgressIndicatorRole, QAccessible::ProgressBar},
    {NSAccessibilityRadioButtonRole, QAccessible::RadioButton},
    {NSAccessibilityRadioGroupRole, QAccessible::Grouping},
    {NSAccessibilityRowRole, QAccessible::ListItem},
    {NSAccessibilityScrollBarRole, QAccessible::ScrollBar},
    {NSAccessibilitySliderRole, QAccessible::Slider},
    {NSAccessibilitySortButtonRole, QAccessible::ColumnHeader},
    {NSAccessibilityStaticTextRole, QAccessible::StaticText},
    {NSAccessibilityTabButtonRole, QAccessible::PageTab},
    {NSAccessibilityTabGroupRole, QAccessible::PageTabList},
    // Qt's tables have columns as well.
    {NSAccessibilityTableRole, QAccessible::List},
    {NSAccessibilityTextAreaRole, QAccessible::EditableText},
    {NSAccessibilityTextFieldRole, QAccessible::EditableText},
};

struct ActionName {
  std::string_view action;
  const QString& (*qt)();
};

constexpr ActionName actions[] = {
    {NSAccessibilityPressAction, QAccessibleActionInterface::pressAction},
    {NSAccessibilityIncrementAction, QAccessibleActionInterface::increaseAction},
    {NSAccessibilityDecrementAction, QAccessibleActionInterface::decreaseAction},
    {NSAccessibilityShowMenuAction, QAccessibleActionInterface::showMenuAction},
};

}  // namespace

QAccessible::Role qtRoleOf(std::string_view role) {
  for (const RoleName& name : roles)
    if (name.role == role) return name.qt;
  return QAccessible::NoRole;
}

QString qtActionOf(std::string_view action) {
  for (const ActionName& name : actions)
    if (name.action == action) return name.qt();
  return QString::fromUtf8(action.data(), static_cast<qsizetype>(action.size()));
}

std::string actionOf(const QString& qtAction) {
  for (const ActionName& name : actions)
    if (name.qt() == qtAction) return std::string(name.action);
  return qtAction.toStdString();
}

QString textOf(const NSAccessibility& element, std::string_view attribute) {
  return QString::fromStdString(attributeOf<std::string>(element, attribute).value_or(std::string()));
}

AccessibilityElements childrenOf(const NSAccessibility& element) {
  return attributeOf<AccessibilityElements>(element, NSAccessibilityChildrenAttribute).value_or(AccessibilityElements());
}

AccessibilityElements childrenOf(const Ref<NSObject>& element) {
  return element ? childrenOf(*accessibilityOf(element)) : AccessibilityElements();
}

}  // namespace tessaluna::backend::qt
