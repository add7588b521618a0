#include "uikit/suggestions/HighlightingView.h"

#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSRect.h"
#include "platform/views/NSTextField.h"

namespace TessalunaUIKit {

using namespace platform;

const ClassInfo HighlightingView::staticClassInfo{.name = "TessalunaUIKit.HighlightingView",
                                                  .base = &NSView::staticClassInfo};

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

}  // namespace TessalunaUIKit
