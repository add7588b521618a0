#include "tessaluna/uikit/suggestions/HighlightingView.h"

#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/platform/windows/NSWindow.h"
#include "tessaluna/uikit/suggestions/SuggestionsWindowController.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;

namespace {

constexpr Property properties[] = {property<&HighlightingView::setIsHighlighted, "isHighlighted">()};

}  // namespace

const ClassInfo HighlightingView::staticClassInfo{
    .name = "TessalunaUIKit.HighlightingView", .base = &NSView::staticClassInfo, .properties = properties};

void setBackgroundStyleOfTextFields(const HighlightingView& row, bool isHighlighted) {
  const std::vector<Ref<NSView>> views = row.subviews();
  for (const Ref<NSView>& view : views) {
    const auto* field = dynamic_cast<const NSTextField*>(view.get());
    if (field && field->cell())
      field->cell()->setBackgroundStyle(isHighlighted ? NSBackgroundStyleDark : NSBackgroundStyleLight);
  }
}

void HighlightingView::setIsHighlighted(bool isHighlighted) {
  isHighlighted_ = isHighlighted;
  setBackgroundStyleOfTextFields(*this, isHighlighted);
  setNeedsDisplay(true);
}

void HighlightingView::drawRect(CGRect dirtyRect) {
  (isHighlighted_ ? NSColor::alternateSelectedControlColor() : NSColor::clearColor())->set();
  NSRectFillUsingOperation(dirtyRect, NSCompositingOperationSourceOver);
}

std::vector<std::string> HighlightingView::accessibilityActionNames() const {
  return {std::string(NSAccessibilityPressAction), std::string(chooseAction)};
}

void HighlightingView::accessibilityPerformAction(std::string_view action) {
  const auto self = refTo(*this);
  if (action == NSAccessibilityPressAction) {
    const Ref<NSObject> list = accessibilityParent();
    if (list) accessibilityOf(list)->accessibilitySetValue(self, NSAccessibilitySelectedChildrenAttribute);
  } else if (action == chooseAction) {
    const Ref<NSWindowController> found = window() ? window()->windowController() : nullptr;
    const auto controller = std::dynamic_pointer_cast<SuggestionsWindowController>(found);
    if (!controller) return;
    // As a pointer comes over a row before it clicks it, also over the selected one.
    controller->userSetSelectedView(self);
    controller->mouseUp(nullptr);
  }
}

}  // namespace TessalunaUIKit
