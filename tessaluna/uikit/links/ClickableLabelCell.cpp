#include "tessaluna/uikit/links/ClickableLabelCell.h"

#include "tessaluna/uikit/links/ClickableLabel.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;

const ClassInfo ClickableLabelCell::staticClassInfo{.name = "TessalunaUIKit.ClickableLabelCell",
                                                    .base = &NSTextFieldCell::staticClassInfo};

namespace {

// What a text container keeps free at the left and the right of its lines.
constexpr CGFloat lineFragmentPadding = 5;

}  // namespace

CGSize ClickableLabelCell::cellSize() const {
  const CGSize text = NSCell::cellSize();
  return {text.width + 2 * lineFragmentPadding, text.height};
}

CGRect ClickableLabelCell::drawingRectForBounds(CGRect bounds) const { return NSInsetRect(bounds, lineFragmentPadding, 0); }

std::optional<AccessibilityElements> ClickableLabelCell::accessibilityOwnChildren() const {
  auto* label = dynamic_cast<ClickableLabel*>(controlView());
  return label ? std::optional(label->accessibleLinks()) : NSTextFieldCell::accessibilityOwnChildren();
}

}  // namespace TessalunaUIKit
