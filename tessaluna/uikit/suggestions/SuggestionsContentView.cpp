#include "tessaluna/uikit/suggestions/SuggestionsContentView.h"

#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/windows/NSWindow.h"
#include "tessaluna/uikit/suggestions/HighlightingView.h"
#include "tessaluna/uikit/suggestions/SuggestionsWindowController.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;

const ClassInfo SuggestionsContentView::staticClassInfo{.name = "TessalunaUIKit.SuggestionsContentView",
                                                        .base = &NSView::staticClassInfo};

void SuggestionsContentView::drawRect(CGRect dirtyRect) {
  NSColor::windowBackgroundColor()->setFill();
  NSRectFill(dirtyRect);
  NSView::drawRect(dirtyRect);
}

AccessibilityValue SuggestionsContentView::accessibilityAttributeValue(std::string_view attribute) const {
  if (attribute == NSAccessibilityRoleAttribute) return NSAccessibilityListRole;
  if (attribute == NSAccessibilityOrientationAttribute) return NSAccessibilityVerticalOrientationValue;
  if (attribute == NSAccessibilityEnabledAttribute) return true;
  if (attribute == NSAccessibilityVisibleChildrenAttribute)
    return accessibilityAttributeValue(NSAccessibilityChildrenAttribute);
  if (attribute != NSAccessibilitySelectedChildrenAttribute) return NSView::accessibilityAttributeValue(attribute);

  const AccessibilityValue value = accessibilityAttributeValue(NSAccessibilityChildrenAttribute);
  const auto* children = value.as<AccessibilityElements>();
  if (!children) stopProgram("TessalunaUIKit.SuggestionsContentView: the children are not a list");
  AccessibilityElements selected;
  for (const Ref<NSObject>& child : *children) {
    const auto* row = dynamic_cast<const HighlightingView*>(child.get());
    if (row && row->isHighlighted()) selected.push_back(child);
  }
  return selected;
}

bool SuggestionsContentView::accessibilityIsAttributeSettable(std::string_view attribute) const {
  // Intentional: the selected children are among them, although they can be set.
  for (const std::string_view fixed : {NSAccessibilityOrientationAttribute, NSAccessibilityEnabledAttribute,
                                       NSAccessibilityVisibleChildrenAttribute, NSAccessibilitySelectedChildrenAttribute})
    if (attribute == fixed) return false;
  return NSView::accessibilityIsAttributeSettable(attribute);
}

void SuggestionsContentView::accessibilitySetValue(const AccessibilityValue& value, std::string_view forAttribute) {
  if (forAttribute != NSAccessibilitySelectedChildrenAttribute) return NSView::accessibilitySetValue(value, forAttribute);
  const Ref<NSWindowController> found = window() ? window()->windowController() : nullptr;
  const auto controller = std::dynamic_pointer_cast<SuggestionsWindowController>(found);
  if (!controller) return;
  const auto* element = value.as<Ref<NSObject>>();
  controller->setSelectedView(element ? std::dynamic_pointer_cast<HighlightingView>(*element) : nullptr);
}

}  // namespace TessalunaUIKit
