#include "tessaluna/uikit/suggestions/SuggestibleTextFieldCell.h"

#include "tessaluna/platform/foundation/SystemVersion.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;

const ClassInfo SuggestibleTextFieldCell::staticClassInfo{.name = "TessalunaUIKit.SuggestibleTextFieldCell",
                                                          .base = &NSTextFieldCell::staticClassInfo};

namespace {

std::optional<AccessibilityElements> elementsOf(const AccessibilityValue& value) {
  const auto* elements = value.as<AccessibilityElements>();
  return elements ? std::optional(*elements) : std::nullopt;
}

Ref<NSObject> listOf(const Ref<NSWindow>& window) {
  Ref<NSObject> list = NSAccessibilityUnignoredDescendant(window);
  if (!list) stopProgram("TessalunaUIKit.SuggestibleTextFieldCell: the pop-up has no accessibility element");
  return list;
}

}  // namespace

std::optional<AccessibilityElements> SuggestibleTextFieldCell::accessibilityChildren() const {
  std::optional<AccessibilityElements> children =
      isOperatingSystemAtLeastVersion({10, 10})
          ? NSTextFieldCell::accessibilityChildren()
          : elementsOf(NSTextFieldCell::accessibilityAttributeValue(NSAccessibilityChildrenAttribute));
  const Ref<NSWindow> window = suggestionsWindow();
  if (!window) return children;
  if (!children) children.emplace();
  children->push_back(listOf(window));
  return children;
}

AccessibilityValue SuggestibleTextFieldCell::accessibilityAttributeValue(std::string_view attribute) const {
  const AccessibilityValue value = NSTextFieldCell::accessibilityAttributeValue(attribute);
  const Ref<NSWindow> window = suggestionsWindow();
  if (attribute != NSAccessibilityChildrenAttribute || !window) return value;
  std::optional<AccessibilityElements> children = elementsOf(value);
  if (!children) stopProgram("TessalunaUIKit.SuggestibleTextFieldCell: the cell's children are not a list");
  children->push_back(listOf(window));
  return *children;
}

}  // namespace TessalunaUIKit
