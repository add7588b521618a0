// The platform's names of roles and actions in Qt's words, and attributes of an element as values.
#pragma once

#include <QAccessible>
#include <QString>
#include <optional>
#include <string>
#include <string_view>

#include "tessaluna/platform/accessibility/NSAccessibility.h"

namespace tessaluna::backend::qt {

QAccessible::Role qtRoleOf(std::string_view role);
// An action that neither side has a word for keeps its name.
QString qtActionOf(std::string_view action);
std::string actionOf(const QString& qtAction);

// Absent if the element does not have the attribute, or has it as another kind of value.
template <class T>
std::optional<T> attributeOf(const platform::NSAccessibility& element, std::string_view attribute) {
  const platform::AccessibilityValue value = element.accessibilityAttributeValue(attribute);
  const T* found = value.as<T>();
  return found ? std::optional(*found) : std::nullopt;
}
QString textOf(const platform::NSAccessibility& element, std::string_view attribute);  // empty if absent
platform::AccessibilityElements childrenOf(const platform::NSAccessibility& element);
platform::AccessibilityElements childrenOf(const platform::Ref<platform::NSObject>& element);  // none of an absent one

}  // namespace tessaluna::backend::qt
