#include "tessaluna/backends/qt/accessibilityNames.h"

#include "tessaluna/platform/accessibility/AccessibleDescription.h"
#include "tessaluna/platform/accessibility/names.h"

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
    {NSAccessibilityBusyIndicatorRole, QAccessible::ProgressBar},
    {NSAccessibilityButtonRole, QAccessible::Button},
    {NSAccessibilityCheckBoxRole, QAccessible::CheckBox},
    {NSAccessibilityDisclosureTriangleRole, QAccessible::Button},
    {NSAccessibilityGroupRole, QAccessible::Grouping},
    {NSAccessibilityImageRole, QAccessible::Graphic},
    {NSAccessibilityLevelIndicatorRole, QAccessible::Slider},
    {NSAccessibilityLinkRole, QAccessible::Link},
    {NSAccessibilityListRole, QAccessible::List},
    {NSAccessibilityMenuButtonRole, QAccessible::ButtonMenu},
    {NSAccessibilityMenuItemRole, QAccessible::MenuItem},
    {NSAccessibilityMenuRole, QAccessible::PopupMenu},
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
    // One whose rows are not counted; see AccessibleTable.
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
    {accessibleFocusAction, QAccessibleActionInterface::setFocusAction},
};

void set(QAccessible::State& state, AccessibleState what) {
  switch (what) {
    case AccessibleState::Disabled: state.disabled = true; return;
    case AccessibleState::Focusable: state.focusable = true; return;
    case AccessibleState::Focused: state.focused = true; return;
    case AccessibleState::Selectable: state.selectable = true; return;
    case AccessibleState::Selected: state.selected = true; return;
    case AccessibleState::Checkable: state.checkable = true; return;
    case AccessibleState::Checked: state.checked = true; return;
    case AccessibleState::Mixed: state.checkStateMixed = true; return;
    // Qt reports that something is checked, but not that it is expanded.
    case AccessibleState::Expandable: state.expandable = state.checkable = true; return;
    case AccessibleState::Expanded: state.expanded = state.checked = true; return;
    case AccessibleState::Pressed: state.pressed = true; return;
    case AccessibleState::HasPopUp: state.hasPopup = true; return;
    case AccessibleState::Editable: state.editable = true; return;
    case AccessibleState::ReadOnly: state.readOnly = true; return;
    case AccessibleState::MultiLine: state.multiLine = true; return;
    case AccessibleState::Invisible: state.invisible = true; return;
    case AccessibleState::Offscreen: state.offscreen = true; return;
    case AccessibleState::Active: state.active = true; return;
  }
}

}  // namespace

QAccessible::Role qtRoleOf(std::string_view role) {
  for (const RoleName& name : roles)
    if (name.role == role) return name.qt;
  return QAccessible::NoRole;
}

QAccessible::State qtStateOf(AccessibleStates states) {
  QAccessible::State result;
  for (const AccessibleState state : allAccessibleStates)
    if (states.contains(state)) set(result, state);
  return result;
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

}  // namespace tessaluna::backend::qt
