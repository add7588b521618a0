// Attributes of an element as plain values.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "tessaluna/platform/accessibility/AccessibleItems.h"
#include "tessaluna/platform/accessibility/NSAccessibility.h"

namespace tessaluna::platform {

// Absent if the element does not have the attribute, or has it as another kind of value.
template <class T>
std::optional<T> attributeOf(const NSAccessibility& element, std::string_view attribute) {
  const AccessibilityValue value = element.accessibilityAttributeValue(attribute);
  const T* found = value.as<T>();
  return found ? std::optional(*found) : std::nullopt;
}

// Empty if absent.
inline std::string textAttributeOf(const NSAccessibility& element, std::string_view attribute) {
  return attributeOf<std::string>(element, attribute).value_or(std::string());
}

// The elements below it; none of a null one.
inline AccessibilityElements accessibleChildrenOf(const Ref<NSObject>& element) {
  const NSAccessibility* asked = accessibilityOf(element);
  if (!asked) return {};
  return attributeOf<AccessibilityElements>(*asked, NSAccessibilityChildrenAttribute).value_or(AccessibilityElements());
}

// The same, and of many items those that show.
inline AccessibilityElements shownAccessibleChildrenOf(const Ref<NSObject>& element) {
  const auto* items = dynamic_cast<const AccessibleItems*>(element.get());
  return items ? items->shownAccessibleItems() : accessibleChildrenOf(element);
}

// Null for an element that is in no view.
inline Ref<NSObject> accessibleParentOf(const Ref<NSObject>& element) {
  const NSAccessibility* asked = accessibilityOf(element);
  return asked ? attributeOf<Ref<NSObject>>(*asked, NSAccessibilityParentAttribute).value_or(nullptr) : nullptr;
}

}  // namespace tessaluna::platform
