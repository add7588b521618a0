#include "tessaluna/platform/views/ViewAccessibility.h"

#include "tessaluna/platform/accessibility/AccessibleItems.h"
#include "tessaluna/platform/views/NSView.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::platform {

CGRect ViewAccessibility::accessibilityFrame() const {
  return window() ? window()->convertRectToScreen(convertRectToView(bounds(), nullptr)) : CGRect{};
}

bool ViewAccessibility::isAccessibilityFocused() const {
  const auto* first = window() ? dynamic_cast<const NSView*>(window()->firstResponder()) : nullptr;
  return first && first->isDescendantOf(&asView());
}

Ref<NSObject> ViewAccessibility::accessibilityParent() const {
  if (const auto* items = dynamic_cast<const AccessibleItems*>(superview()))
    if (const Ref<NSObject> item = items->accessibleItemAround(asView())) return item;
  if (superview()) return NSAccessibilityUnignoredAncestor(refTo<NSObject>(*superview()));
  return window() ? NSAccessibilityUnignoredAncestor(refTo<NSObject>(*window())) : nullptr;
}

std::optional<AccessibilityElements> ViewAccessibility::accessibilityOwnChildren() const {
  layOutTree();
  AccessibilityElements result;
  for (const Ref<NSView>& view : subviews())
    if (!view->isHidden() && !view->isLeftOut()) result.push_back(view);
  return result;
}

bool ViewAccessibility::accessibilityIsAttributeSettable(std::string_view attribute) const {
  return attribute == NSAccessibilityFocusedAttribute && acceptsFirstResponder();
}

void ViewAccessibility::accessibilitySetValue(const AccessibilityValue& value, std::string_view forAttribute) {
  const bool* focused = value.as<bool>();
  if (forAttribute != NSAccessibilityFocusedAttribute || !focused || !window() || !acceptsFirstResponder()) return;
  if (*focused) window()->makeFirstResponder(this);
  else if (isAccessibilityFocused()) window()->makeFirstResponder(nullptr);
}

}  // namespace tessaluna::platform
