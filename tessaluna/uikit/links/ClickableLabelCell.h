// The cell of a ClickableLabel: it lays its text out as a text view of the label's bounds does, so that
// the links are drawn where that view finds them. A frame or a bezel takes no room from the text.
#pragma once

#include "tessaluna/platform/cells/NSTextFieldCell.h"

namespace TessalunaUIKit {

class ClickableLabelCell : public tessaluna::platform::NSTextFieldCell {
 public:
  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  using NSTextFieldCell::NSTextFieldCell;
  explicit ClickableLabelCell(const NSTextFieldCell& other) : NSTextFieldCell(other) {}
  tessaluna::platform::Ref<tessaluna::platform::NSCell> copy() const override {
    return tessaluna::platform::make<ClickableLabelCell>(*this);
  }

  // The text in lines without a limit of their width, and the padding beside them.
  tessaluna::platform::CGSize cellSize() const override;
  tessaluna::platform::CGRect drawingRectForBounds(tessaluna::platform::CGRect bounds) const override;

 protected:
  // The links of its label.
  std::optional<tessaluna::platform::AccessibilityElements> accessibilityOwnChildren() const override;
};

}  // namespace TessalunaUIKit
