#include "tessaluna/platform/accessibility/AccessibleDescription.h"

#include <algorithm>

#include "tessaluna/platform/accessibility/accessibleTree.h"
#include "tessaluna/platform/accessibility/attributes.h"
#include "tessaluna/platform/cells/NSCell.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/views/NSView.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::platform {

namespace {

// What the role says of the element's value and of what it does.
struct RoleTraits {
  std::string_view role;
  bool isTextInput = false;
  bool isCheckable = false;
  bool isExpandable = false;
  bool isSelectable = false;
  bool saysItsValue = false;  // which is its name where it has no other
  bool hasPopUp = false;
};

constexpr RoleTraits roleTraits[] = {
    {.role = NSAccessibilityTextFieldRole, .isTextInput = true},
    {.role = NSAccessibilityTextAreaRole, .isTextInput = true},
    {.role = NSAccessibilityCheckBoxRole, .isCheckable = true},
    {.role = NSAccessibilityRadioButtonRole, .isCheckable = true},
    {.role = NSAccessibilityDisclosureTriangleRole, .isExpandable = true},
    {.role = NSAccessibilityTabButtonRole, .isSelectable = true},
    {.role = NSAccessibilityStaticTextRole, .saysItsValue = true},
    {.role = NSAccessibilityLinkRole, .saysItsValue = true},
    {.role = NSAccessibilityPopUpButtonRole, .saysItsValue = true, .hasPopUp = true},
    {.role = NSAccessibilityMenuButtonRole, .hasPopUp = true},
};

RoleTraits traitsOf(const NSAccessibility& element) {
  const std::string role = textAttributeOf(element, NSAccessibilityRoleAttribute);
  for (const RoleTraits& traits : roleTraits)
    if (traits.role == role) return traits;
  return {};
}

// The elements that are selected among those beside this one; absent where nothing is ever selected.
std::optional<AccessibilityElements> selectionAround(const Ref<NSObject>& element) {
  const NSAccessibility* parent = accessibilityOf(accessibleParentOf(element));
  if (!parent) return std::nullopt;
  return attributeOf<AccessibilityElements>(*parent, NSAccessibilitySelectedChildrenAttribute);
}

// What an element says that is named by its contents.
std::string contentOf(const Ref<NSObject>& element) {
  std::string content;
  for (const Ref<NSObject>& child : accessibleChildrenOf(element)) {
    std::string name = accessibleNameOf(child);
    if (name.empty()) name = contentOf(child);
    if (!content.empty() && !name.empty()) content += ", ";
    content += name;
  }
  return content;
}

bool isValueSettable(const NSAccessibility& element) {
  return element.accessibilityIsAttributeSettable(NSAccessibilityValueAttribute);
}

double numberOf(const NSAccessibility& element) {
  const AccessibilityValue value = element.accessibilityAttributeValue(NSAccessibilityValueAttribute);
  if (const bool* flag = value.as<bool>()) return *flag ? 1 : 0;
  return value.as<double>() ? *value.as<double>() : 0;
}

}  // namespace

Ref<NSView> viewOfAccessible(const Ref<NSObject>& element) {
  for (Ref<NSObject> asked = element; asked;) {
    if (const auto view = std::dynamic_pointer_cast<NSView>(asked)) return view;
    if (const auto* window = dynamic_cast<const NSWindow*>(asked.get())) return window->contentView();
    if (const auto* cell = dynamic_cast<const NSCell*>(asked.get()))
      return cell->controlView() ? refTo(*cell->controlView()) : nullptr;
    const NSAccessibility* accessibility = accessibilityOf(asked);
    asked = accessibility ? accessibility->accessibilityParent() : nullptr;
  }
  return nullptr;
}

CGRect visibleFrameOfAccessible(const Ref<NSObject>& element) {
  const Ref<NSView> view = viewOfAccessible(element);
  const NSWindow* window = view ? view->window() : nullptr;
  // A program's own widgets may hide what is below them.
  if (!window || !window->isVisible() || view->isHiddenOrHasHiddenAncestor()) return {};
  const CGRect visible = window->convertRectToScreen(view->convertRectToView(view->visibleRect(), nullptr));
  return NSIntersectionRect(visible, accessibleFrameOf(element));
}

CGRect accessibleFrameOf(const Ref<NSObject>& element) {
  const NSAccessibility* asked = accessibilityOf(element);
  if (!asked) return {};
  const auto origin = attributeOf<CGPoint>(*asked, NSAccessibilityPositionAttribute);
  const auto size = attributeOf<CGSize>(*asked, NSAccessibilitySizeAttribute);
  return origin && size ? CGRect{*origin, *size} : CGRect{};
}

bool isAccessibleTextInput(const Ref<NSObject>& element) {
  const NSAccessibility* asked = accessibilityOf(element);
  return asked && traitsOf(*asked).isTextInput;
}

std::string accessibleRoleOf(const Ref<NSObject>& element) {
  const NSAccessibility* asked = accessibilityOf(element);
  if (!asked) return std::string(NSAccessibilityUnknownRole);
  std::string role = textAttributeOf(*asked, NSAccessibilityRoleAttribute);
  const bool isItem = role == NSAccessibilityGroupRole && selectionAround(element);
  return isItem ? std::string(NSAccessibilityRowRole) : role;
}

std::string accessibleNameOf(const Ref<NSObject>& element) {
  const NSAccessibility* asked = accessibilityOf(element);
  if (!asked) return {};
  for (const std::string_view attribute : {NSAccessibilityDescriptionAttribute, NSAccessibilityTitleAttribute})
    if (std::string name = textAttributeOf(*asked, attribute); !name.empty()) return name;
  if (traitsOf(*asked).saysItsValue) return textAttributeOf(*asked, NSAccessibilityValueAttribute);
  return selectionAround(element) ? contentOf(element) : std::string();
}

std::string accessibleHelpOf(const Ref<NSObject>& element) {
  const NSAccessibility* asked = accessibilityOf(element);
  if (!asked) return {};
  for (const std::string_view attribute : {NSAccessibilityHelpAttribute, NSAccessibilityPlaceholderValueAttribute})
    if (std::string help = textAttributeOf(*asked, attribute); !help.empty())
      return help == accessibleNameOf(element) ? std::string() : help;
  return {};
}

std::string accessibleValueTextOf(const Ref<NSObject>& element) {
  const NSAccessibility* asked = accessibilityOf(element);
  return asked ? textAttributeOf(*asked, NSAccessibilityValueAttribute) : std::string();
}

std::optional<AccessibleQuantity> accessibleQuantityOf(const Ref<NSObject>& element) {
  const NSAccessibility* asked = accessibilityOf(element);
  if (!asked) return std::nullopt;
  const RoleTraits traits = traitsOf(*asked);
  const auto value = attributeOf<double>(*asked, NSAccessibilityValueAttribute);
  if (!value || traits.isCheckable || traits.isExpandable || traits.isSelectable) return std::nullopt;
  return AccessibleQuantity{.value = *value,
                            .minimum = attributeOf<double>(*asked, NSAccessibilityMinValueAttribute),
                            .maximum = attributeOf<double>(*asked, NSAccessibilityMaxValueAttribute),
                            .isSettable = isValueSettable(*asked)};
}

AccessibleStates accessibleStatesOf(const Ref<NSObject>& element) {
  AccessibleStates states;
  const NSAccessibility* asked = accessibilityOf(element);
  if (!asked) return states;
  const RoleTraits traits = traitsOf(*asked);
  const auto flag = [&](std::string_view attribute) { return attributeOf<bool>(*asked, attribute); };
  const bool isDisabled = !flag(NSAccessibilityEnabledAttribute).value_or(true);
  states.set(AccessibleState::Disabled, isDisabled);
  states.set(AccessibleState::Focusable,
             !isDisabled && asked->accessibilityIsAttributeSettable(NSAccessibilityFocusedAttribute));

  const double number = numberOf(*asked);
  states.set(AccessibleState::Checkable, traits.isCheckable);
  states.set(AccessibleState::Checked, traits.isCheckable && number > 0);
  states.set(AccessibleState::Mixed, traits.isCheckable && number < 0);
  const std::optional<bool> expanded = flag(NSAccessibilityExpandedAttribute);
  states.set(AccessibleState::Expandable, traits.isExpandable || expanded);
  states.set(AccessibleState::Expanded, expanded.value_or(traits.isExpandable && number > 0));
  const std::string role = textAttributeOf(*asked, NSAccessibilityRoleAttribute);
  const std::optional<bool> selected = flag(NSAccessibilitySelectedAttribute);
  // A text among rows says something of them and is none.
  const bool isItem = !selected && role != NSAccessibilityStaticTextRole;
  const std::optional<AccessibilityElements> selection = isItem ? selectionAround(element) : std::nullopt;
  const bool isAmongSelected = selection && std::find(selection->begin(), selection->end(), element) != selection->end();
  states.set(AccessibleState::Selectable, traits.isSelectable || selection || selected);
  states.set(AccessibleState::Selected, selected.value_or(isAmongSelected || (traits.isSelectable && number > 0)));
  states.set(AccessibleState::HasPopUp, traits.hasPopUp);
  // Cells that nobody presses are highlighted for other reasons.
  const auto* cell = dynamic_cast<const NSCell*>(element.get());
  const std::vector<std::string> actions = asked->accessibilityActionNames();
  const bool canBePressed = std::find(actions.begin(), actions.end(), NSAccessibilityPressAction) != actions.end();
  states.set(AccessibleState::Pressed, cell && cell->isHighlighted() && canBePressed);

  const bool isText = traits.isTextInput || role == NSAccessibilityStaticTextRole;
  states.set(AccessibleState::Editable, traits.isTextInput && isValueSettable(*asked));
  states.set(AccessibleState::ReadOnly, isText && !isValueSettable(*asked));
  states.set(AccessibleState::MultiLine, role == NSAccessibilityTextAreaRole);

  const Ref<NSView> view = viewOfAccessible(element);
  const NSWindow* window = view ? view->window() : nullptr;
  const bool isInKeyWindow = window && window->isKeyWindow();
  states.set(AccessibleState::Invisible, !window || !window->isVisible());
  states.set(AccessibleState::Offscreen, NSIsEmptyRect(visibleFrameOfAccessible(element)));
  states.set(AccessibleState::Focused,
             isInKeyWindow && flag(NSAccessibilityFocusedAttribute).value_or(false) && !focusedElementBelow(element));
  states.set(AccessibleState::Active, isInKeyWindow && dynamic_cast<const NSWindow*>(element.get()));
  return states;
}

std::vector<std::string> accessibleActionsOf(const Ref<NSObject>& element) {
  const NSAccessibility* asked = accessibilityOf(element);
  if (!asked || !attributeOf<bool>(*asked, NSAccessibilityEnabledAttribute).value_or(true)) return {};
  std::vector<std::string> actions = asked->accessibilityActionNames();
  if (asked->accessibilityIsAttributeSettable(NSAccessibilityFocusedAttribute)) actions.emplace_back(accessibleFocusAction);
  return actions;
}

bool performAccessibleAction(const Ref<NSObject>& element, std::string_view action) {
  const std::vector<std::string> offered = accessibleActionsOf(element);
  if (std::find(offered.begin(), offered.end(), action) == offered.end()) return false;
  NSAccessibility& asked = *accessibilityOf(element);
  if (action == accessibleFocusAction) asked.accessibilitySetValue(true, NSAccessibilityFocusedAttribute);
  else asked.accessibilityPerformAction(action);
  return true;
}

AccessibleDescription describe(const Ref<NSObject>& element) {
  return {.role = accessibleRoleOf(element),
          .name = accessibleNameOf(element),
          .help = accessibleHelpOf(element),
          .text = accessibleValueTextOf(element),
          .quantity = accessibleQuantityOf(element),
          .states = accessibleStatesOf(element),
          .actions = accessibleActionsOf(element),
          .frame = accessibleFrameOf(element)};
}

}  // namespace tessaluna::platform
