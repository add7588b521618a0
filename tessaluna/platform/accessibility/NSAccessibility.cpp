#include "tessaluna/platform/accessibility/NSAccessibility.h"

#include "tessaluna/platform/accessibility/NSAccessibilityButton.h"
#include "tessaluna/platform/foundation/NSNotificationCenter.h"

namespace tessaluna::platform {

namespace {

const NSAccessibilityButton* buttonOf(const NSAccessibility& element) {
  return dynamic_cast<const NSAccessibilityButton*>(&element);
}

AccessibilityValue presentText(const std::string& text) {
  return text.empty() ? AccessibilityValue() : AccessibilityValue(text);
}

}  // namespace

NSAccessibility::~NSAccessibility() = default;

bool NSAccessibility::isAccessibilityElement() const { return buttonOf(*this) != nullptr; }

std::string NSAccessibility::accessibilityRole() const {
  return std::string(buttonOf(*this) ? NSAccessibilityButtonRole : NSAccessibilityUnknownRole);
}

std::vector<std::string> NSAccessibility::accessibilityActionNames() const {
  if (!buttonOf(*this)) return {};
  return {std::string(NSAccessibilityPressAction)};
}

void NSAccessibility::accessibilityPerformAction(std::string_view action) {
  auto* button = dynamic_cast<NSAccessibilityButton*>(this);
  if (button && action == NSAccessibilityPressAction) button->accessibilityPerformPress();
}

void NSAccessibility::accessibilitySetOverrideValue(AccessibilityValue value, std::string_view forAttribute) {
  if (!overrides_) overrides_ = std::make_unique<std::map<std::string, AccessibilityValue, std::less<>>>();
  overrides_->insert_or_assign(std::string(forAttribute), value);
  if (value.isAbsent()) overrides_->erase(std::string(forAttribute));
  // Other attributes are set before anybody looks, as the role is; a name may say what a button does now.
  const bool isName = forAttribute == NSAccessibilityDescriptionAttribute || forAttribute == NSAccessibilityTitleAttribute;
  if (auto* object = isName ? dynamic_cast<NSObject*>(this) : nullptr)
    NSAccessibilityPostNotification(object->weak_from_this().lock(), NSAccessibilityTitleChangedNotification);
}

const AccessibilityValue* NSAccessibility::overrideValue(std::string_view attribute) const {
  if (!overrides_) return nullptr;
  const auto found = overrides_->find(attribute);
  return found == overrides_->end() ? nullptr : &found->second;
}

std::optional<AccessibilityElements> NSAccessibility::accessibilityChildren() const {
  // One of another kind answers the attribute alone.
  if (const AccessibilityValue* value = overrideValue(NSAccessibilityChildrenAttribute))
    if (const auto* elements = value->as<AccessibilityElements>()) return *elements;
  const std::optional<AccessibilityElements> own = accessibilityOwnChildren();
  return own ? std::optional(NSAccessibilityUnignoredChildren(*own)) : std::nullopt;
}

AccessibilityValue NSAccessibility::accessibilityAttributeValue(std::string_view attribute) const {
  if (const AccessibilityValue* value = overrideValue(attribute)) return *value;
  if (attribute == NSAccessibilityRoleAttribute) return accessibilityRole();
  if (attribute == NSAccessibilityTitleAttribute) return accessibilityTitle();
  if (attribute == NSAccessibilityDescriptionAttribute)
    return buttonOf(*this) ? presentText(buttonOf(*this)->accessibilityLabel()) : AccessibilityValue();
  if (attribute == NSAccessibilityHelpAttribute) return presentText(accessibilityHelp());
  if (attribute == NSAccessibilityValueAttribute) return accessibilityValue();
  if (attribute == NSAccessibilityEnabledAttribute) return isAccessibilityEnabled();
  if (attribute == NSAccessibilityFocusedAttribute) return isAccessibilityFocused();
  if (attribute == NSAccessibilityPositionAttribute) return accessibilityFrame().origin;
  if (attribute == NSAccessibilitySizeAttribute) return accessibilityFrame().size;
  if (attribute == NSAccessibilityParentAttribute) return accessibilityParent();
  if (attribute == NSAccessibilityChildrenAttribute) {
    // Not the virtual one: a derived class adds to each of the two answers by itself.
    const std::optional<AccessibilityElements> children = NSAccessibility::accessibilityChildren();
    return children ? AccessibilityValue(*children) : AccessibilityValue();
  }
  return {};
}

NSAccessibility* accessibilityOf(const Ref<NSObject>& object) { return dynamic_cast<NSAccessibility*>(object.get()); }

namespace {

AccessibilityElements childrenOf(const NSAccessibility& element) {
  const AccessibilityValue value = element.accessibilityAttributeValue(NSAccessibilityChildrenAttribute);
  const auto* elements = value.as<AccessibilityElements>();
  return elements ? *elements : AccessibilityElements();
}

}  // namespace

Ref<NSObject> NSAccessibilityUnignoredAncestor(Ref<NSObject> element) {
  while (const NSAccessibility* asked = accessibilityOf(element)) {
    if (!asked->accessibilityIsIgnored()) return element;
    element = asked->accessibilityParent();
  }
  return nullptr;
}

Ref<NSObject> NSAccessibilityUnignoredDescendant(const Ref<NSObject>& element) {
  const NSAccessibility* asked = accessibilityOf(element);
  if (!asked) return nullptr;
  if (!asked->accessibilityIsIgnored()) return element;
  for (const Ref<NSObject>& child : childrenOf(*asked))
    if (Ref<NSObject> found = NSAccessibilityUnignoredDescendant(child)) return found;
  return nullptr;
}

AccessibilityElements NSAccessibilityUnignoredChildren(const AccessibilityElements& elements) {
  AccessibilityElements result;
  for (const Ref<NSObject>& element : elements) {
    const NSAccessibility* asked = accessibilityOf(element);
    if (!asked) continue;
    if (!asked->accessibilityIsIgnored()) {
      result.push_back(element);
      continue;
    }
    const AccessibilityElements inner = NSAccessibilityUnignoredChildren(childrenOf(*asked));
    result.insert(result.end(), inner.begin(), inner.end());
  }
  return result;
}

NSNotificationCenter& accessibilityNotificationCenter() {
  static const Ref<NSNotificationCenter> center = make<NSNotificationCenter>();
  return *center;
}

void NSAccessibilityPostNotification(const Ref<NSObject>& element, std::string_view notification) {
  if (element) accessibilityNotificationCenter().postNotificationName(notification, element);
}

}  // namespace tessaluna::platform
