// The view that contains the rows of a completion pop-up, the first one at the top. To assistive clients it is a vertical list whose
// selection can be read. It reports that it cannot be set, and is set by clients that try.
#pragma once

#include "tessaluna/platform/views/NSView.h"

namespace TessalunaUIKit {

class SuggestionsContentView : public tessaluna::platform::NSView {
 public:
  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit SuggestionsContentView(tessaluna::platform::CGRect frame) : NSView(frame) {}
  explicit SuggestionsContentView(tessaluna::platform::NSCoder& coder) : NSView(coder) {}

  void drawRect(tessaluna::platform::CGRect dirtyRect) override;
  bool isFlipped() const override { return true; }

  bool isAccessibilityElement() const override { return true; }
  bool accessibilityIsIgnored() const override { return false; }
  // The program stops if the selected children are asked for and the children are not a list.
  tessaluna::platform::AccessibilityValue accessibilityAttributeValue(std::string_view attribute) const override;
  bool accessibilityIsAttributeSettable(std::string_view attribute) const override;
  // As selected children one row, which becomes the selected one; anything else, a list too, clears the selection. The
  // controller's target is not notified. In a window without a SuggestionsWindowController nothing happens.
  void accessibilitySetValue(const tessaluna::platform::AccessibilityValue& value, std::string_view forAttribute) override;
};

}  // namespace TessalunaUIKit
