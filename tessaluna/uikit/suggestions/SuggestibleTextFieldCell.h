// The cell of a text field whose completion pop-up assistive clients are to find: while the pop-up is open, its list is one
// of the cell's children.
#pragma once

#include "tessaluna/platform/cells/NSTextFieldCell.h"

namespace TessalunaUIKit {

class SuggestibleTextFieldCell : public tessaluna::platform::NSTextFieldCell {
 public:
  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit SuggestibleTextFieldCell(std::string text) : NSTextFieldCell(std::move(text)) {}  // initTextCell:
  explicit SuggestibleTextFieldCell(tessaluna::platform::NSCoder& coder) : NSTextFieldCell(coder) {}
  tessaluna::platform::Ref<NSCell> copy() const override {
    return tessaluna::platform::make<SuggestibleTextFieldCell>(*this);
  }

  // The open pop-up; null when there is none. Set and cleared by the pop-up's controller, and not kept alive. A copy has none.
  tessaluna::platform::Ref<tessaluna::platform::NSWindow> suggestionsWindow() const {
    return suggestionsWindow_.value.lock();
  }
  void setSuggestionsWindow(const tessaluna::platform::Ref<tessaluna::platform::NSWindow>& window) {
    suggestionsWindow_.value = window;
  }

  // Those of the stock cell, and with a pop-up its list after them. A pop-up without any element stops the program; so does
  // the attribute of children, if it is not a list while there is a pop-up.
  std::optional<tessaluna::platform::AccessibilityElements> accessibilityChildren() const override;
  tessaluna::platform::AccessibilityValue accessibilityAttributeValue(std::string_view attribute) const override;

 private:
  tessaluna::platform::Uncopied<tessaluna::platform::WeakRef<tessaluna::platform::NSWindow>> suggestionsWindow_;
};

}  // namespace TessalunaUIKit
